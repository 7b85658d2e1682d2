#include "media/internal/SincTable.h"

#include <cmath>
#include <numbers>

namespace velmo::internal {

namespace {

constexpr double kKaiserBeta = 7.0; // about 70 dB down beside the pass band

double besselI0(double x) {
    double sum = 1;
    double term = 1;
    for (int k = 1; k < 32; ++k) {
        term *= (x / 2 / k) * (x / 2 / k);
        sum += term;
    }
    return sum;
}

double windowedSinc(double x) {
    const double edge = x / SincTable::kHalf;
    if (std::abs(edge) >= 1) {
        return 0;
    }
    const double window = besselI0(kKaiserBeta * std::sqrt(1 - edge * edge)) / besselI0(kKaiserBeta);
    const double angle = std::numbers::pi * x;
    return window * (std::abs(x) < 1e-9 ? 1.0 : std::sin(angle) / angle);
}

} // namespace

const SincTable& SincTable::shared() {
    static const SincTable table;
    return table;
}

SincTable::SincTable() {
    for (int phase = 0; phase <= kPhases; ++phase) {
        const double fraction = static_cast<double>(phase) / kPhases;
        std::array<double, kTaps> taps{};
        double sum = 0;
        for (int tap = 0; tap < kTaps; ++tap) {
            taps[static_cast<std::size_t>(tap)] = windowedSinc(tap - (kHalf - 1) - fraction);
            sum += taps[static_cast<std::size_t>(tap)];
        }
        auto& row = phases_[static_cast<std::size_t>(phase)];
        for (std::size_t tap = 0; tap < kTaps; ++tap) {
            row[tap * 2] = row[tap * 2 + 1] = static_cast<float>(taps[tap] / sum);
        }
    }
}

std::array<float, 2> SincTable::at(const float* interleaved, double position) const {
    const double whole = std::floor(position);
    const auto phase = static_cast<std::size_t>(std::lround((position - whole) * kPhases));
    const float* row = phases_[phase].data();
    const float* in = interleaved + (static_cast<std::ptrdiff_t>(whole) - (kHalf - 1)) * 2;
    // Eight sums side by side: the compiler makes them vector operations without reordering anything.
    std::array<float, 8> sums{};
    for (std::size_t i = 0; i < kTaps * 2; i += 8) {
        for (std::size_t lane = 0; lane < 8; ++lane) {
            sums[lane] += in[i + lane] * row[i + lane];
        }
    }
    return {(sums[0] + sums[2]) + (sums[4] + sums[6]), (sums[1] + sums[3]) + (sums[5] + sums[7])};
}

} // namespace velmo::internal
