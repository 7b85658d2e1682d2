#include "base/MediaTime.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace velmo {

namespace {

__extension__ using Wide = __int128;

std::int64_t divideRounding(Wide numerator, Wide denominator) {
    const Wide half = denominator / 2;
    const Wide shifted = numerator >= 0 ? numerator + half : numerator - half;
    return static_cast<std::int64_t>(shifted / denominator);
}

// The least common timescale where it fits, so that sums of mixed rates stay exact.
std::int32_t commonTimescale(std::int32_t a, std::int32_t b) {
    const std::int64_t common = std::lcm(static_cast<std::int64_t>(a), static_cast<std::int64_t>(b));
    return common <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(common) : std::max(a, b);
}

} // namespace

MediaTime MediaTime::fromSeconds(double seconds, std::int32_t timescale) {
    const double scaled = std::round(seconds * timescale);
    if (!std::isfinite(scaled) || std::abs(scaled) >= 9.2e18) {
        return invalid();
    }
    return {static_cast<std::int64_t>(scaled), timescale};
}

double MediaTime::seconds() const {
    return valid_ ? static_cast<double>(value_) / timescale_ : 0.0;
}

std::int64_t MediaTime::convertedTo(std::int32_t timescale) const {
    if (!valid_) {
        return 0;
    }
    return timescale == timescale_ ? value_ : divideRounding(Wide(value_) * timescale, timescale_);
}

MediaTime operator+(MediaTime a, MediaTime b) {
    if (!a.valid_ || !b.valid_) {
        return MediaTime::invalid();
    }
    const std::int32_t timescale = commonTimescale(a.timescale_, b.timescale_);
    return {a.convertedTo(timescale) + b.convertedTo(timescale), timescale};
}

MediaTime operator-(MediaTime a, MediaTime b) {
    return a + -b;
}

std::partial_ordering operator<=>(MediaTime a, MediaTime b) {
    if (!a.valid_ || !b.valid_) {
        return std::partial_ordering::unordered;
    }
    const Wide left = Wide(a.value_) * b.timescale_;
    const Wide right = Wide(b.value_) * a.timescale_;
    if (left == right) {
        return std::partial_ordering::equivalent;
    }
    return left < right ? std::partial_ordering::less : std::partial_ordering::greater;
}

} // namespace velmo
