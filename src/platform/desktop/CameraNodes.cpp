#include "platform/desktop/CameraNodes.h"

#include "base/FileDescriptor.h"

#include <linux/videodev2.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>

#include <string_view>
#include <system_error>

namespace velmo::CameraNodes {

namespace {

constexpr std::string_view kNodePrefix = "video";

/// A node that gives pictures; the others of a camera carry metadata.
bool givesPictures(int node) {
    v4l2_capability has{};
    if (::ioctl(node, VIDIOC_QUERYCAP, &has) != 0) {
        return false;
    }
    const auto flags = (has.capabilities & V4L2_CAP_DEVICE_CAPS) != 0 ? has.device_caps : has.capabilities;
    return (flags & (V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_VIDEO_CAPTURE_MPLANE)) != 0;
}

DeviceFinding tryOne(const std::filesystem::path& path) {
    const FileDescriptor node(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (node.number() < 0) {
        const bool isRefused = errno == EACCES || errno == EPERM;
        return isRefused ? DeviceFinding::refused : DeviceFinding::absent;
    }
    return givesPictures(node.number()) ? DeviceFinding::granted : DeviceFinding::absent;
}

} // namespace

DeviceFinding tryAll(const std::filesystem::path& folder) {
    DeviceFinding all = DeviceFinding::absent;
    std::error_code ignored;
    for (std::filesystem::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored)) {
        if (!entry->path().filename().string().starts_with(kNodePrefix)) {
            continue;
        }
        const DeviceFinding one = tryOne(entry->path());
        if (one == DeviceFinding::granted) {
            return one;
        }
        if (one == DeviceFinding::refused) {
            all = one;
        }
    }
    return all;
}

} // namespace velmo::CameraNodes
