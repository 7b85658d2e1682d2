#pragma once

#include "media/PixelBuffer.h"

namespace velmo::internal {

/// Bytes of one unit of a plane: luma 1, chroma 2, BGRA 4.
constexpr int unitBytesOf(PixelFormat format, int plane) {
    return format == PixelFormat::bgra ? 4 : 1 + plane;
}

} // namespace velmo::internal
