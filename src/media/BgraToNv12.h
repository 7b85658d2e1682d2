#pragma once

#include "media/PixelBuffer.h"

namespace velmo {

/// Whole pixels, `x`, `y` the upper left corner.
struct PixelArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Converts the part `area` of `from` (B, G, R and a byte that means nothing) into the same place of an NV12 buffer:
/// Rec. 709, video range, chroma the mean of each 2x2 block. `area` lies in both, begins at even coordinates, and is
/// even in size but at the buffer's right and lower edge. Pixels of `from` beyond the buffer take no part. Any thread.
void convertBgraToNv12(const PlaneView& from, const PixelBuffer& to, const PixelArea& area);

} // namespace velmo
