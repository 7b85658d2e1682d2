#include "surfaces/SpotlightOverlay.h"

#include <utility>

namespace velmo {
namespace {

constexpr double kTickSeconds = 1.0 / 60;
constexpr double kLookoutSeconds = 0.2; // for movements by programs, which no device reports
constexpr int kStillTicks = 30;         // half a second: the spot has long come to the mouse

} // namespace

SpotlightOverlay::SpotlightOverlay(Services services) : services_(std::move(services)) {}

SpotlightOverlay::~SpotlightOverlay() {
    rest();
}

void SpotlightOverlay::prepare(const Screen& screen) {
    if (!active_) {
        show(screen);
    }
}

void SpotlightOverlay::park() {
    if (!active_ && view_) {
        view_->end();
    }
}

void SpotlightOverlay::show(const Screen& screen) {
    origin_ = screen.frame.origin();
    if (view_) {
        view_->place(screen);
    } else {
        view_ = std::make_unique<PointerFXView>(screen);
    }
}

void SpotlightOverlay::start(const Screen& screen, bool bubbles) {
    rest();
    active_ = true;
    bubbles_ = bubbles;
    gesture_.reset();
    show(screen);
    view_->begin(mouse(), services_.paletteColors());
    if (bubbles_ || spotlight_) {
        resume();
    }
}

void SpotlightOverlay::stop() {
    active_ = false;
    spotlight_ = false; // the session's and the video's are off now, too
    rest();
    if (view_) {
        view_->end();
    }
}

void SpotlightOverlay::setSpotlight(bool on) {
    spotlight_ = on;
    if (active_ && on && !ticking_) {
        view_->jumpTo(mouse());
        resume();
    }
}

Point SpotlightOverlay::mouse() const {
    const Point global = services_.pointer.location();
    return {global.x - origin_.x, global.y - origin_.y};
}

void SpotlightOverlay::resume() {
    rest();
    stillTicks_ = 0;
    ticking_ = true;
    timer_ = services_.timers.repeat(kTickSeconds, [this] { tick(); });
}

// The timers are only stopped: one of them may be what calls.
void SpotlightOverlay::rest() {
    services_.motion.cancel();
    ticking_ = false;
    for (const auto& timer : {timer_.get(), lookout_.get()}) {
        if (timer != nullptr) {
            timer->invalidate();
        }
    }
}

void SpotlightOverlay::wake() {
    resume();
    tick();
}

void SpotlightOverlay::tick() {
    const Point at = mouse();
    const double now = services_.clock.now().seconds();
    if (bubbles_ && gesture_.add(at, now, view_->size().height)) {
        view_->startBubble(now);
        if (onCircle_) {
            onCircle_(now);
        }
    }
    if (!active_) {
        return; // stopped by whom the circle was told
    }
    restIfNothingMoves(view_->step(at, now, spotlight_), at);
}

void SpotlightOverlay::restIfNothingMoves(bool live, Point at) {
    stillTicks_ = at == lastMouse_ ? stillTicks_ + 1 : 0;
    lastMouse_ = at;
    if (live || spotlight_) {
        return;
    }
    if (!bubbles_) {
        rest();
    } else if (stillTicks_ >= kStillTicks) {
        if (services_.motion.callOnce([this] { wake(); }) == PointerMotion::Watch::impossible) {
            stillTicks_ = 0; // asked again in half a second
            return;
        }
        ticking_ = false;
        timer_->invalidate();
        lookout_ = services_.timers.repeat(kLookoutSeconds, [this] {
            if (mouse() != lastMouse_) {
                wake();
            }
        });
    }
}

} // namespace velmo
