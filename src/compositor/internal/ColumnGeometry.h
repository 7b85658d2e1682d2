#pragma once

#include "base/Geometry.h"

namespace velmo::internal {

/// How the picture and the column share the frame. Frame pixels from the upper left, y down.
struct ColumnGeometry {
    int columnWidth = 0;     ///< a fifth of the frame, whole pixels, however far it has slid in
    double pictureScale = 1; ///< the picture shrinks as a whole
    Rect picture;            ///< beside the column, in the middle of the height
    Rect column;             ///< slides in from the edge of the frame

    /// `slide` from 0 to 1 is smoothed.
    static ColumnGeometry of(int width, int height, double slide, bool left);
};

} // namespace velmo::internal
