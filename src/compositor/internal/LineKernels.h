#pragma once

#include <cstdint>

/// Lines over rows of a frame, and one row faded into another, in the widest vectors of the machine that runs them,
/// with the same result on each.
///
/// A line holds premultiplied BGRA, sRGB, one component per 16 bits with 7 bits of fraction; its code values go into
/// Rec. 709 video range as they are. A pixel without alpha leaves what it lies on exactly as it was. Lines start on a
/// 64-byte boundary.
namespace velmo::internal {

/// `pixels` is a multiple of 64.
void layLineOverLuma(const std::int16_t* line, std::uint8_t* row, int pixels);

/// A row of Cb Cr takes the means, alpha's as well, of two by two pixels. `pixels` is a multiple of 64.
void layLinesOverChroma(const std::int16_t* upper, const std::int16_t* lower, std::uint8_t* row, int pixels);

/// `pixels` is a multiple of 16.
void layLineOverBgra(const std::int16_t* line, std::uint8_t* row, int pixels);

/// Moves each byte of `row` by its share towards `source`. Shares from 0 to 2^15 - 1, which are exactly nothing and all
/// of it. `bytes` is a multiple of 64.
void fadeTowards(const std::uint8_t* source, const std::int16_t* shares, std::uint8_t* row, int bytes);

} // namespace velmo::internal
