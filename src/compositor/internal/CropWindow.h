#pragma once

#include "base/Geometry.h"

#include <algorithm>

namespace velmo::internal {

/// The part of the picture that fills the frame: its centre in normalised space (y up) and the zoom factor.
/// A factor below 1 counts as 1.
struct CropWindow {
    Point center{0.5, 0.5};
    double scale = 1.0;

    /// Where a place of the screen (normalised, y up) lies in a frame of `width` x `height`: in pixels from the upper
    /// left corner of the frame, y down, with pixel (0, 0) reaching from 0 to 1. May lie outside the frame.
    Point inFrame(Point place, int width, int height) const {
        const double factor = std::max(1.0, scale);
        return {((place.x - center.x) * factor + 0.5) * width, (0.5 - (place.y - center.y) * factor) * height};
    }
};

} // namespace velmo::internal
