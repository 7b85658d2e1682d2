#pragma once

#include "base/Geometry.h"

namespace velmo::internal {

/// The part of the picture that fills the frame: its centre in normalised space (y up) and the zoom factor.
struct CropWindow {
    Point center{0.5, 0.5};
    double scale = 1.0;
};

} // namespace velmo::internal
