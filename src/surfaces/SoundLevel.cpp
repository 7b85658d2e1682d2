#include "surfaces/SoundLevel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace velmo {

namespace {

constexpr double kFloor = 50; // dB below full scale
constexpr double kRange = 42; // dB

} // namespace

double soundLevel(std::span<const float> interleaved) {
    double power = 0;
    for (std::size_t i = 0; i + 1 < interleaved.size(); i += 2) {
        power += static_cast<double>(interleaved[i]) * static_cast<double>(interleaved[i]);
    }
    const std::size_t frames = interleaved.size() / 2;
    if (frames == 0 || power <= 0) {
        return 0;
    }
    const double decibels = 10 * std::log10(power / static_cast<double>(frames));
    return std::clamp((decibels + kFloor) / kRange, 0.0, 1.0);
}

} // namespace velmo
