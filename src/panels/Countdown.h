#pragma once

#include "session/MainTimers.h"

#include <functional>
#include <memory>

namespace velmo {

/// 3, 2, 1 for a second each. Main thread. Ends once, by itself or by `skip`.
class Countdown {
public:
    /// Both callbacks may destroy nothing of this object; `finished` is called exactly once.
    Countdown(MainTimers& timers, std::function<void()> changed, std::function<void()> finished);

    int n() const { return n_; }
    void skip() { finish(); }

private:
    void tick();
    void finish();

    int n_ = 3;
    bool ended_ = false;
    std::function<void()> changed_;
    std::function<void()> finished_;
    std::unique_ptr<MainTimer> timer_;
};

} // namespace velmo
