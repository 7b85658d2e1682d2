#pragma once

#include <cstdint>

/// Rows of a bitmap over rows of a frame, in the widest vectors of the machine that runs them, with the same result
/// on each. The bitmap is BGRA, sRGB, premultiplied; its code values go into Rec. 709 video range as they are. A pixel
/// without alpha leaves what it lies on exactly as it was. `row` starts on a 64-byte boundary.
namespace velmo::internal {

/// `pixels` is a multiple of 64.
void blendOverLuma(const std::uint8_t* bitmap, std::uint8_t* row, int pixels);

/// A row of Cb Cr takes the means, alpha's as well, of two by two pixels. `pixels` is a multiple of 64.
void blendOverChroma(const std::uint8_t* upper, const std::uint8_t* lower, std::uint8_t* row, int pixels);

/// `pixels` is a multiple of 16.
void blendOverBgra(const std::uint8_t* bitmap, std::uint8_t* row, int pixels);

} // namespace velmo::internal
