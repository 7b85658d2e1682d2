#pragma once

#include "compositor/internal/PlaneLayout.h"

#include <cmath>

/// Bitmaps over the frame stand on a grid of it: 64 pixels across for whole, aligned blocks of a row, 2 down for whole
/// rows of chroma.
namespace velmo::internal {

constexpr int kColumnGrid = kBlockBytes;
constexpr int kRowGrid = 2;

inline int floorToGrid(double position, int grid) {
    return static_cast<int>(std::floor(position / grid)) * grid;
}

inline int ceilToGrid(double position, int grid) {
    return static_cast<int>(std::ceil(position / grid)) * grid;
}

} // namespace velmo::internal
