#include "platform/pulse/PulseAudioInputService.h"

#include "platform/pulse/internal/PulseInput.h"
#include "platform/pulse/internal/PulseSession.h"

#include <utility>

namespace velmo {

namespace {

Error noServer() {
    return {PulseAudioInputService::kErrorDomain, PulseAudioInputService::kErrorNoServer,
            "No se encontró el servicio de sonido de la computadora. Revisa que PulseAudio o PipeWire esté en marcha."};
}

Error noDevice(const char* text) {
    return {PulseAudioInputService::kErrorDomain, PulseAudioInputService::kErrorNoDevice, text};
}

} // namespace

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
    if (!session_->isConnected()) {
        return noServer();
    }
    if (!session_->devices().has(uniqueID)) {
        return noDevice("El micrófono elegido no está conectado.");
    }
    return std::unique_ptr<AudioInput>(
        std::make_unique<PulseInput>(session_, clock_, uniqueID, queue, std::move(handler)));
}

Result<std::unique_ptr<AudioInput>> PulseAudioInputService::openSystemAudio(SerialQueue& queue, Handler handler) {
    if (!session_->isConnected()) {
        return noServer();
    }
    if (!session_->devices().systemMonitor()) {
        return noDevice("La computadora no tiene una salida de sonido que se pueda grabar.");
    }
    return std::unique_ptr<AudioInput>(
        std::make_unique<PulseInput>(session_, clock_, std::nullopt, queue, std::move(handler)));
}

} // namespace velmo
