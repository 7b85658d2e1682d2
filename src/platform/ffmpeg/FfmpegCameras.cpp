#include "platform/ffmpeg/FfmpegCameras.h"

#include "platform/CameraLatency.h"
#include "platform/ChangeListeners.h"
#include "platform/ffmpeg/internal/CameraReader.h"
#include "platform/ffmpeg/internal/FolderWatch.h"
#include "platform/ffmpeg/internal/VideoNodes.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

namespace velmo {

using internal::CameraInput;
using internal::VideoNode;

namespace {

CameraInput inputOf(const VideoNode& node) {
    const internal::CameraMode& mode = node.mode;
    return {CameraInput::Kind::device,
            "v4l2",
            node.path.string(),
            {{"input_format", mode.format},
             {"video_size", std::to_string(mode.width) + "x" + std::to_string(mode.height)},
             {"framerate", std::to_string(mode.rate)}},
            cameraLatency(node.device.uniqueID)};
}

} // namespace

struct FfmpegCameras::Core {
    Core(const Clock& hostClock, std::vector<Source> named, const std::filesystem::path& devices)
        : clock(hostClock), sources(std::move(named)), folder(devices),
          watch(folder, {"v4l", "v4l/by-id"}, [this] { look(); }) {}

    /// On the watch's thread.
    void look() {
        std::vector<VideoNode> found = internal::findVideoNodes(folder, &internal::probeVideoNode);
        {
            const std::lock_guard guard(lock);
            if (found == nodes) {
                return;
            }
            nodes = std::move(found);
        }
        listeners.tell();
    }

    std::optional<CameraInput> inputFor(const std::string& uniqueID) const {
        for (const Source& source : sources) {
            if (source.device.uniqueID == uniqueID) {
                return CameraInput{CameraInput::Kind::source, source.format, source.url, {}, 0};
            }
        }
        // Looked up anew: a camera that is back may have another node.
        for (const VideoNode& node : internal::findVideoNodes(folder, &internal::probeVideoNode)) {
            if (node.device.uniqueID == uniqueID) {
                return inputOf(node);
            }
        }
        return std::nullopt;
    }

    const Clock& clock;
    const std::vector<Source> sources;
    const std::filesystem::path folder;
    ChangeListeners listeners;
    mutable std::mutex lock;
    std::vector<VideoNode> nodes; // protected by lock
    internal::FolderWatch watch;
};

FfmpegCameras::FfmpegCameras(const Clock& clock, std::vector<Source> sources, const std::filesystem::path& folder)
    : core_(std::make_unique<Core>(clock, std::move(sources), folder)) {}

FfmpegCameras::~FfmpegCameras() = default;

std::vector<CameraDevice> FfmpegCameras::cameras() const {
    std::vector<CameraDevice> devices;
    {
        const std::lock_guard guard(core_->lock);
        for (const VideoNode& node : core_->nodes) {
            devices.push_back(node.device);
        }
    }
    for (const Source& source : core_->sources) {
        devices.push_back(source.device);
    }
    return devices;
}

std::optional<CameraDevice> FfmpegCameras::defaultCamera() const {
    const std::vector<CameraDevice> devices = cameras();
    return devices.empty() ? std::nullopt : std::optional(devices.front());
}

Result<std::unique_ptr<CameraStream>> FfmpegCameras::open(const std::string& uniqueID, SerialQueue& queue,
                                                          CameraHandlers handlers) {
    const std::optional<CameraInput> input = core_->inputFor(uniqueID);
    if (!input) {
        return Error{kErrorDomain, kErrorNoDevice, "La cámara no está conectada."};
    }
    auto reader =
        internal::CameraReader::open(*input, core_->clock, std::make_shared<CameraMailbox>(queue, std::move(handlers)));
    if (!reader.ok()) {
        return reader.error();
    }
    return std::unique_ptr<CameraStream>(std::move(reader).value());
}

std::shared_ptr<void> FfmpegCameras::watchDevices(std::function<void()> changed) {
    return core_->listeners.add(std::move(changed));
}

} // namespace velmo
