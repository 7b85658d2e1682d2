#pragma once

#include "platform/CameraDevices.h"
#include "platform/ffmpeg/internal/CameraMode.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmo::internal {

/// What a device node tells of itself.
struct NodeFacts {
    std::string card; ///< the model's name
    std::string bus;  ///< where it is plugged in
    std::vector<CameraMode> modes;
};

/// A camera and where it is now.
struct VideoNode {
    CameraDevice device;
    std::filesystem::path path;
    CameraMode mode; ///< the one to open it with
    friend bool operator==(const VideoNode&, const VideoNode&) = default;
};

/// Asks one node; absent when it is no camera or does not answer.
using NodeProbe = std::function<std::optional<NodeFacts>(const std::filesystem::path& node)>;

/// The cameras among the nodes of `folder` ("/dev"), by the numbers of their nodes. Any thread.
std::vector<VideoNode> findVideoNodes(const std::filesystem::path& folder, const NodeProbe& probe);

/// Asks V4L2. Takes microseconds to some milliseconds, also while another program uses the camera.
std::optional<NodeFacts> probeVideoNode(const std::filesystem::path& node);

} // namespace velmo::internal
