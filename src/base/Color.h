#pragma once

#include <cstdint>

namespace velmo {

/// sRGB, gamma-coded components and straight alpha, each from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    /// From 0xRRGGBB.
    static constexpr Color fromHex(std::uint32_t rgb) {
        return {((rgb >> 16) & 0xff) / 255.0, ((rgb >> 8) & 0xff) / 255.0, (rgb & 0xff) / 255.0, 1.0};
    }

    friend bool operator==(const Color&, const Color&) = default;
};

} // namespace velmo
