#pragma once

#include <QMargins>
#include <QRectF>

class QPainter;
class QColor;

namespace velmo {

/// How high a thing stands above what is under it.
enum class Elevation {
    hover,    ///< a hovered card, the flash
    floating, ///< control bar, palette, teleprompter
    dialog,   ///< menus, dialogs
};

/// Soft shadows, painted as nine-patches of masks that are blurred once.
namespace Shadow {

/// Room that the shadow of a thing takes around it.
QMargins margins(Elevation elevation);
/// Paints the shadow of a rounded rectangle. The shape itself is not painted.
void paint(QPainter& painter, const QRectF& shape, double radius, Elevation elevation);
/// The coloured glow below a primary button.
void paintGlow(QPainter& painter, const QRectF& shape, double radius, const QColor& color);

} // namespace Shadow

} // namespace velmo
