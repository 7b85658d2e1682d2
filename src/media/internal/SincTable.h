#pragma once

#include <array>
#include <cstddef>

namespace velmo::internal {

/// A windowed sinc for reading sound between its samples. At a whole position it gives the sample itself.
class SincTable {
public:
    static constexpr int kTaps = 16;
    static constexpr int kHalf = kTaps / 2;
    static constexpr int kPhases = 512;

    static const SincTable& shared();

    /// Stereo at `position` frames into `interleaved`, which must hold `kHalf - 1` frames before and `kHalf` after it.
    std::array<float, 2> at(const float* interleaved, double position) const;

private:
    SincTable();

    // Each coefficient twice, once for each channel.
    std::array<std::array<float, kTaps * 2>, kPhases + 1> phases_;
};

} // namespace velmo::internal
