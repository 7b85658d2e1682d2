#include "surfaces/PrompterScroll.h"

namespace velmo {

void PrompterScroll::play(MediaTime now) {
    lastTick_ = now;
    playing_ = true;
}

void PrompterScroll::tick(MediaTime now, double speed, double end) {
    const double passed = (now - lastTick_).seconds();
    lastTick_ = now;
    if (!playing_) {
        return;
    }
    position_ += passed * speed;
    if (position_ >= end) {
        position_ = end;
        playing_ = false;
    }
}

} // namespace velmo
