#include "panels/Countdown.h"

#include <utility>

namespace velmo {

Countdown::Countdown(MainTimers& timers, std::function<void()> changed, std::function<void()> finished)
    : changed_(std::move(changed)), finished_(std::move(finished)), timer_(timers.repeat(1.0, [this] { tick(); })) {}

void Countdown::tick() {
    if (n_ > 1) {
        --n_;
        changed_();
    } else {
        finish();
    }
}

void Countdown::finish() {
    if (!std::exchange(ended_, true)) {
        timer_->invalidate();
        finished_();
    }
}

} // namespace velmo
