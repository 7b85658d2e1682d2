#pragma once

#include <cstddef>
#include <cstdint>

namespace velmo::x11 {

/// Pixels in memory, B, G, R and alpha or an undefined byte, rows `stride` bytes apart, first row on top. Borrowed.
struct Picture {
    std::uint8_t* data = nullptr;
    std::ptrdiff_t stride = 0;
    int width = 0;
    int height = 0;
    bool hasAlpha = false; ///< premultiplied; else the fourth byte means nothing

    std::uint8_t* at(int x, int y) const { return data + y * stride + std::ptrdiff_t{4} * x; }
};

} // namespace velmo::x11
