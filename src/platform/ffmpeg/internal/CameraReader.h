#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "platform/CameraCapture.h"
#include "platform/CameraMailbox.h"
#include "platform/ffmpeg/internal/CameraDecoder.h"
#include "platform/ffmpeg/internal/Handles.h"
#include "platform/ffmpeg/internal/VideoRangeConverter.h"

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace velmo::internal {

/// What to open, and how.
struct CameraInput {
    /// A device's pictures carry the driver's times; a source's are played at their own pace.
    enum class Kind { device, source };
    Kind kind = Kind::device;
    std::string format; ///< libavdevice's or libavformat's name; empty: found by content
    std::string url;
    std::map<std::string, std::string> options; ///< of that format
    double latency = 0;                         ///< s, taken off each picture's time
};

/// A thread that reads a camera, decodes and converts.
class CameraReader final : public CameraStream {
public:
    static Result<std::unique_ptr<CameraReader>> open(const CameraInput& input, const Clock& clock,
                                                      std::shared_ptr<CameraMailbox> mailbox);
    ~CameraReader() override;

private:
    CameraReader(const CameraInput& input, const Clock& clock, std::shared_ptr<CameraMailbox> mailbox);
    Result<void> openInput(const CameraInput& input);
    void run();
    void deliver(const AVFrame& frame);
    MediaTime deviceTime(std::int64_t stamp) const;
    /// Waits until then; invalid when the stream ends meanwhile.
    MediaTime playingTime(std::int64_t stamp);
    /// False when the stream ends.
    bool pause(double seconds);
    static int shouldStop(void* self);

    const CameraInput::Kind kind_;
    const double latency_;
    const Clock& clock_;
    const std::shared_ptr<CameraMailbox> mailbox_;
    InputContext input_;
    const AVStream* stream_ = nullptr;
    std::unique_ptr<CameraDecoder> decoder_;
    VideoRangeConverter converter_;
    std::optional<double> playingFrom_; // host time of a source's time 0

    std::atomic<bool> stop_{false};
    std::mutex lock_;
    std::condition_variable stopping_;
    std::thread thread_;
};

} // namespace velmo::internal
