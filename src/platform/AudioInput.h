#pragma once

#include "base/Result.h"
#include "base/SerialQueue.h"
#include "media/Sample.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

struct AudioDevice {
    std::string uniqueID;
    std::string name;
    friend bool operator==(const AudioDevice&, const AudioDevice&) = default;
};

/// A running sound source: 48 kHz stereo interleaved float with host-clock times of each buffer's first frame.
/// A source whose device or server goes away, or is not there yet, stays silent until it is; it never ends by itself.
/// The destructor stops it; no call of the handler begins after it.
class AudioInput {
public:
    virtual ~AudioInput() = default;
};

class AudioInputService {
public:
    using Handler = std::function<void(const Sample&)>;

    virtual ~AudioInputService() = default;

    /// Real microphones first found first, monitors of outputs left out. Empty without a sound server.
    virtual std::vector<AudioDevice> microphones() const = 0;
    /// Absent when there is none.
    virtual std::optional<AudioDevice> defaultMicrophone() const = 0;

    /// Starts a microphone. `handler` runs on `queue`, which is borrowed and must outlive the input.
    virtual Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string& uniqueID, SerialQueue& queue,
                                                               Handler handler) = 0;
    /// Starts what the default output plays.
    virtual Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue& queue, Handler handler) = 0;
};

} // namespace velmo
