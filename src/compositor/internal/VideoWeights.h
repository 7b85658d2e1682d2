#pragma once

#include "base/Color.h"

#include <algorithm>
#include <array>
#include <cstdint>

/// What sRGB code values are in Rec. 709 video range: they go into it as they are.
namespace velmo::internal {

/// What a premultiplied pixel of 8 bits adds to a component: shares in 1/2^15.
struct Weights {
    int blue;
    int green;
    int red;
    int alpha;
};

constexpr int weightShare(double value) {
    return static_cast<int>(value * (1 << 15) / 255 + (value < 0 ? -0.5 : 0.5));
}

// Luma of 219 steps above 16, chroma of 224 steps about 128. Grey adds nothing to chroma.
constexpr double kRed = 0.2126;
constexpr double kBlue = 0.0722;
constexpr double kGreen = 1 - kRed - kBlue;
constexpr Weights kLuma = {weightShare(219 * kBlue), weightShare(219 * kGreen), weightShare(219 * kRed),
                           weightShare(16)};
constexpr int kCbOfBlue = weightShare(224 * 0.5);
constexpr int kCbOfRed = weightShare(-224 * kRed / (2 * (1 - kBlue)));
constexpr Weights kCb = {kCbOfBlue, -kCbOfBlue - kCbOfRed, kCbOfRed, weightShare(128)};
constexpr int kCrOfRed = weightShare(224 * 0.5);
constexpr int kCrOfBlue = weightShare(-224 * kBlue / (2 * (1 - kRed)));
constexpr Weights kCr = {kCrOfBlue, -kCrOfBlue - kCrOfRed, kCrOfRed, weightShare(128)};

/// The bytes of a unit.
using UnitCode = std::array<std::uint8_t, 4>;

/// An opaque colour in a plane of `unitBytes`.
constexpr UnitCode unitCodeOf(const Color& color, int unitBytes) {
    const auto code = [](double value) { return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0) + 0.5); };
    const double luma = kRed * color.red + kGreen * color.green + kBlue * color.blue;
    switch (unitBytes) {
    case 1:
        return {code(16 + 219 * luma)};
    case 2:
        return {code(128 + 112 * (color.blue - luma) / (1 - kBlue)), code(128 + 112 * (color.red - luma) / (1 - kRed))};
    default:
        return {code(255 * color.blue), code(255 * color.green), code(255 * color.red), 255};
    }
}

} // namespace velmo::internal
