#pragma once

#include "settings/PresenterStyle.h"

namespace velmo {

/// Where the presenter is between its rest and its stage, and what a request does there. A value, without time and
/// without a window.
///
///     rest ──enter──► entering ──landed──► shown ──exit──► leaving ──landed──► rest
///
/// Whatever is asked during a flight is dropped, but for the style, which is kept. `reset` leads to rest from anywhere.
class PresenterState {
public:
    enum class Phase { rest, entering, shown, leaving };
    enum class Bubble { gone, there };
    enum class Entrance { dropped, flight };
    enum class Departure { dropped, flight, fade };

    /// Keeps the style in any case. Without a bubble there is no place to fly from.
    Entrance enter(PresenterStyle style, Bubble bubble);
    /// Without a bubble there is no place to fly to: a fade.
    Departure exit(Bubble bubble);
    /// A flight or a fade has come to its end; nothing happens outside one.
    void landed();
    void reset() { phase_ = Phase::rest; }

    Phase phase() const { return phase_; }
    /// The camera is up on its stage, or on its way there.
    bool isFull() const { return phase_ == Phase::entering || phase_ == Phase::shown; }
    /// A flight or a fade is under way.
    bool isBusy() const { return phase_ == Phase::entering || phase_ == Phase::leaving; }
    /// The one last asked for, which is not the one on the stage when that request was dropped.
    PresenterStyle style() const { return style_; }

private:
    Phase phase_ = Phase::rest;
    PresenterStyle style_ = PresenterStyle::framed;
};

} // namespace velmo
