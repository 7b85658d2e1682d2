#include "compositor/internal/AxisMap.h"

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

std::int64_t toFixed(double value) {
    return std::llround(std::ldexp(value, AxisMap::kFractionBits));
}

} // namespace

AxisMap AxisMap::through(int length, double center, double scale) {
    const double step = 1.0 / std::max(1.0, scale);
    const double nearCenter = std::max(-1.0, std::min(2.0, center));
    const double first = length * (nearCenter - step / 2) + step / 2 - 0.5;
    return {toFixed(first), toFixed(step), length - 1};
}

AxisMap AxisMap::scaled(int length, double origin, double step) {
    constexpr double kFarthest = 1e9;
    constexpr double kSteepest = 1 << 16;
    const double legalStep = std::max(0.0, std::min(kSteepest, step));
    const double first = (0.5 - origin) * legalStep - 0.5;
    return {toFixed(std::max(-kFarthest, std::min(kFarthest, first))), toFixed(legalStep), length - 1};
}

AxisMap::Tap AxisMap::at(int i) const {
    constexpr int kDropped = kFractionBits - kWeightBits;
    const std::int64_t end = static_cast<std::int64_t>(last) << kFractionBits;
    const std::int64_t position =
        std::clamp<std::int64_t>(first + i * step, 0, end) + (std::int64_t{1} << (kDropped - 1));
    return {static_cast<int>(position >> kFractionBits),
            static_cast<int>((position >> kDropped) & ((1 << kWeightBits) - 1))};
}

} // namespace velmo::internal
