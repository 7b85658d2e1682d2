#pragma once

#include "app/Composition.h"
#include "app/RecordingRescue.h"
#include "app/RecoveryNotice.h"
#include "library/views/LibraryWindow.h"
#include "panels/Alerts.h"
#include "session/RecorderController.h"
#include "session/ScreenRecorderFactory.h"

namespace velmo {

/// The recording session and what answers to it. Its controller is the shared one.
struct Composition::Session {
    Session(Platform& platform, Stores& stores);
    ~Session();

    SessionServices services(Platform& platform, Stores& stores);

    ScreenRecorderFactory recorders;
    LibraryWindow window;
    Alerts alerts;
    RecordingRescue rescue;
    RecorderController recorder;
    RecoveryNotice recoveryNotice; ///< after the controller that it watches
};

} // namespace velmo
