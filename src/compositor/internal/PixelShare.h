#pragma once

#include <algorithm>
#include <cmath>

namespace velmo::internal {

/// The part of the pixels from `first` up to `end` that lies between `from` and `to`: 0 to 1.
inline double shareOf(int first, int end, double from, double to) {
    const double covered = std::min<double>(end, to) - std::max<double>(first, from);
    return std::clamp(covered / (end - first), 0.0, 1.0);
}

/// A share in 1/2^15; a whole one is 2^15.
inline int fixedShare(double share) {
    return static_cast<int>(std::lround(share * (1 << 15)));
}

} // namespace velmo::internal
