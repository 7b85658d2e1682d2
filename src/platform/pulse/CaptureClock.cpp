#include "platform/pulse/CaptureClock.h"

#include <algorithm>
#include <cstdlib>

namespace velmo {

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;

} // namespace

void CaptureClock::Offsets::add(std::int64_t offset) {
    values_[count_ % kWindow] = offset;
    ++count_;
}

std::int64_t CaptureClock::Offsets::median() const {
    auto sorted = values_;
    const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(size());
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(size() / 2);
    std::nth_element(sorted.begin(), middle, end);
    return *middle;
}

CaptureClock::CaptureClock(int sampleRate) : sampleRate_(sampleRate) {}

std::int64_t CaptureClock::nominal(std::int64_t frames) const {
    // Whole seconds apart, so that hours of frames do not overflow.
    return frames / sampleRate_ * kNanoseconds + frames % sampleRate_ * kNanoseconds / sampleRate_;
}

void CaptureClock::anchorOn(const Offsets& offsets) {
    near_ = offsets;
    apart_.clear();
    offset_ = near_.median();
    anchored_ = true;
}

void CaptureClock::observe(MediaTime time) {
    const std::int64_t offset = time.convertedTo(kNanoseconds) - nominal(added_);
    if (anchored_ && std::abs(offset - near_.median()) < kGap) {
        near_.add(offset);
        apart_.clear();
        return;
    }
    apart_.add(offset);
    if (apart_.size() >= kAnchorCount) {
        anchorOn(apart_);
    }
}

void CaptureClock::follow(std::int64_t length) {
    const std::int64_t error = near_.median() - offset_;
    const std::int64_t most = std::abs(error) > kStep ? std::abs(error) : length * kMostSlew / kNanoseconds;
    offset_ += std::clamp(error, -most, most);
}

std::optional<MediaTime> CaptureClock::next(int frames) {
    const std::int64_t start = nominal(timed_);
    timed_ += frames;
    const std::int64_t length = nominal(timed_) - start;
    const std::int64_t time = start + offset_;
    follow(length);
    if (lastEnd_ && time < *lastEnd_) {
        return std::nullopt;
    }
    lastEnd_ = nominal(timed_) + offset_;
    return MediaTime::fromNanoseconds(time);
}

void CaptureClock::restart() {
    added_ = 0;
    timed_ = 0;
    anchored_ = false;
    near_.clear();
    apart_.clear();
}

} // namespace velmo
