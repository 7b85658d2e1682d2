#include "surfaces/BubbleView.h"

#include "base/Clock.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr double kStepSeconds = 1.0 / 30;
constexpr double kPictureCarries = 2.5 * kStepSeconds; // so long after a picture the next one takes the ring along
constexpr double kNameShare = 0.085;                   // of the bubble's shorter side
constexpr double kLeastName = 11;
constexpr double kMostName = 17;
constexpr double kNameMargin = 6; // of the panel's width
constexpr double kNameLift = 2;   // above the panel's lower edge

double nameSizeFor(double side) {
    const double size = side * kNameShare;
    return size < kMostName ? std::round(std::max(size, kLeastName)) : kMostName;
}

} // namespace

BubbleView::BubbleView(Services services)
    : FloatingPanel(PanelLevel::bubble, {0, std::nullopt}), services_(std::move(services)), preview_(services_.feed) {
    setMovableByBackground(true);
    connect(&preview_, &CameraPreview::changed, this, &BubbleView::showPicture);
    winId(); // before anybody looks for the program's windows, and for good
}

BubbleView::~BubbleView() = default;

void BubbleView::setLook(const BubbleLook& look) {
    if (look == look_) {
        return;
    }
    const bool moved = look.shape != look_.shape || look.corner != look_.corner || !(look.nameTag == look_.nameTag);
    look_ = look;
    if (moved) {
        layOut();
    } else {
        outlineChanged();
    }
    repaintAll();
}

void BubbleView::setCameraOnly(bool on) {
    if (on != cameraOnly_) {
        cameraOnly_ = on;
        layOut();
        repaintAll();
    }
}

void BubbleView::setLevel(double level) {
    if (level != level_.target()) {
        level_.moveTo(level, now());
        followMotion();
    }
}

void BubbleView::setConcealed(bool concealed) {
    concealed_ = concealed;
    if (!concealed && isVisible()) {
        repaintAll();
        repaint(); // before it is seen
    }
    setClickThrough(concealed);
    setWindowOpacity(concealed ? 0 : 1);
    followMotion();
}

void BubbleView::reconnect() {
    layOut();
    repaintAll();
}

CameraPreview& BubbleView::lendPreview() {
    lent_ = true;
    followMotion();
    return preview_;
}

void BubbleView::takeBackPreview() {
    if (std::exchange(lent_, false)) {
        layOut();
        repaintAll();
    }
}

double BubbleView::now() const {
    return services_.clock.now().seconds();
}

