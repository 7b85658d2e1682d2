#pragma once

#include "base/Geometry.h"

/// The rectangle that is dragged out on a screen. It always has the screen's own shape, since it will fill the frame.
/// Points, y up, the screen's lower left corner at 0, 0.
namespace velmo::RegionSelection {

/// From where the button went down to where the mouse is now, which may be off the screen. The larger movement rules.
Rect dragged(Point start, Point mouse, Size screen);
/// Whether it is large enough to be used.
bool isUsable(const Rect& selection);
Rect toFractions(const Rect& selection, Size screen);
Rect fromFractions(const Rect& fractions, Size screen);

} // namespace velmo::RegionSelection
