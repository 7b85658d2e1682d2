#include "platform/pulse/SoundDevices.h"

#include <algorithm>

namespace velmo {

bool SoundDevices::has(const std::string& source) const {
    return std::any_of(sources.begin(), sources.end(), [&](const SoundSource& one) { return one.name == source; });
}

std::vector<AudioDevice> SoundDevices::microphones() const {
    std::vector<AudioDevice> found;
    for (const SoundSource& source : sources) {
        if (!source.monitorOf) {
            found.push_back({source.name, source.description.empty() ? source.name : source.description});
        }
    }
    return found;
}

std::optional<AudioDevice> SoundDevices::defaultMicrophone() const {
    const std::vector<AudioDevice> all = microphones();
    const auto chosen =
        std::find_if(all.begin(), all.end(), [&](const AudioDevice& one) { return one.uniqueID == defaultSource; });
    if (chosen != all.end()) {
        return *chosen;
    }
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::optional<std::string> SoundDevices::systemMonitor() const {
    for (const SoundSource& source : sources) {
        if (source.monitorOf == defaultSink && !defaultSink.empty()) {
            return source.name;
        }
    }
    return std::nullopt;
}

} // namespace velmo
