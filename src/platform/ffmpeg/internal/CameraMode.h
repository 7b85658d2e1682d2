#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velmo::internal {

/// One way in which a camera can deliver.
struct CameraMode {
    std::string format; ///< libavdevice's name of the pixel format or codec: "nv12", "yuyv422", "mjpeg"
    int width = 0;
    int height = 0;
    double rate = 0; ///< pictures a second
    friend bool operator==(const CameraMode&, const CameraMode&) = default;
};

/// Formats that this program takes, the one that costs least first.
inline constexpr const char* kCameraFormats[] = {"nv12", "yuv420p", "yuyv422", "uyvy422", "mjpeg"};

/// The mode to use: fluid before large, 720 lines before more, and of equal ones the format that costs least.
/// Absent when there is none.
std::optional<CameraMode> bestMode(const std::vector<CameraMode>& modes);

} // namespace velmo::internal
