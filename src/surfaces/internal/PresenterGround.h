#pragma once

#include <QImage>
#include <QSize>

class QColor;

/// What lies behind the presenter: a colour, over it the blurred desktop, over that a tint. Any thread.
namespace velmo::PresenterGround {

/// Colour and tint together, as they are seen without a picture.
QColor plain();
/// The picture stretched to `pixels` with the tint over it: opaque, RGB32.
QImage tinted(const QImage& blurred, QSize pixels);
/// How much both hide of what is behind when each has the opacity `opacity`.
double cover(double opacity);

} // namespace velmo::PresenterGround
