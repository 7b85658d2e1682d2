#pragma once

#include "base/MediaTime.h"

namespace velmo {

/// Where a text that scrolls by itself stands: by the time that has passed, whenever it is asked. A plain value.
class PrompterScroll {
public:
    bool playing() const { return playing_; }
    /// Points from the top of the text to the top of what is seen.
    double position() const { return position_; }

    /// Goes on from where it stands, from `now` on.
    void play(MediaTime now);
    void pause() { playing_ = false; }
    /// Without playing a step of it.
    void moveTo(double position) { position_ = position; }
    /// Moves on by `speed`, in points a second, for the time since the last tick, while playing. Stops at `end`.
    void tick(MediaTime now, double speed, double end);

private:
    double position_ = 0;
    MediaTime lastTick_ = MediaTime::zero();
    bool playing_ = false;
};

} // namespace velmo
