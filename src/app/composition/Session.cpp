#include "app/composition/Session.h"

#include "app/composition/Platform.h"
#include "app/composition/Stores.h"
#include "capture/DiagLog.h"

namespace velmo {

Composition::Session::Session(Platform& platform, Stores& stores)
    : recorders({platform.capture, platform.writers, platform.clock, DiagLog::shared()}),
      window(stores.library, platform.files, stores.defaults, [] { RecorderController::shared().openSetup(); }),
      rescue(window, alerts, &Platform::log), recorder(services(platform, stores)),
      recoveryNotice(stores.recovery, recorder, window, rescue.alerts()) {
    RecorderController::setShared(&recorder);
    rescue.watch(recorder);
    stores.recovery.start(stores.classKit.items(), stores.classKit.copyFiles());
}

Composition::Session::~Session() {
    rescue.forget();
    RecorderController::setShared(nullptr);
}

SessionServices Composition::Session::services(Platform& platform, Stores& stores) {
    return {stores.prefs,         platform.clock,   platform.timers, rescue.alerts(),
            platform.application, platform.screens, platform.power,  platform.disk,
            platform.capture,     recorders,        stores.devices,  stores.permissions,
            stores.libraryStore,  platform.mixer,   &DiagLog::write, Platform::ownProcess()};
}

} // namespace velmo
