#pragma once

#include "base/Clock.h"
#include "platform/CameraCapture.h"
#include "surfaces/CameraFeed.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo::internal {

/// Keeps one camera running: opens it, watches that pictures come, and opens it again when it has ended, has stopped to
/// deliver, was held by another program or is plugged back. Meanwhile its last picture stays in the feed.
///
/// Lives on `queue`; pictures pass on `frameQueue`, which may be the same.
class CameraSession {
public:
    struct Parts {
        CameraService& cameras;
        const Clock& clock;
        SerialQueue& queue;
        SerialQueue& frameQueue;
        CameraFeed& feed;
        /// On the frame queue; may be empty.
        std::function<void(const FrameRef&)> onPicture;
        /// On the queue, when `hasVideo` has become true.
        std::function<void()> onVideo;
    };

    static constexpr double kRestartAfter = 0.3; ///< s, after the end of a stream or a change of the devices
    static constexpr double kStalledAfter = 2;   ///< s without a picture
    static constexpr double kFirstPictureBy = 5; ///< s after opening; some cameras take long to start
    static constexpr double kWatchEvery = 0.5;   ///< s

    /// All borrowed.
    explicit CameraSession(Parts parts);

    /// Another camera, or none. The same one again changes nothing. Blocks while a device opens or lets go.
    void setDevice(const std::optional<std::string>& uniqueID);
    const std::optional<std::string>& device() const { return device_; }
    /// The device could be opened since it was set.
    bool hasVideo() const { return hasVideo_; }
    /// No handler runs after it. Last of all, before the queues go.
    void close();

private:
    void open();
    void leave();
    void tryAgainLater();
    void startTimer(double seconds, std::function<void()> tick);
    void cancelTimer();
    void watch();
    void streamEnded(std::uint64_t stream);
    void devicesChanged();
    void take(const Sample& sample);
    double now() const { return parts_.clock.now().seconds(); }

    const Parts parts_;
    std::optional<std::string> device_;
    bool hasVideo_ = false;
    std::unique_ptr<CameraStream> stream_;
    std::uint64_t streams_ = 0; // the number of the latest one
    int failures_ = 0;          // in a row
    SerialQueue::TimerId timer_ = 0;
    std::shared_ptr<void> devicesWatch_;

    // Written on the frame queue.
    std::atomic<double> lastSign_{0}; // of life: a picture, or the opening
    std::atomic<bool> pictured_{false};
};

} // namespace velmo::internal
