#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

class QPainter;

/// What makes a window a blackboard. Main thread.
namespace velmo::ChalkBoard {

/// Two strokes of chalk under a title, as wide as it; `from` is where the first begins.
void paintStroke(QPainter& painter, QPointF from, double width);
/// A light from above and a fine grid that fades downwards, inside of `shape`.
void paintTop(QPainter& painter, const QPainterPath& shape, const QRectF& box);

} // namespace velmo::ChalkBoard
