#pragma once

#include "base/SerialQueue.h"
#include "capture/AudioMixer.h"
#include "session/SessionServices.h"

#include <memory>

namespace velmo {

/// Runs the mixer on a queue of its own, one file after the other. Main thread; the destructor waits for the file in
/// hand.
class MixerAdapter final : public MixService {
public:
    MixerAdapter(AudioMixer mixer, std::unique_ptr<SerialQueue> queue);

    void mixIfNeeded(const std::filesystem::path& url, std::function<void()> done) override;

private:
    AudioMixer mixer_;
    std::unique_ptr<SerialQueue> queue_; ///< last, so that its thread ends first
};

} // namespace velmo