QSize BubbleView::pixelSize() const {
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

BubbleOutline BubbleView::bubbleOutline() const {
    return cameraOnly_ ? BubbleOutline::plain(size()) : BubbleOutline::of(size(), look_.shape, look_.corner);
}

void BubbleView::layOut() {
    placeName();
    shapeChanged();
}

void BubbleView::placeName() {
    nameFrame_.reset();
    if (!look_.nameTag || cameraOnly_) {
        return;
    }
    const double size = nameSizeFor(bubbleOutline().side());
    const double scale = devicePixelRatioF();
    const QString key = QStringList{look_.nameTag->name, look_.nameTag->role, QString::number(size),
                                    QString::number(scale), QString::number(width())}
                            .join(QLatin1Char('|'));
    if (key != nameKey_) {
        nameKey_ = key;
        const auto made =
            services_.nameTag(look_.nameTag->name, look_.nameTag->role, size, width() - kNameMargin, scale);
        nameImage_ = made ? made->pixels : QImage();
        nameSize_ = made ? made->size : QSizeF();
    }
    if (!nameImage_.isNull()) {
        const QPointF at((width() - nameSize_.width()) / 2, height() - kNameLift - nameSize_.height());
        nameFrame_ = QRectF(at, nameSize_);
    }
}

QRegion BubbleView::mouseRegion() const {
    QRegion region;
    for (const QPolygonF& part : bubbleOutline().path().toFillPolygons()) {
        region += QRegion(part.toPolygon());
    }
    return nameFrame_ ? region + nameFrame_->toAlignedRect() : region;
}

// The name's ends are as round as the tag is high.
QPainterPath BubbleView::outline() const {
    QPainterPath seen;
    if (concealed_) {
        seen.addRect(-2, -2, 1, 1); // an empty one would be no mask at all
        return seen;
    }
    BubbleOutline edge = bubbleOutline();
    if (!cameraOnly_) { // with the ring's outer half
        const double half = RingMotion::at(look_, 0, 0).ring.width / 2;
        edge.inner.adjust(-half, -half, half, half);
        edge.radius += edge.radius > 0 ? half : 0;
    }
    seen = edge.path();
    if (nameFrame_) {
        QPainterPath name;
        name.addRoundedRect(*nameFrame_, nameFrame_->height() / 2, nameFrame_->height() / 2);
        seen = seen.united(name);
    }
    return seen;
}

void BubbleView::repaintAll() {
    stale_ = BubbleCanvas::Part::all;
    followMotion();
    if (isLive()) {
        update();
    }
}

void BubbleView::showPicture() {
    if (isLive()) {
        lastPicture_ = now();
        stale_ = BubbleCanvas::Part::all;
        update();
    }
}

void BubbleView::repaintRing() {
    if (!stale_) {
        stale_ = BubbleCanvas::Part::edge;
    }
    update(canvas_.ringRegion());
}

void BubbleView::step() {
    if (now() - lastPicture_ >= kPictureCarries) {
        repaintRing();
    }
    followMotion();
}

void BubbleView::followMotion() {
    const bool moves = isLive() && !cameraOnly_ && (RingMotion::moves(look_) || level_.runs(now()));
    if (moves == animating_) {
        return;
    }
    animating_ = moves;
    if (moves) {
        steps_ = services_.timers.repeat(kStepSeconds, [this] { step(); });
    } else {
        steps_->invalidate(); // only that: it may be what calls
        if (isLive()) {
            repaintRing(); // where the level has come to
        }
    }
}

void BubbleView::paintStale() {
    if (canvas_.setPlace(bubbleOutline(), pixelSize(), devicePixelRatioF())) {
        stale_ = BubbleCanvas::Part::all;
    }
    if (stale_) {
        const double time = now();
        canvas_.paint(*stale_, RingMotion::at(look_, level_.at(time), time), preview_.image(canvas_.pictureSize()));
        stale_.reset();
    }
}

void BubbleView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (cameraOnly_) {
        painter.drawImage(QRectF(rect()), preview_.image(pixelSize()));
        return;
    }
    if (!lent_) {
        paintStale();
    }
    const double scale = devicePixelRatioF();
    for (const QRect& part : event->region()) {
        const QRectF pixels(part.x() * scale, part.y() * scale, part.width() * scale, part.height() * scale);
        painter.drawImage(QRectF(part), canvas_.image(), pixels);
    }
    if (nameFrame_) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.drawImage(*nameFrame_, nameImage_);
    }
}

void BubbleView::showEvent(QShowEvent* event) {
    placeName();
    FloatingPanel::showEvent(event);
    repaintAll();
}

void BubbleView::hideEvent(QHideEvent* event) {
    FloatingPanel::hideEvent(event);
    followMotion();
}

void BubbleView::resizeEvent(QResizeEvent* event) {
    placeName();
    FloatingPanel::resizeEvent(event);
    repaintAll();
    tellMove(); // one that grows from its upper left corner is not moved
}

void BubbleView::moveEvent(QMoveEvent* event) {
    FloatingPanel::moveEvent(event);
    tellMove();
}

void BubbleView::tellMove() {
    if (onMove) {
        onMove();
    }
}

void BubbleView::tellHover(bool inside) {
    if (onHover) {
        onHover(inside);
    }
}

void BubbleView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    tellHover(true);
    if (onGrab) {
        onGrab();
    }
    FloatingPanel::mousePressEvent(event);
}

void BubbleView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint before = pos();
    FloatingPanel::mouseMoveEvent(event);
    if (pos() != before && onDrag) {
        onDrag();
    }
}

void BubbleView::mouseReleaseEvent(QMouseEvent* event) {
    FloatingPanel::mouseReleaseEvent(event);
    if (onRelease) {
        onRelease();
    }
}

void BubbleView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    tellHover(true);
    if (onDoubleClick) {
        onDoubleClick();
    }
}

void BubbleView::contextMenuEvent(QContextMenuEvent* event) {
    std::unique_ptr<QMenu> menu = menuProvider ? menuProvider() : nullptr;
    if (menu) {
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu.release()->popup(event->globalPos()); // it goes when it is closed
    }
}

void BubbleView::enterEvent(QEnterEvent*) {
    tellHover(true);
}

void BubbleView::leaveEvent(QEvent*) {
    tellHover(false);
}

} // namespace velmo
