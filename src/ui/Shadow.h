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

/// A shadow with measures of its own, in points: how far down it lies, how wide its soft edge is, and how dark.
struct Soft {
    double down = 0;
    double blur = 0;
    double opacity = 1;
};

/// Room that the shadow of a thing takes around it.
QMargins margins(Elevation elevation);
QMargins margins(const Soft& shadow);
/// Paints the shadow of a rounded rectangle. The shape itself is not painted.
void paint(QPainter& painter, const QRectF& shape, double radius, Elevation elevation);
/// One mask is kept for each radius and blur, so that neither should change from step to step; shape and opacity may.
void paint(QPainter& painter, const QRectF& shape, double radius, const Soft& shadow);
/// The coloured glow below a primary button.
void paintGlow(QPainter& painter, const QRectF& shape, double radius, const QColor& color);

} // namespace Shadow

} // namespace velmo
