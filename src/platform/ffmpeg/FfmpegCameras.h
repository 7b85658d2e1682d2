#pragma once

#include "base/Clock.h"
#include "platform/CameraCapture.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace velmo {

/// Cameras through libavdevice: the real ones of Linux (V4L2), and sources that are named by an input format and a URL.
///
/// Real cameras come and go by themselves. Their ids are the system's names for the device ("by-id"), else bus and
/// model, so that a camera keeps its id across reboots and sockets as far as the system can tell it from others. Of a
/// camera's modes the one nearest to 720p at 30 pictures a second is taken. Asking for devices never waits for one.
class FfmpegCameras final : public CameraService {
public:
    /// A source that is no device: it plays in real time and ends by itself.
    struct Source {
        CameraDevice device;
        std::string format; ///< an input format of libavformat or libavdevice, such as "lavfi"; empty: found by content
        std::string url;    ///< what that format opens
    };

    /// `clock` is the host clock, borrowed. `folder` is where device nodes appear.
    explicit FfmpegCameras(const Clock& clock, std::vector<Source> sources = {},
                           const std::filesystem::path& folder = "/dev");
    ~FfmpegCameras() override;

    std::vector<CameraDevice> cameras() const override;
    std::optional<CameraDevice> defaultCamera() const override;
    Result<std::unique_ptr<CameraStream>> open(const std::string& uniqueID, SerialQueue& queue,
                                               CameraHandlers handlers) override;
    [[nodiscard]] std::shared_ptr<void> watchDevices(std::function<void()> changed) override;

private:
    struct Core;
    const std::unique_ptr<Core> core_;
};

} // namespace velmo
