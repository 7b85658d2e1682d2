#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>
#include <QString>
#include <QStringList>

class QPainter;

namespace velmo {

/// Icons by name. They come from one set of line drawings on a 24-unit grid, bundled with the program; which drawing
/// stands for which name is told by the table in Symbol.cpp alone.
namespace Symbol {

/// All names of the table.
QStringList names();
bool exists(const QString& name);

/// The icon in one colour, `size` points square for a device pixel ratio. Cached. A name that is not in the table
/// is our own bug: it asserts in debug builds and is empty otherwise.
QPixmap pixmap(const QString& name, int size, const QColor& color, double ratio = 1);
/// Centred in `rect`, `size` points square, in the painter's device pixel ratio.
void paint(QPainter& painter, const QRectF& rect, const QString& name, int size, const QColor& color);

} // namespace Symbol

} // namespace velmo
