#pragma once

#include <memory>

/// A beep of 1 kHz for 100 ms every 2 s on the sink `micfeed`, and the question whether it sounds right now, answered
/// from the position that the sound server reports. Without a server it is silent.
class FlashSound {
public:
    /// When it beeps: as it began, or at the even seconds of CLOCK_MONOTONIC, when a synthetic camera that was told to
    /// flashes too.
    enum class Times { own, hostClock };

    explicit FlashSound(Times times = Times::own);
    ~FlashSound();
    bool beepIsSounding() const;

private:
    struct Core;
    std::unique_ptr<Core> core_;
};
