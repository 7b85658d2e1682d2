#pragma once

#include "platform/Screens.h"
#include "settings/Devices.h"
#include "settings/Prefs.h"

#include <functional>

namespace velmo {

class MainTimers;
class MicrophoneLevel;
class RecorderController;
class SettingsProfiles;

/// What the parts of the setup panel stand on. All borrowed; they outlive the panel.
struct SetupContext {
    RecorderController& recorder;
    Prefs& prefs;
    const Devices& devices;
    const Screens& screens;
    const MicrophoneLevel& microphone;
    SettingsProfiles& profiles;
    MainTimers& timers;
    /// Shows the slide templates that leave the camera's side free.
    std::function<void()> showTemplates = {};
};

} // namespace velmo
