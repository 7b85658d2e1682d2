#pragma once

#include <memory>

/// A steady tone of 1 kHz on the sink `micfeed`, half as loud as its marks: every second, for 100 ms, it is twice as
/// loud, and `mark S` on standard output tells at which second of CLOCK_MONOTONIC that begins to be heard, by the
/// sound server's own account. Without a server it is silent.
///
/// A null sink plays ahead by the longest latency that anybody allows it, and a virtual microphone on it hears that
/// early without the server saying so: this allows 2 ms.
class ToneSound {
public:
    ToneSound();
    ~ToneSound();

private:
    struct Core;
    std::unique_ptr<Core> core_;
};
