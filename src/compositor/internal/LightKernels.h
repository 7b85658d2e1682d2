#pragma once

#include "compositor/internal/LightProfile.h"

#include <cstdint>

/// The inner loops of the spotlight, in the widest vectors of the machine that runs them. They multiply what is above
/// black (in chroma: what is away from grey) and leave the alpha of BGRA alone. Integers wherever the machines might
/// differ, so that the result is the same on each. Blocks are of 64 bytes and start on 64-byte boundaries.
namespace velmo::internal {

/// Multiplies `blocks` blocks by one gain in 1/2^15.
void dimBlocks(std::uint8_t* row, int blocks, int unitBytes, int gain);

/// Where a stretch of a row lies in the light.
struct LightRow {
    const std::int32_t* gains = nullptr; ///< of a `LightProfile`
    double middle = 0;                   ///< of the light, in units of the row, 0 in the middle of the first one
    double perUnit = 0;                  ///< distance units of the profile for one unit of the row
    std::int32_t rise = 0;               ///< squared distance of the row itself, at most that of the outer radius
};

/// Multiplies `blocks` blocks, each unit by the gain at its distance.
void lightBlocks(std::uint8_t* row, int blocks, int unitBytes, const LightRow& light);

} // namespace velmo::internal
