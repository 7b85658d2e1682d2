#include "surfaces/internal/PresenterPanel.h"

#include "surfaces/CameraPreview.h"
#include "surfaces/internal/PresenterGround.h"

#include <QMetaObject>
#include <QPaintEvent>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr Shadow::Soft kShadow{16, 80, 1}; // a radius of 40, seen as the width of the soft edge
constexpr double kBorderWidth = 3;
constexpr double kOutsideCircle = 0.2929; // of the radius: from the corner of the square to the round edge, each way

QColor borderColor() {
    return QColor::fromRgbF(0.27F, 0.83F, 0.58F);
}

QRect inside(const QRectF& rect) {
    const int left = static_cast<int>(std::ceil(rect.left()));
    const int top = static_cast<int>(std::ceil(rect.top()));
    const int right = static_cast<int>(std::floor(rect.right()));
    const int bottom = static_cast<int>(std::floor(rect.bottom()));
    return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

} // namespace

PresenterPanel::PresenterPanel() : FloatingPanel(PanelLevel::bubble, {0, std::nullopt}) {
    setWindowTitle(QStringLiteral("Velmo Studio · presentador"));
    setClickThrough(true);
}

QRectF PresenterPanel::down(const Rect& rect) const {
    return {rect.x, height() - rect.y - rect.height, rect.width, rect.height};
}

void PresenterPanel::clear() {
    setPreview(nullptr);
    backdrop_ = {};
    setTag(nullptr, 0);
    setFrame({}, Stage::standing);
}

void PresenterPanel::expect(const PresenterFrame& stage) {
    expected_ = stage;
}

QRegion PresenterPanel::stageRegion(const PresenterFrame& frame) const {
    if (frame.stage.isEmpty()) {
        return {};
    }
    QRect reach = down(frame.stage).toAlignedRect();
    if (frame.shadow > 0) {
        reach = reach.marginsAdded(Shadow::margins(kShadow));
    }
    return reach;
}

void PresenterPanel::setFrame(const PresenterFrame& frame, Stage stage) {
    const PresenterFrame before = std::exchange(frame_, frame);
    stage_ = stage;
    if (before.backdrop != frame.backdrop) {
        update();
    } else {
        update(stageRegion(before) + stageRegion(frame));
    }
    outlineChanged();
}

void PresenterPanel::setPreview(CameraPreview* preview) {
    if (preview_ != nullptr) {
        disconnect(preview_, nullptr, this, nullptr);
    }
    preview_ = preview;
    if (preview_ != nullptr) {
        // In a flight the next step shows the new picture.
        connect(preview_, &CameraPreview::changed, this, [this] {
            if (stage_ == Stage::standing) {
                update(down(frame_.stage).toAlignedRect());
            }
        });
    }
}

void PresenterPanel::setBackdrop(QImage backdrop) {
    backdrop_ = std::move(backdrop);
    if (frame_.backdrop > 0) {
        update(QRegion(rect()) - hiddenByStage());
    }
}

void PresenterPanel::setTag(const PresenterTag* tag, double opacity) {
    if (tag == nullptr) {
        update(std::exchange(tagPlace_, {}).toAlignedRect());
        tagImage_ = {};
        return;
    }
    if (tagPlace_.isEmpty()) {
        tagPlace_ = down(tag->place());
        tagImage_ = tag->image().pixels;
        tagImage_.setDevicePixelRatio(devicePixelRatioF());
        tagOpacity_ = 0;
    }
    if (opacity != tagOpacity_) {
        tagOpacity_ = opacity;
        update(tagPlace_.toAlignedRect());
    }
}

QPainterPath PresenterPanel::outline() const {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    if (frame_.backdrop >= 0.5) {
        path.addRect(rect());
    } else if (!frame_.stage.isEmpty()) {
        path.addRoundedRect(down(frame_.stage), frame_.corner, frame_.corner);
    } else {
        path.addRect(-2, -2, 1, 1); // a window without any outline would be seen whole
    }
    return path;
}

void PresenterPanel::showEvent(QShowEvent* event) {
    FloatingPanel::showEvent(event);
    awaited_ = true;
}

