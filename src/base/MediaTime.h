#pragma once

#include <compare>
#include <cstdint>

namespace velmo {

/// A rational media time: `value / timescale` seconds, exact, with a validity flag.
///
/// Sums and comparisons are exact as long as the common timescale fits in 32 bits; beyond that the sum
/// is rounded to the nearest unit of the finer timescale. Any operation with an invalid time is invalid,
/// and an invalid time compares unordered with everything, itself included.
class MediaTime {
public:
    constexpr MediaTime() = default; // invalid
    constexpr MediaTime(std::int64_t value, std::int32_t timescale)
        : value_(value), timescale_(timescale), valid_(timescale > 0) {}

    static constexpr MediaTime invalid() { return {}; }
    static constexpr MediaTime zero() { return {0, 1}; }
    /// Nearest representable time to `seconds`; invalid for a value that is not finite or out of range.
    static MediaTime fromSeconds(double seconds, std::int32_t timescale = 1'000'000'000);
    static constexpr MediaTime fromNanoseconds(std::int64_t ns) { return {ns, 1'000'000'000}; }

    constexpr bool isValid() const { return valid_; }
    constexpr std::int64_t value() const { return value_; }
    constexpr std::int32_t timescale() const { return timescale_; }
    /// 0 for an invalid time.
    double seconds() const;
    /// The value in units of 1/`timescale`, rounded half away from zero. 0 for an invalid time.
    std::int64_t convertedTo(std::int32_t timescale) const;

    friend MediaTime operator+(MediaTime a, MediaTime b);
    friend MediaTime operator-(MediaTime a, MediaTime b);
    friend MediaTime operator-(MediaTime a) { return a.valid_ ? MediaTime(-a.value_, a.timescale_) : a; }
    MediaTime& operator+=(MediaTime b) { return *this = *this + b; }
    MediaTime& operator-=(MediaTime b) { return *this = *this - b; }

    /// Compares the instants, so 1/2 equals 2/4.
    friend std::partial_ordering operator<=>(MediaTime a, MediaTime b);
    friend bool operator==(MediaTime a, MediaTime b) { return (a <=> b) == std::partial_ordering::equivalent; }

private:
    std::int64_t value_ = 0;
    std::int32_t timescale_ = 0;
    bool valid_ = false;
};

} // namespace velmo
