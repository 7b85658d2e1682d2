#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// The loops that bring a picture to another size, for the instruction set of this computer. Eight rows of the result
/// are made at a time: they lie side by side for each column, so that a column is one vector whatever it is made of.
namespace velmo::FillKernels {

inline constexpr std::size_t kRows = 8;
/// Values beyond the end of each row of sums that may be read or written.
inline constexpr std::size_t kSpare = 64;

/// Which units of a line make unit `i` of the result, and how much each. All take part with the same number of units,
/// if need be with weight 0.
struct Axis {
    std::vector<int> begins;            ///< by unit of the result
    std::vector<std::uint16_t> weights; ///< `count` for each unit of the result
    int count = 0;
    int first = 0; ///< units of the source that take part
    int end = 0;
};

/// `sums` = the weighted sum of `count` rows of `bytes` bytes; weights are parts of 256. Reads up to 64 bytes more.
void addRows(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
             std::size_t bytes, std::uint16_t* sums);

/// `turned[i * 8 + r]` = `rows[r * stride + i]`, for `count` values and what is missing to a multiple of 8.
void turn(const std::uint16_t* rows, std::size_t stride, std::size_t count, std::uint16_t* turned);

/// Turned sums of luma and of Cb and Cr in turn, each from the `first` unit of its axis on, become one pixel of each of
/// the eight `rows` for each unit of the axes: Rec. 709 video range to opaque RGB32. Weights are parts of 65536.
void mixColumns(const std::uint16_t* luma, const Axis& lumaAxis, const std::uint16_t* chroma, const Axis& chromaAxis,
                std::uint32_t* const* rows);

} // namespace velmo::FillKernels
