#pragma once

#include "platform/AudioInput.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// A source of the sound server by its own name.
struct SoundSource {
    std::string name;
    std::string description;
    std::optional<std::string> monitorOf; ///< the sink that it listens to
    friend bool operator==(const SoundSource&, const SoundSource&) = default;
};

/// What the sound server had at one moment; empty without one.
struct SoundDevices {
    std::vector<SoundSource> sources; ///< in the server's order
    std::string defaultSource;
    std::string defaultSink;

    bool has(const std::string& source) const;
    std::vector<AudioDevice> microphones() const;
    /// The server's default source, or the first microphone where that is a monitor.
    std::optional<AudioDevice> defaultMicrophone() const;
    /// The source that hears what the default sink plays.
    std::optional<std::string> systemMonitor() const;

    friend bool operator==(const SoundDevices&, const SoundDevices&) = default;
};

} // namespace velmo
