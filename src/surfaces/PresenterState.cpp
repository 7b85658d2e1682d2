#include "surfaces/PresenterState.h"

namespace velmo {

PresenterState::Entrance PresenterState::enter(PresenterStyle style, Bubble bubble) {
    style_ = style;
    if (phase_ != Phase::rest || bubble == Bubble::gone) {
        return Entrance::dropped;
    }
    phase_ = Phase::entering;
    return Entrance::flight;
}

PresenterState::Departure PresenterState::exit(Bubble bubble) {
    if (phase_ != Phase::shown) {
        return Departure::dropped;
    }
    phase_ = Phase::leaving;
    return bubble == Bubble::there ? Departure::flight : Departure::fade;
}

void PresenterState::landed() {
    if (isBusy()) {
        phase_ = phase_ == Phase::entering ? Phase::shown : Phase::rest;
    }
}

} // namespace velmo
