#include "surfaces/internal/SpotPanel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double kRadiusFraction = 0.17; // of the screen's height
constexpr double kSoftEdge = 1.45;       // outer radius by the inner one
constexpr double kDim = 0.62;
constexpr double kLine = 3; // of the disc's edge without a compositing manager

QColor dim() {
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(kDim));
}

} // namespace

SpotPanel::SpotPanel() : FloatingPanel(PanelLevel::spotlight, {0, std::nullopt}) {
    setWindowTitle(QStringLiteral("Velmo Studio · foco"));
    setClickThrough(true);
}

double SpotPanel::innerRadius() const {
    return height() * kRadiusFraction;
}

QRectF SpotPanel::holeAround(QPointF center) const {
    const double ratio = devicePixelRatioF();
    const double outer = innerRadius() * kSoftEdge;
    const auto onPixel = [ratio](double value) { return std::round(value * ratio) / ratio; };
    const double side = std::ceil(2 * outer * ratio) / ratio;
    return {onPixel(center.x() - outer), onPixel(center.y() - outer), side, side};
}

void SpotPanel::setCenter(QPointF center) {
    center_ = center;
    const QRectF hole = holeAround(center);
    if (hole == hole_) {
        return;
    }
    update(QRegion(hole_.toAlignedRect()) + hole.toAlignedRect());
    hole_ = hole;
    outlineChanged();
}

QPainterPath SpotPanel::outline() const {
    const double inner = innerRadius();
    QPainterPath line;
    line.addEllipse(hole_.center(), inner, inner);
    line.addEllipse(hole_.center(), inner + kLine, inner + kLine);
    return line;
}

void SpotPanel::resizeEvent(QResizeEvent* event) {
    hole_ = holeAround(center_);
    FloatingPanel::resizeEvent(event);
}

const QImage& SpotPanel::holeImage() {
    const double ratio = devicePixelRatioF();
    const int side = static_cast<int>(std::lround(hole_.width() * ratio));
    if (image_.width() != side) {
        image_ = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
        image_.setDevicePixelRatio(ratio);
        image_.fill(Qt::transparent);
        const double outer = innerRadius() * kSoftEdge;
        QRadialGradient edge(QPointF(hole_.width() / 2, hole_.height() / 2), outer);
        edge.setColorAt(1 / kSoftEdge, Qt::transparent);
        edge.setColorAt(1, dim());
        QPainter painter(&image_);
        painter.fillRect(QRectF(QPointF(), hole_.size()), edge);
    }
    return image_;
}

void SpotPanel::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QRectF screen = rect();
    const double top = std::max(hole_.top(), 0.0);
    const double bottom = std::min(hole_.bottom(), screen.bottom());
    const QRectF sides[] = {{0, 0, screen.width(), top},
                            {0, bottom, screen.width(), screen.height() - bottom},
                            {0, top, hole_.left(), bottom - top},
                            {hole_.right(), top, screen.width() - hole_.right(), bottom - top}};
    for (const QRectF& side : sides) {
        const QRectF dirty = side & event->rect();
        if (side.width() > 0 && side.height() > 0 && !dirty.isEmpty()) {
            painter.fillRect(dirty, dim());
        }
    }
    painter.drawImage(hole_.topLeft(), holeImage());
}

} // namespace velmo
