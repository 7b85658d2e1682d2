#pragma once

#include "media/PixelBuffer.h"
#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/PixelRect.h"

namespace velmo::x11 {

/// Converts the part `rect` of `from` into the same place of an NV12 buffer: Rec. 709, video range, chroma the mean of
/// each 2x2 block. `rect` lies in both, begins at even coordinates, and is even in size but at the buffer's right and
/// lower edge. Pixels of `from` beyond the buffer take no part. Any thread.
void convertToNv12(const Picture& from, const PixelBuffer& to, const PixelRect& rect);

/// Copies the part `rect` into the same place of a BGRA buffer; without alpha in `from` it comes out opaque.
void copyToBgra(const Picture& from, const PixelBuffer& to, const PixelRect& rect);

} // namespace velmo::x11
