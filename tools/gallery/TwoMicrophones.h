#pragma once

#include "platform/AudioInput.h"

namespace velmo {

/// Two microphones that nobody listens to.
class TwoMicrophones final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override {
        return {{"internal", "Micrófono interno · HDA Intel PCH"},
                {"usb", "Blue Yeti con un nombre que no cabe entero en una línea"}};
    }
    std::optional<AudioDevice> defaultMicrophone() const override { return microphones().front(); }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler) override {
        return Error{};
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }
};

} // namespace velmo
