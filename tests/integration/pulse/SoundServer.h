#pragma once

#include <string>
#include <sys/types.h>

namespace velmo {

/// A PulseAudio of the test's own, with the sinks `speakers`, `other` and `micfeed` and the microphone `mic`.
/// While it lives PULSE_SERVER names it; start it before anything that reads that.
class SoundServer {
public:
    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    void start();
    /// As a crash ends it.
    void kill();
    /// Runs pactl with `arguments`; true on success.
    bool pactl(const std::string& arguments) const;

private:
    std::string folder_;
    std::string before_; // PULSE_SERVER
    pid_t pid_ = -1;
};

} // namespace velmo
