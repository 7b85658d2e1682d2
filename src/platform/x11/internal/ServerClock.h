#pragma once

#include <cstdint>
#include <limits>

namespace velmo::x11 {

/// Turns the time stamps of an X server, milliseconds modulo 2^32 of a clock of its own, into host-clock seconds.
///
/// A server of this machine stamps with the host clock itself; that is taken to be so for as long as no measurement
/// speaks against it. For another server the offset is the middle of what all measurements allow; one that contradicts
/// them stands for a clock that has drifted, and replaces them.
class ServerClock {
public:
    /// The server stamped something with `stamp` between the host-clock seconds `before` and `after`.
    void observe(double before, std::uint32_t stamp, double after);
    /// Host-clock seconds of an event that is known at `now`: at most half a millisecond off on the same clock, never
    /// after `now`.
    double hostTime(std::uint32_t stamp, double now) const;
    /// Seconds to add to a stamp; 0 when both clocks are one.
    double offset() const { return offset_ / 1000; }

private:
    // Milliseconds.
    double least_ = -std::numeric_limits<double>::infinity();
    double most_ = std::numeric_limits<double>::infinity();
    double offset_ = 0;
};

} // namespace velmo::x11
