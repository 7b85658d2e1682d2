#pragma once

#include "platform/Screens.h"
#include "session/MainTimers.h"
#include "settings/Prefs.h"
#include "surfaces/BubbleView.h"
#include "surfaces/CameraFeed.h"

namespace velmo {

class Clock;

/// What a bubble's controller works with. All borrowed; all outlive it.
struct BubbleServices {
    Prefs& prefs;
    const Screens& screens;
    const Clock& clock;
    MainTimers& timers;
    CameraFeed& feed; ///< of the bubble's own camera
    BubbleView::NameTagMaker nameTag;
};

} // namespace velmo
