#pragma once

#include "base/SerialQueue.h"
#include "platform/AudioInput.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

namespace velmo {

/// Hears an input on a queue of its own: how much came, with which times, and where the beeps in it begin.
class Listener {
public:
    AudioInputService::Handler handler() {
        return [this](const Sample& sample) { hear(sample); };
    }
    SerialQueue& queue() { return queue_; }

    std::int64_t frames() const { return frames_; }
    /// Whether a stretch began before the end of the one before it.
    bool wentBack() const { return wentBack_; }
    std::vector<double> beeps() const;
    /// Waits until `happened`, at most `seconds`.
    static bool waitUntil(const std::function<bool()>& happened, double seconds = 60);
    bool waitForFrames(std::int64_t more, double seconds = 60) const;

private:
    void hear(const Sample& sample);

    std::atomic<std::int64_t> frames_{0};
    std::atomic<bool> wentBack_{false};
    mutable std::mutex mutex_;
    std::vector<double> beeps_;
    double end_ = 0;
    double lastLoud_ = 0;
    ThreadQueue queue_{"test.sound"};
};

} // namespace velmo
