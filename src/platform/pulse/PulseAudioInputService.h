#pragma once

#include "base/Clock.h"
#include "platform/AudioInput.h"

#include <memory>

namespace velmo {

class PulseSession;

/// Sound inputs of a PulseAudio or PipeWire server. The server and its sources may come and go at any time: opening is
/// never refused.
///
/// Any thread. Nothing here waits for the server, but the first question after the service was made: at most 250 ms.
/// Device ids are the server's source names. System audio is what the default output plays and follows a changed
/// default; this program plays nothing, so there is nothing of its own to leave out.
class PulseAudioInputService final : public AudioInputService {
public:
    /// `clock` is borrowed and outlives the service and its inputs.
    explicit PulseAudioInputService(const Clock& clock);
    ~PulseAudioInputService() override;

    std::vector<AudioDevice> microphones() const override;
    std::optional<AudioDevice> defaultMicrophone() const override;
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string& uniqueID, SerialQueue& queue,
                                                       Handler handler) override;
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue& queue, Handler handler) override;

private:
    const Clock& clock_;
    const std::shared_ptr<PulseSession> session_; // inputs keep it alive
};

} // namespace velmo
