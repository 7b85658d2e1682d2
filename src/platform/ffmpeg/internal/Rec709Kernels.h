#pragma once

#include <cstddef>
#include <cstdint>

/// The loops that bring the pictures of cameras to Rec. 709 in video range, for the instruction set of this computer.
/// Between two matrices only luma depends on all three values, and the colour differences on each other alone; so a row
/// is done without a way over red, green and blue. Colour that is shared by two pixels stays so.
namespace velmo::internal::Rec709Kernels {

/// Rows have at least so many pixels. Their number is even, as all numbers of pixels here.
inline constexpr std::size_t kLeastPixels = 128;

/// 16384 times what each value is worth; differences count from 128.
struct Matrix {
    std::int16_t luma;
    std::int16_t lumaOfCb;
    std::int16_t lumaOfCr;
    std::int16_t cb;
    std::int16_t cbOfCr;
    std::int16_t crOfCb;
    std::int16_t cr;
    std::int16_t black; ///< the luma of black in the source
};

/// From a matrix that is told by its shares of red and blue.
Matrix makeMatrix(double red, double blue, bool fullRange);

/// `luma` and, for each two pixels, one of `cb` and of `cr` become luma.
void luma(const Matrix& matrix, const std::uint8_t* luma, const std::uint8_t* cb, const std::uint8_t* cr,
          std::size_t pixels, std::uint8_t* to);

struct ColorRow {
    const std::uint8_t* cb;
    const std::uint8_t* cr;
};
/// The mean of two rows of `pairs` differences becomes a row of Cb and Cr in turn. The rows may be the same one.
void color(const Matrix& matrix, ColorRow upper, ColorRow lower, std::size_t pairs, std::uint8_t* to);

/// A row of Y, Cb, Y, Cr in turn taken apart.
void unpack(const std::uint8_t* packed, std::size_t pixels, std::uint8_t* luma, std::uint8_t* cb, std::uint8_t* cr);

} // namespace velmo::internal::Rec709Kernels
