#include "platform/pulse/PulseAudioInputService.h"

#include "platform/pulse/internal/PulseInput.h"
#include "platform/pulse/internal/PulseSession.h"

#include <utility>

namespace velmo {

PulseAudioInputService::PulseAudioInputService(const Clock& clock)
    : clock_(clock), session_(std::make_shared<PulseSession>()) {}

PulseAudioInputService::~PulseAudioInputService() = default;

std::vector<AudioDevice> PulseAudioInputService::microphones() const {
    return session_->devices().microphones();
}

std::optional<AudioDevice> PulseAudioInputService::defaultMicrophone() const {
    return session_->devices().defaultMicrophone();
}

Result<std::unique_ptr<AudioInput>> PulseAudioInputService::openMicrophone(const std::string& uniqueID,
                                                                           SerialQueue& queue, Handler handler) {
    return std::unique_ptr<AudioInput>(
        std::make_unique<PulseInput>(session_, clock_, uniqueID, queue, std::move(handler)));
}

Result<std::unique_ptr<AudioInput>> PulseAudioInputService::openSystemAudio(SerialQueue& queue, Handler handler) {
    return std::unique_ptr<AudioInput>(
        std::make_unique<PulseInput>(session_, clock_, std::nullopt, queue, std::move(handler)));
}

} // namespace velmo
