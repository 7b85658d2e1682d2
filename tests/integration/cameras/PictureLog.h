#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/CameraCapture.h"
#include "support/WaitUntil.h"

#include <mutex>
#include <vector>

namespace velmo::test {

/// Notes what a camera delivers, on a real queue.
class PictureLog {
public:
    struct Entry {
        FrameRef picture;
        double time = 0; ///< that the camera says
        double come = 0; ///< when it came
    };

    SerialQueue& queue() { return queue_; }
    CameraHandlers handlers() {
        return {[this](const Sample& sample) {
                    const std::lock_guard guard(lock_);
                    entries_.push_back(
                        {sample.image, sample.presentation().seconds(), HostClock::shared().now().seconds()});
                },
                [this](const Error& error) {
                    const std::lock_guard guard(lock_);
                    ends_.push_back(error);
                }};
    }
    std::vector<Entry> entries() const {
        const std::lock_guard guard(lock_);
        return entries_;
    }
    std::vector<Error> ends() const {
        const std::lock_guard guard(lock_);
        return ends_;
    }
    bool waitFor(std::size_t count) const {
        return waitUntil([&] { return entries().size() >= count; });
    }
    bool waitForEnd() const {
        return waitUntil([&] { return !ends().empty(); });
    }

private:
    mutable std::mutex lock_;
    // protected by lock_
    std::vector<Entry> entries_;
    std::vector<Error> ends_;
    ThreadQueue queue_{"test.pictures"};
};

} // namespace velmo::test
