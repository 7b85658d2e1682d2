#pragma once

#include "base/Geometry.h"

namespace velmo {

/// The one conversion between the program's y-up points and a space whose y counts downwards from the top edge of the
/// primary display (Qt, X11). It is its own inverse. `primaryHeight` is in the unit of what is converted.
struct FlippedGeometry {
    double primaryHeight = 0;

    constexpr Point flip(Point p) const { return {p.x, primaryHeight - p.y}; }
    /// `y` of the result is the other edge: the lower one of a y-up rectangle, the upper one of a y-down rectangle.
    constexpr Rect flip(const Rect& r) const { return {r.x, primaryHeight - r.y - r.height, r.width, r.height}; }
};

} // namespace velmo
