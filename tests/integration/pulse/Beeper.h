#pragma once

#include <pulse/stream.h>
#include <pulse/thread-mainloop.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace velmo {

/// Plays silence to a sink, and in it short beeps of which it knows when they are heard.
class Beeper {
public:
    explicit Beeper(const std::string& sink);
    ~Beeper();
    Beeper(const Beeper&) = delete;
    Beeper& operator=(const Beeper&) = delete;

    /// Plays one beep; the host-clock second at which its first frame leaves the sink, by the server's own account.
    double beep();
    /// How often the sink ran dry: a beep around such a moment is torn.
    int underflows() const { return underflows_; }

private:
    void write(std::size_t wanted);
    double askWhenFirstFrameWasHeard();
    std::size_t writeBlock(std::size_t bytes);
    /// A null sink plays ahead by up to the longest latency that anybody allows it, and a virtual microphone on it
    /// hears that early without the server saying so: this allows 5 ms.
    void holdLatencyDown(const std::string& sink);

    pa_threaded_mainloop* loop_;
    pa_context* context_ = nullptr;
    pa_stream* stream_ = nullptr;
    pa_stream* monitor_ = nullptr;
    int beepFramesLeft_ = 0;
    bool wanted_ = false;
    double heardAt_ = 0;
    double firstFrameHeardAt_ = 0; // by the latest account
    std::int64_t framesWritten_ = 0;
    bool known_ = false;
    std::atomic<int> underflows_{0};
};

} // namespace velmo
