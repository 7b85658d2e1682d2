#include "base/FileDescriptor.h"
#include "platform/ffmpeg/internal/VideoNodes.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>

namespace velmo::internal {

namespace {

struct Format {
    std::uint32_t code;
    const char* name;
};

constexpr Format kFormats[] = {
    {V4L2_PIX_FMT_NV12, "nv12"},    {V4L2_PIX_FMT_YUV420, "yuv420p"}, {V4L2_PIX_FMT_YUYV, "yuyv422"},
    {V4L2_PIX_FMT_UYVY, "uyvy422"}, {V4L2_PIX_FMT_MJPEG, "mjpeg"},    {V4L2_PIX_FMT_JPEG, "mjpeg"},
};

/// Sizes to ask for where a camera takes any size between two.
constexpr v4l2_frmsize_discrete kUsualSizes[] = {{1280, 720}, {1920, 1080}, {640, 480}};
constexpr double kUnknownRate = 30; // of a driver that does not tell

template <typename Argument>
bool ask(const FileDescriptor& node, unsigned long request, Argument& argument) {
    int result = 0;
    do {
        result = ::ioctl(node.number(), request, &argument);
    } while (result < 0 && errno == EINTR);
    return result == 0;
}

template <std::size_t N>
std::string text(const std::uint8_t (&bytes)[N]) {
    return {bytes, std::find(bytes, bytes + N, 0)};
}

/// The fastest rate up to 30 a second of a size; the slowest above where there is none.
double rateOf(const FileDescriptor& node, std::uint32_t code, const v4l2_frmsize_discrete& size) {
    double best = 0;
    v4l2_frmivalenum interval{};
    interval.pixel_format = code;
    interval.width = size.width;
    interval.height = size.height;
    for (; ask(node, VIDIOC_ENUM_FRAMEINTERVALS, interval); ++interval.index) {
        const bool listed = interval.type == V4L2_FRMIVAL_TYPE_DISCRETE;
        const v4l2_fract& shortest = listed ? interval.discrete : interval.stepwise.min;
        const double rate =
            shortest.numerator == 0 ? 0 : static_cast<double>(shortest.denominator) / shortest.numerator;
        if (!listed) {
            return std::min(rate, kUnknownRate);
        }
        const bool fits = rate <= kUnknownRate + 0.5;
        const bool bestFits = best <= kUnknownRate + 0.5;
        if (best == 0 || (fits && (!bestFits || rate > best)) || (!fits && !bestFits && rate < best)) {
            best = rate;
        }
    }
    return best == 0 ? kUnknownRate : best;
}

void addModes(const FileDescriptor& node, const Format& format, std::vector<CameraMode>& modes) {
    const auto add = [&](const v4l2_frmsize_discrete& size) {
        modes.push_back({format.name, static_cast<int>(size.width), static_cast<int>(size.height),
                         rateOf(node, format.code, size)});
    };
    v4l2_frmsizeenum size{};
    size.pixel_format = format.code;
    for (; ask(node, VIDIOC_ENUM_FRAMESIZES, size); ++size.index) {
        if (size.type == V4L2_FRMSIZE_TYPE_DISCRETE) {
            add(size.discrete);
            continue;
        }
        const auto& range = size.stepwise;
        for (const auto& usual : kUsualSizes) {
            if (usual.width >= range.min_width && usual.width <= range.max_width && usual.height >= range.min_height &&
                usual.height <= range.max_height) {
                add(usual);
            }
        }
        return;
    }
    v4l2_format present{}; // a driver that lists no sizes has this one
    present.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (size.index == 0 && ask(node, VIDIOC_G_FMT, present) && present.fmt.pix.pixelformat == format.code) {
        add({present.fmt.pix.width, present.fmt.pix.height});
    }
}

} // namespace

std::optional<NodeFacts> probeVideoNode(const std::filesystem::path& path) {
    const FileDescriptor node(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    v4l2_capability capability{};
    if (node.number() < 0 || !ask(node, VIDIOC_QUERYCAP, capability)) {
        return std::nullopt;
    }
    const bool tellsOwn = (capability.capabilities & V4L2_CAP_DEVICE_CAPS) != 0;
    const std::uint32_t can = tellsOwn ? capability.device_caps : capability.capabilities;
    constexpr std::uint32_t kNeeded = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
    if ((can & kNeeded) != kNeeded) {
        return std::nullopt;
    }
    NodeFacts facts{text(capability.card), text(capability.bus_info), {}};
    v4l2_fmtdesc description{};
    description.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    for (; ask(node, VIDIOC_ENUM_FMT, description); ++description.index) {
        for (const Format& format : kFormats) {
            if (format.code == description.pixelformat) {
                addModes(node, format, facts.modes);
            }
        }
    }
    return facts;
}

} // namespace velmo::internal
