#include "compositor/internal/LightProfile.h"

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

constexpr double kDimmedShare = 0.78;
constexpr double kGamma = 2.2;

int codeGain(double light) {
    const long gain = std::lround(std::ldexp(std::pow(light, 1 / kGamma), 15));
    return static_cast<int>(std::min<long>(gain, LightProfile::kWholeGain));
}

/// `distance` in outer radii; 1 within the inner radius, 0 from the outer on.
double maskAt(double distance) {
    constexpr double kInner = LightProfile::kInnerRadius / LightProfile::kOuterRadius;
    return std::clamp((1 - distance) / (1 - kInner), 0.0, 1.0);
}

} // namespace

void LightProfile::prepare(double alpha) {
    if (alpha == alpha_) {
        return;
    }
    alpha_ = alpha;
    const double left = 1 - alpha * kDimmedShare;
    for (int i = 0; i < kOutside; ++i) {
        const double mask = maskAt(std::sqrt((i + 0.5) / kOutside));
        gains_[static_cast<std::size_t>(i)] = mask < 1 ? codeGain(mask + (1 - mask) * left) : kWholeGain;
    }
    gains_[kOutside] = codeGain(left);
}

} // namespace velmo::internal
