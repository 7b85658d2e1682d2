#pragma once

#include "base/Geometry.h"
#include "compositor/internal/Layer.h"
#include "compositor/internal/StretchedRows.h"
#include "media/PixelBuffer.h"

#include <array>
#include <cstdint>

namespace velmo::internal {

/// A premultiplied BGRA picture scaled into a rectangle of the frame and laid over it with its own alpha.
///
/// Bilinear, the picture's edge repeated; a pixel that the rectangle covers in part has it in that part. At a whole
/// place and in its own size the picture is laid over as it is.
class PictureOver {
public:
    /// Borrows `picture` until the frame is painted. `place` in frame pixels from the upper left, y down. False when
    /// nothing of it lies in a frame of `width` x `height`. Allocates only when rows get longer.
    bool prepare(const PixelBuffer& picture, const Rect& place, int width, int height);

    /// Changes what is in the row.
    void paint(const FrameRow& row);

private:
    void blendInto(int y, Line& line);
    void trim(std::int16_t* line) const;

    PlaneView source_;
    Rect place_;
    int from_ = 0; // frame pixels on the grid: where lines begin and end
    int to_ = 0;
    int left_ = 0; // frame pixels that the place touches
    int right_ = 0;
    int top_ = 0;
    int bottom_ = 0;
    StretchedRows rows_;
    std::array<Line, 2> lines_;
};

} // namespace velmo::internal
