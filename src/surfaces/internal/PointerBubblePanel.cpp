#include "surfaces/internal/PointerBubblePanel.h"

#include "compositor/PointerBubble.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace velmo {

namespace {

constexpr double kCanvas = 4.2; // side by the bubble's radius

} // namespace

PointerBubblePanel::PointerBubblePanel() : FloatingPanel(PanelLevel::spotlight, {0, std::nullopt}) {
    setWindowTitle(QStringLiteral("Velmo Studio · burbuja del puntero"));
    setClickThrough(true);
}

void PointerBubblePanel::setRadius(double radius) {
    radius_ = radius;
    const int side = static_cast<int>(std::ceil(radius * kCanvas));
    resize(side, side);
}

void PointerBubblePanel::showAt(QPointF center, double age) {
    age_ = age;
    move((center - middle()).toPoint());
    show();
    update();
}

// Without a compositing manager only the rim is left.
QPainterPath PointerBubblePanel::outline() const {
    QPainterPath rim;
    rim.addEllipse(middle(), radius_, radius_);
    rim.addEllipse(middle(), radius_ * 0.9, radius_ * 0.9);
    return rim;
}

void PointerBubblePanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPointF center = middle();
    PointerBubble::draw(painter, {center.x(), center.y()}, radius_, age_, colors_);
}

} // namespace velmo
