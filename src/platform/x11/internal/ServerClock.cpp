#include "platform/x11/internal/ServerClock.h"

#include <algorithm>
#include <cmath>

namespace velmo::x11 {
namespace {

constexpr double kStampMs = 1; // stamps are whole milliseconds, cut off

/// The stamp in full, in milliseconds: the one of all that end alike which lies nearest to `nowMs`.
double unwrapped(std::uint32_t stamp, double nowMs) {
    const auto now = static_cast<std::int64_t>(std::floor(nowMs));
    const auto behind = static_cast<std::int32_t>(static_cast<std::uint32_t>(now) - stamp);
    return static_cast<double>(now - behind);
}

} // namespace

void ServerClock::observe(double before, std::uint32_t stamp, double after) {
    const double server = unwrapped(stamp, after * 1000);
    const double least = before * 1000 - server - kStampMs;
    const double most = after * 1000 - server;
    const bool drifted = least > most_ || most < least_;
    least_ = drifted ? least : std::max(least, least_);
    most_ = drifted ? most : std::min(most, most_);
    offset_ = least_ <= 0 && most_ >= 0 ? 0 : (least_ + most_) / 2;
}

double ServerClock::hostTime(std::uint32_t stamp, double now) const {
    const double host = (unwrapped(stamp, now * 1000) + kStampMs / 2 + offset_) / 1000;
    return std::min(host, now);
}

} // namespace velmo::x11
