#include "FakeVideoDevice.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace velmo::test {

namespace {

struct Size {
    unsigned width;
    unsigned height;
};
constexpr Size kSizes[] = {{640, 480}, {1280, 720}};

std::mutex registryLock;
std::vector<FakeVideoDevice*> registry; // protected by registryLock
std::vector<struct stat> lost;          // likewise: nodes that were unplugged

bool same(const struct stat& a, const struct stat& b) {
    return a.st_ino == b.st_ino && a.st_dev == b.st_dev;
}

int fail(int number) {
    errno = number;
    return -1;
}

template <std::size_t N>
void put(std::uint8_t (&to)[N], const std::string& text) {
    std::memcpy(to, text.data(), std::min(text.size(), N - 1));
}

} // namespace

FakeVideoDevice::FakeVideoDevice(std::filesystem::path node, std::string card, std::string bus)
    : node_(std::move(node)), card_(std::move(card)), bus_(std::move(bus)),
      file_(::open(node_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    [[maybe_unused]] const int sized = ::ftruncate(file_, kBuffers * kBufferBytes);
    ::fstat(file_, &identity_);
    const std::lock_guard guard(registryLock);
    std::erase_if(lost, [this](const struct stat& each) { return same(each, identity_); });
    registry.push_back(this);
}

FakeVideoDevice::~FakeVideoDevice() {
    {
        const std::lock_guard guard(registryLock);
        std::erase(registry, this);
        lost.push_back(identity_);
    }
    ::unlink(node_.c_str());
    ::close(file_);
}

void FakeVideoDevice::push(Bytes picture) {
    const std::lock_guard guard(lock_);
    pictures_.push_back(std::move(picture));
}

std::size_t FakeVideoDevice::waiting() const {
    const std::lock_guard guard(lock_);
    return pictures_.size();
}

void FakeVideoDevice::setBusy(bool busy) {
    const std::lock_guard guard(lock_);
    busy_ = busy;
}

int FakeVideoDevice::starts() const {
    const std::lock_guard guard(lock_);
    return starts_;
}

int FakeVideoDevice::width() const {
    const std::lock_guard guard(lock_);
    return static_cast<int>(width_);
}

double FakeVideoDevice::lastStamp() const {
    const std::lock_guard guard(lock_);
    return lastStamp_;
}

int FakeVideoDevice::dequeue(v4l2_buffer& buffer) {
    if (pictures_.empty() || free_.empty()) {
        return fail(EAGAIN);
    }
    const Bytes picture = std::move(pictures_.front());
    pictures_.pop_front();
    buffer.index = free_.front();
    free_.pop_front();
    const auto place = static_cast<off_t>(buffer.index * kBufferBytes);
    [[maybe_unused]] const auto written = ::pwrite(file_, picture.data(), picture.size(), place);
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const double stamp = static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9 - 0.03;
    lastStamp_ = stamp;
    buffer.timestamp.tv_sec = static_cast<time_t>(stamp);
    buffer.timestamp.tv_usec = static_cast<suseconds_t>((stamp - static_cast<double>(buffer.timestamp.tv_sec)) * 1e6);
    buffer.bytesused = static_cast<std::uint32_t>(picture.size());
    buffer.flags = V4L2_BUF_FLAG_TIMESTAMP_MONOTONIC | (picture.empty() ? V4L2_BUF_FLAG_ERROR : 0);
    return 0;
}

int FakeVideoDevice::answer(unsigned long request, void* argument) {
    const std::lock_guard guard(lock_);
    switch (request) {
    case VIDIOC_QUERYCAP: {
        auto& capability = *static_cast<v4l2_capability*>(argument);
        capability = {};
        put(capability.card, card_);
        put(capability.bus_info, bus_);
        capability.device_caps = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
        capability.capabilities = capability.device_caps | V4L2_CAP_DEVICE_CAPS;
        return 0;
    }
    case VIDIOC_ENUM_FMT: {
        auto& format = *static_cast<v4l2_fmtdesc*>(argument);
        format.pixelformat = V4L2_PIX_FMT_MJPEG;
        return format.index == 0 ? 0 : fail(EINVAL);
    }
    case VIDIOC_ENUM_FRAMESIZES: {
        auto& size = *static_cast<v4l2_frmsizeenum*>(argument);
        if (size.index >= std::size(kSizes) || size.pixel_format != V4L2_PIX_FMT_MJPEG) {
            return fail(EINVAL);
        }
        size.type = V4L2_FRMSIZE_TYPE_DISCRETE;
        size.discrete = {kSizes[size.index].width, kSizes[size.index].height};
        return 0;
    }
    case VIDIOC_ENUM_FRAMEINTERVALS: {
        auto& interval = *static_cast<v4l2_frmivalenum*>(argument);
        interval.type = V4L2_FRMIVAL_TYPE_DISCRETE;
        interval.discrete = {1, 30};
        return interval.index == 0 ? 0 : fail(EINVAL);
    }
    case VIDIOC_S_FMT:
    case VIDIOC_G_FMT: {
        auto& pixels = static_cast<v4l2_format*>(argument)->fmt.pix;
        if (request == VIDIOC_S_FMT) {
            if (busy_) {
                return fail(EBUSY);
            }
            width_ = pixels.width;
            height_ = pixels.height;
        }
        pixels.width = width_;
        pixels.height = height_;
        pixels.pixelformat = V4L2_PIX_FMT_MJPEG;
        pixels.field = V4L2_FIELD_NONE;
        pixels.sizeimage = kBufferBytes;
        return 0;
    }
    case VIDIOC_G_PARM:
    case VIDIOC_S_PARM: {
        auto& capture = static_cast<v4l2_streamparm*>(argument)->parm.capture;
        capture.capability = V4L2_CAP_TIMEPERFRAME;
        capture.timeperframe = {1, 30};
        return 0;
    }
    case VIDIOC_G_INPUT:
        *static_cast<int*>(argument) = 0;
        return 0;
    case VIDIOC_S_INPUT:
    case VIDIOC_STREAMOFF:
        return 0;
    case VIDIOC_ENUMINPUT:
        *static_cast<v4l2_input*>(argument) = {};
        return 0;
    case VIDIOC_REQBUFS:
        static_cast<v4l2_requestbuffers*>(argument)->count = kBuffers;
        free_.clear();
        return busy_ ? fail(EBUSY) : 0;
    case VIDIOC_QUERYBUF: {
        auto& buffer = *static_cast<v4l2_buffer*>(argument);
        buffer.length = kBufferBytes;
        buffer.m.offset = static_cast<std::uint32_t>(buffer.index * kBufferBytes);
        return 0;
    }
    case VIDIOC_QBUF:
        free_.push_back(static_cast<v4l2_buffer*>(argument)->index);
        return 0;
    case VIDIOC_DQBUF:
        return dequeue(*static_cast<v4l2_buffer*>(argument));
    case VIDIOC_STREAMON:
        ++starts_;
        return 0;
    default:
        return fail(ENOTTY);
    }
}

FakeVideoDevice* FakeVideoDevice::of(int file) {
    struct stat identity {};
    if (::fstat(file, &identity) != 0) {
        return nullptr;
    }
    const auto found = std::find_if(registry.begin(), registry.end(),
                                    [&](const FakeVideoDevice* each) { return same(each->identity_, identity); });
    return found == registry.end() ? nullptr : *found;
}

namespace {

bool wasLost(int file) {
    struct stat identity {};
    return ::fstat(file, &identity) == 0 &&
           std::any_of(lost.begin(), lost.end(), [&](const struct stat& each) { return same(each, identity); });
}

} // namespace
} // namespace velmo::test

/// Goes before the system's own in this program and in the libraries that it is linked with.
extern "C" int ioctl(int file, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (_IOC_TYPE(request) == 'V') {
        const std::lock_guard guard(velmo::test::registryLock);
        if (velmo::test::FakeVideoDevice* device = velmo::test::FakeVideoDevice::of(file)) {
            return device->answer(request, argument);
        }
        if (velmo::test::wasLost(file)) {
            errno = ENODEV;
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_ioctl, file, request, argument));
}
