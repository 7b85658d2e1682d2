#include "ui/ChalkBoard.h"

#include "ui/Theme.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

namespace velmo::ChalkBoard {

namespace {

constexpr double kGridStep = 32;
constexpr double kGridOpacity = 0.055;
constexpr double kTopHeight = 200;
constexpr double kLightOpacity = 0.40;

} // namespace

void paintStroke(QPainter& painter, QPointF from, double width) {
    const auto stroke = [&](double start, double share, double sink, const QColor& color, double thickness) {
        QPainterPath path(from + QPointF(start, sink));
        path.cubicTo(from + QPointF(start + width * share * 0.3, sink - 4),
                     from + QPointF(start + width * share * 0.7, sink + 3),
                     from + QPointF(start + width * share, sink - 2));
        painter.strokePath(path, QPen(color, thickness, Qt::SolidLine, Qt::RoundCap));
    };
    stroke(0, 1, 3, Theme::withOpacity(Theme::sky, 0.85), 2.6);
    stroke(width * 0.08, 0.72, 7, Theme::withOpacity(Theme::sky, 0.35), 1.6);
}

void paintTop(QPainter& painter, const QPainterPath& shape, const QRectF& box) {
    painter.save();
    painter.setClipPath(shape, Qt::IntersectClip); // fades long before its edge could show how jagged it is
    QRadialGradient light(QPointF(box.center().x(), box.top()), box.width() * 0.42);
    light.setColorAt(0, Theme::withOpacity(Theme::brand, kLightOpacity));
    light.setColorAt(1, Theme::withOpacity(Theme::brand, 0));
    painter.fillRect(box, light);
    QLinearGradient fade(0, box.top(), 0, box.top() + kTopHeight);
    fade.setColorAt(0, Theme::withOpacity(Theme::surface, kGridOpacity));
    fade.setColorAt(1, Theme::withOpacity(Theme::surface, 0));
    for (double x = box.left() + kGridStep; x < box.right(); x += kGridStep) {
        painter.fillRect(QRectF(x, box.top(), 1, kTopHeight), fade);
    }
    for (double y = box.top() + kGridStep; y < box.top() + kTopHeight; y += kGridStep) {
        painter.fillRect(QRectF(box.left(), y, box.width(), 1), fade);
    }
    painter.restore();
}

} // namespace velmo::ChalkBoard
