#pragma once

#include "media/PixelBuffer.h"

namespace velmo {

/// Writes the mirror image (left and right exchanged) of an NV12 picture into another of the same size, tags included.
/// Any thread; allocates nothing.
void mirrorNv12(const PixelBuffer& from, PixelBuffer& to);

} // namespace velmo
