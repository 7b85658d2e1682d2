#include "integration/pulse/Listener.h"

#include <cmath>
#include <thread>

namespace velmo {

namespace {

constexpr double kSlew = 0.0005; // what following a drifting source may take from one stretch

} // namespace

void Listener::hear(const Sample& sample) {
    const double start = sample.presentation().seconds();
    if (start < end_ - kSlew) {
        wentBack_ = true;
    }
    const auto floats = sample.audio->floats();
    for (int i = 0; i < sample.audio->frames(); ++i) {
        const double time = start + i / 48000.0;
        if (std::abs(floats[static_cast<std::size_t>(2 * i)]) > 0.3F) {
            if (time > lastLoud_ + 0.04) {
                const std::lock_guard lock(mutex_);
                beeps_.push_back(time);
            }
            lastLoud_ = time;
        }
    }
    end_ = start + sample.audio->frames() / 48000.0;
    frames_ += sample.audio->frames();
}

std::vector<double> Listener::beeps() const {
    const std::lock_guard lock(mutex_);
    return beeps_;
}

bool Listener::waitUntil(const std::function<bool()>& happened, double seconds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!happened()) {
        if (std::chrono::steady_clock::now() > until) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

bool Listener::waitForFrames(std::int64_t more, double seconds) const {
    const std::int64_t wanted = frames_ + more;
    return waitUntil([&] { return frames_ >= wanted; }, seconds);
}

} // namespace velmo
