#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The few shapes that all surfaces are made of.
namespace velmo::Painting {

/// A filled rounded rectangle with a border of one pixel inside its edge; either colour may be transparent.
void roundedBox(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border);
/// The mark of keyboard focus: a line on the shape's edge and a band of 3 pixels outside it.
void focusRing(QPainter& painter, const QRectF& shape, double radius);
/// A line of one device pixel and full strength between two points of the same x or y.
void hairline(QPainter& painter, QPointF from, QPointF to, const QColor& color);

} // namespace velmo::Painting
