#pragma once

#include "base/Geometry.h"

#include <optional>

namespace velmo {

/// One bubble or phone window as it stands on the teacher's screen. Rectangles are in global points, y up.
struct BubbleInfo {
    Rect rect;                 ///< the visible bubble
    bool circle = false;       ///< round; else a rounded rectangle
    double corner = 0;         ///< corner size as a fraction of the shorter side
    std::optional<Rect> label; ///< its name strip, when shown
    Rect window;               ///< the whole panel; an empty one has no window stream
    int key = 0;               ///< the overlay stream: 0 camera bubble, 1 second camera, 2 phone window

    friend bool operator==(const BubbleInfo&, const BubbleInfo&) = default;
};

} // namespace velmo
