#include "session/DiskGuard.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

constexpr double kWindowSeconds = 60;
constexpr double kLowSeconds = 180;
constexpr double kLastSeconds = 15;            ///< more than passes between two judgements
constexpr double kLeastRate = 40'000;          ///< bytes a second: the sound alone
constexpr std::int64_t kReserve = 40 << 20;    ///< below that the writer ends by itself
constexpr double kEarlySeconds = 10;           ///< a rate of less time than that says little
constexpr double kEarlyRate = 6'000'000.0 / 8; ///< assumed until then: the least bit rate of the pictures

} // namespace

DiskGuard::Verdict DiskGuard::judge(double seconds, std::int64_t fileBytes, std::int64_t available) {
    readings_.push_back({seconds, fileBytes});
    while (readings_.size() > 2 && readings_[1].seconds <= seconds - kWindowSeconds) {
        readings_.pop_front();
    }
    secondsLeft_ = std::max(0.0, static_cast<double>(available - kReserve) / rate());
    if (secondsLeft_ < kLastSeconds) {
        return Verdict::over;
    }
    return secondsLeft_ < kLowSeconds && !std::exchange(lowTold_, true) ? Verdict::low : Verdict::enough;
}

double DiskGuard::rate() const {
    const double time = readings_.back().seconds - readings_.front().seconds;
    if (time < kEarlySeconds) {
        return kEarlyRate;
    }
    return std::max(kLeastRate, static_cast<double>(readings_.back().bytes - readings_.front().bytes) / time);
}

} // namespace velmo