/// What the opaque stage covers, in whole points: the ground is not painted there.
QRegion PresenterPanel::hiddenByStage() const {
    if (frame_.stage.isEmpty()) {
        return {};
    }
    const QRectF stage = down(frame_.stage);
    const double corner = frame_.corner;
    const double cut = corner * kOutsideCircle;
    return QRegion(inside(stage.adjusted(corner, 0, -corner, 0))) +
           QRegion(inside(stage.adjusted(0, corner, 0, -corner))) +
           QRegion(inside(stage.adjusted(cut, cut, -cut, -cut)));
}

void PresenterPanel::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRegion ground = event->region() - hiddenByStage();
    if (frame_.backdrop > 0 || frame_.shadow > 0) {
        for (const QRect& part : ground) {
            painter.setClipRect(part);
            paintGround(painter);
        }
    }
    painter.setClipRegion(event->region());
    painter.setRenderHint(QPainter::Antialiasing);
    if (!frame_.stage.isEmpty()) {
        paintStage(painter);
    }
    paintTag(painter);
    if (std::exchange(awaited_, false)) {
        QMetaObject::invokeMethod(this, &PresenterPanel::appeared, Qt::QueuedConnection); // when it was flushed
    }
}

void PresenterPanel::paintGround(QPainter& painter) {
    const QRectF part = painter.clipBoundingRect();
    const double opacity = isComposited() ? PresenterGround::cover(frame_.backdrop) : std::round(frame_.backdrop);
    if (opacity > 0) {
        painter.setOpacity(opacity);
        if (backdrop_.isNull()) {
            painter.fillRect(part, PresenterGround::plain());
        } else {
            const QSizeF scale(backdrop_.width() / double(width()), backdrop_.height() / double(height()));
            painter.drawImage(part, backdrop_,
                              QRectF(part.x() * scale.width(), part.y() * scale.height(), part.width() * scale.width(),
                                     part.height() * scale.height()));
        }
        painter.setOpacity(1);
    }
    if (frame_.shadow > 0) {
        Shadow::paint(painter, down(frame_.stage), expected_.corner, {kShadow.down, kShadow.blur, frame_.shadow});
    }
}

/// At rest made for the stage, pixel for pixel. In a flight large enough for both its ends and as wide as the camera
/// sees, so that the stage can take any shape of it; not larger than the camera's own.
const QImage& PresenterPanel::cameraPicture() {
    const double ratio = devicePixelRatioF();
    const auto pixels = [ratio](double points) { return static_cast<int>(std::lround(points * ratio)); };
    const Rect& large = stage_ == Stage::standing ? frame_.stage : expected_.stage;
    const QSize stage(std::max(1, pixels(large.width)), std::max(1, pixels(large.height)));
    const QSize own = preview_->pictureSize();
    if (stage_ == Stage::standing || own.isEmpty()) {
        return preview_->image(stage);
    }
    const QSize covering = own.scaled(stage, Qt::KeepAspectRatioByExpanding);
    return preview_->image(covering.width() < own.width() ? covering : own);
}

void PresenterPanel::paintStage(QPainter& painter) {
    const QRectF stage = down(frame_.stage);
    QBrush camera(Qt::black);
    if (preview_ != nullptr) {
        const QImage& picture = cameraPicture();
        const double scale = std::max(stage.width() / picture.width(), stage.height() / picture.height());
        camera.setTextureImage(picture);
        camera.setTransform(QTransform()
                                .translate(stage.center().x() - picture.width() * scale / 2,
                                           stage.center().y() - picture.height() * scale / 2)
                                .scale(scale, scale));
        painter.setRenderHint(QPainter::SmoothPixmapTransform, stage_ == Stage::flying);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(camera);
    painter.drawRoundedRect(stage, frame_.corner, frame_.corner);
    if (frame_.border > 0) {
        const double half = kBorderWidth / 2;
        const double corner = std::max(0.0, frame_.corner - half);
        painter.setOpacity(frame_.border);
        painter.setPen(QPen(borderColor(), kBorderWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(stage.adjusted(half, half, -half, -half), corner, corner);
        painter.setOpacity(1);
    }
}

void PresenterPanel::paintTag(QPainter& painter) {
    if (!tagPlace_.isEmpty() && tagOpacity_ > 0) {
        painter.setOpacity(tagOpacity_);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
        painter.drawImage(tagPlace_.topLeft(), tagImage_);
    }
}

} // namespace velmo
