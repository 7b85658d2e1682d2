#pragma once

#include "base/SerialQueue.h"
#include "platform/ScreenCapture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <vector>

namespace velmo::test {

/// Receives what a stream delivers and keeps it until told to let go.
class StreamProbe final : public StreamOutputHandler, public StreamDelegate {
public:
    void streamDidOutput(CaptureStream&, const Sample& sample, StreamOutput type) override {
        const std::lock_guard guard(lock_);
        (type == StreamOutput::screen ? pictures_ : sounds_).push_back(sample);
        changed_.notify_all();
    }
    void streamDidStop(CaptureStream&, const Error& error) override {
        const std::lock_guard guard(lock_);
        errors_.push_back(error);
        changed_.notify_all();
    }

    /// True once there are `count` pictures, counted from the last `forget`.
    bool waitForPictures(std::size_t count, int milliseconds = 60000) {
        std::unique_lock guard(lock_);
        return changed_.wait_for(guard, std::chrono::milliseconds(milliseconds),
                                 [&] { return pictures_.size() >= count; });
    }
    /// True once the latest picture is as `wanted`. Earlier ones are let go of, for the stream may need their buffers.
    bool waitForLatest(const std::function<bool(const Sample&)>& wanted) {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        std::unique_lock guard(lock_);
        while (pictures_.empty() || !wanted(pictures_.back())) {
            if (pictures_.size() > 1) {
                pictures_.erase(pictures_.begin(), pictures_.end() - 1);
            }
            if (changed_.wait_until(guard, limit) == std::cv_status::timeout) {
                return false;
            }
        }
        return true;
    }
    bool waitForStop() {
        std::unique_lock guard(lock_);
        return changed_.wait_for(guard, std::chrono::seconds(60), [&] { return !errors_.empty(); });
    }
    /// No picture comes for `milliseconds`; returns how many there are then.
    std::size_t countAfterQuiet(int milliseconds) {
        std::unique_lock guard(lock_);
        std::size_t count = pictures_.size() + 1;
        while (count != pictures_.size()) {
            count = pictures_.size();
            changed_.wait_for(guard, std::chrono::milliseconds(milliseconds),
                              [&] { return pictures_.size() != count; });
        }
        return count;
    }
    void forget() {
        std::vector<Sample> old;
        const std::lock_guard guard(lock_);
        old.swap(pictures_);
    }
    std::vector<Sample> pictures() {
        const std::lock_guard guard(lock_);
        return pictures_;
    }
    std::vector<Sample> sounds() {
        const std::lock_guard guard(lock_);
        return sounds_;
    }
    std::vector<Error> errors() {
        const std::lock_guard guard(lock_);
        return errors_;
    }

    ThreadQueue queue{"test.pictures"};

private:
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<Sample> pictures_;
    std::vector<Sample> sounds_;
    std::vector<Error> errors_;
};

inline Result<void> startAndWait(CaptureStream& stream) {
    std::promise<Result<void>> answer;
    stream.start([&answer](Result<void> result) { answer.set_value(std::move(result)); });
    return answer.get_future().get();
}

inline void stopAndWait(CaptureStream& stream) {
    std::promise<void> answer;
    stream.stop([&answer](Result<void>) { answer.set_value(); });
    answer.get_future().get();
}

struct Yuv {
    int y = 0;
    int cb = 0;
    int cr = 0;
    friend bool operator==(const Yuv&, const Yuv&) = default;
};

inline Yuv yuvAt(const Sample& sample, int x, int y) {
    const PlaneView luma = sample.image->plane(0);
    const PlaneView chroma = sample.image->plane(1);
    return {luma.row(y)[x], chroma.row(y / 2)[x / 2 * 2], chroma.row(y / 2)[x / 2 * 2 + 1]};
}

inline std::uint32_t bgraAt(const Sample& sample, int x, int y) {
    const std::uint8_t* p = sample.image->plane(0).row(y) + 4 * x;
    return static_cast<std::uint32_t>(p[3]) << 24 | static_cast<std::uint32_t>(p[2]) << 16 |
           static_cast<std::uint32_t>(p[1]) << 8 | p[0];
}

/// Whether a picture has that colour there.
inline std::function<bool(const Sample&)> shows(int x, int y, Yuv color) {
    return [=](const Sample& picture) { return yuvAt(picture, x, y) == color; };
}

inline std::function<bool(const Sample&)> shows(int x, int y, std::uint32_t bgra) {
    return [=](const Sample& picture) { return bgraAt(picture, x, y) == bgra; };
}

} // namespace velmo::test
