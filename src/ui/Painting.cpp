#include "ui/Painting.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo::Painting {

namespace {

double hairWidth(const QPainter& painter) {
    const double ratio = painter.device()->devicePixelRatioF();
    return std::max(1.0, std::round(ratio)) / ratio;
}

} // namespace

void roundedBox(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
    if (border.alpha() > 0) {
        const double half = hairWidth(painter) / 2;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(border, 2 * half));
        painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half, radius - half);
    }
    painter.restore();
}

void focusRing(QPainter& painter, const QRectF& shape, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::withOpacity(Theme::skyBright, 0.28), 3));
    painter.drawRoundedRect(shape.adjusted(-1.5, -1.5, 1.5, 1.5), radius + 1.5, radius + 1.5);
    painter.setPen(QPen(Theme::skyBright, 1));
    painter.drawRoundedRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    painter.restore();
}

void hairline(QPainter& painter, QPointF from, QPointF to, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double width = hairWidth(painter);
    if (from.y() == to.y()) {
        painter.fillRect(QRectF(from.x(), from.y(), to.x() - from.x(), width), color);
    } else {
        painter.fillRect(QRectF(from.x(), from.y(), width, to.y() - from.y()), color);
    }
    painter.restore();
}

} // namespace velmo::Painting
