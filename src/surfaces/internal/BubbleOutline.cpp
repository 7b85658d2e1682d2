#include "surfaces/internal/BubbleOutline.h"

#include <algorithm>
#include <cmath>

namespace velmo {

BubbleOutline BubbleOutline::of(QSizeF panel, BubbleShape shape, double corner) {
    BubbleOutline outline;
    outline.inner =
        QRectF(kPad, kPad, std::max(panel.width() - 2 * kPad, 1.0), std::max(panel.height() - 2 * kPad, 1.0));
    outline.kind = shape == BubbleShape::circle ? Kind::ellipse : Kind::rounded;
    outline.radius = std::min(outline.side() * 0.5, outline.side() * std::max(corner, 0.0));
    return outline;
}

BubbleOutline BubbleOutline::plain(QSizeF panel) {
    return {QRectF(QPointF(), panel), Kind::plain, 0};
}

QPainterPath BubbleOutline::path() const {
    QPainterPath path;
    switch (kind) {
    case Kind::plain:
        path.addRect(inner);
        break;
    case Kind::ellipse:
        path.addEllipse(inner);
        break;
    case Kind::rounded:
        path.addRoundedRect(inner, radius, radius);
        break;
    }
    return path;
}

double BubbleOutline::distance(QPointF point) const {
    const double x = std::abs(point.x() - inner.center().x());
    const double y = std::abs(point.y() - inner.center().y());
    const double a = inner.width() / 2;
    const double b = inner.height() / 2;
    if (kind == Kind::ellipse) {
        if (a == b) {
            return std::sqrt(x * x + y * y) - a;
        }
        const double reach = std::hypot(x / a, y / b);
        const double slope = std::hypot(x / (a * a), y / (b * b));
        return slope > 0 ? reach * (reach - 1) / slope : -std::min(a, b);
    }
    const double round = kind == Kind::rounded ? radius : 0;
    const double dx = x - a + round;
    const double dy = y - b + round;
    if (dx <= 0 || dy <= 0) {
        return std::max(dx, dy) - round;
    }
    return std::sqrt(dx * dx + dy * dy) - round;
}

} // namespace velmo
