#pragma once

#include "media/PixelBuffer.h"

namespace velmo::internal {

/// Bytes of one unit of a plane: luma 1, chroma 2, BGRA 4. What follows tells the planes apart by it.
constexpr int unitBytesOf(PixelFormat format, int plane) {
    return format == PixelFormat::bgra ? 4 : 1 + plane;
}

/// Frame pixels that one unit covers along each axis.
constexpr int pixelsPerUnit(int unitBytes) {
    return unitBytes == 2 ? 2 : 1;
}

/// Bytes of a row for one frame pixel along it.
constexpr int bytesPerPixel(int unitBytes) {
    return unitBytes / pixelsPerUnit(unitBytes);
}

/// The code value of no light and of no colour.
constexpr int blackOf(int unitBytes) {
    return unitBytes == 1 ? 16 : unitBytes == 2 ? 128 : 0;
}

/// Rows are worked on in blocks of this many bytes, from their start to past their end.
constexpr int kBlockBytes = 64;

constexpr int blocksFor(int bytes) {
    return (bytes + kBlockBytes - 1) / kBlockBytes;
}

} // namespace velmo::internal
