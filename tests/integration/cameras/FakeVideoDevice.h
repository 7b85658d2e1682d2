#pragma once

#include "support/Bytes.h"

#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <sys/stat.h>

struct v4l2_buffer;

namespace velmo::test {

/// A camera of Video4Linux that exists in this program alone: a plain file stands for the node, and the program's own
/// `ioctl` answers for it as a driver does. It gives MJPEG in 640x480 and 1280x720 at 30 pictures a second.
class FakeVideoDevice {
public:
    /// Makes the node. `bus` and `card` are what it tells of itself.
    FakeVideoDevice(std::filesystem::path node, std::string card, std::string bus);
    /// Takes the node away; whoever has it open hears of the loss.
    ~FakeVideoDevice();

    /// The next buffer that is asked for. Empty: a buffer that the driver calls damaged.
    void push(Bytes picture);
    /// Pictures that nobody has asked for yet.
    std::size_t waiting() const;
    /// Held by another program: what would start a stream fails.
    void setBusy(bool busy);
    /// How often a stream was started.
    int starts() const;
    /// Width of the format that was set.
    int width() const;
    /// Stamp of the last picture that was taken, in seconds of the host clock.
    double lastStamp() const;

    /// As `ioctl`, with errno.
    int answer(unsigned long request, void* argument);
    /// The one that a file is the node of; null for all other files.
    static FakeVideoDevice* of(int file);

private:
    static constexpr std::size_t kBuffers = 4;
    static constexpr std::size_t kBufferBytes = std::size_t{1} << 20;

    int dequeue(v4l2_buffer& buffer);

    const std::filesystem::path node_;
    const std::string card_;
    const std::string bus_;
    int file_;
    struct stat identity_ {};
    mutable std::mutex lock_;
    // protected by lock_
    std::deque<Bytes> pictures_;
    std::deque<unsigned> free_; // buffers that the program has handed back
    bool busy_ = false;
    int starts_ = 0;
    unsigned width_ = 640;
    unsigned height_ = 480;
    double lastStamp_ = 0;
};

} // namespace velmo::test
