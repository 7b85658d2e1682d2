#include "app/composition/Stores.h"

#include "platform/desktop/CameraNodes.h"
#include "session/RecorderController.h"

namespace velmo {

Composition::Stores::Stores(Platform& platform)
    : devices(&platform.cameras, &platform.audio), classKit(defaults, kitServices(platform)),
      permissions({devices, platform.audio, platform.timers, std::make_unique<ThreadQueue>("velmo.devices.access"),
                   [] { return CameraNodes::tryAll(); }, platform.askForCamera()}),
      library(Library::standardFolder(),
              {platform.files, platform.inspector, std::make_unique<ThreadQueue>("velmo.library")}),
      recoveryMixer(platform.makeMixer()),
      recovery(library,
               {std::make_unique<ThreadQueue>("velmo.recovery"),
                [this](const std::filesystem::path& video) { recoveryMixer.mixIfNeeded(video); }, &Platform::log}) {
    Prefs::setShared(&prefs);
    ClassKit::setShared(&classKit);
    SettingsProfiles::setShared(&profiles);
    Library::setShared(&library);
}

Composition::Stores::~Stores() {
    Library::setShared(nullptr);
    SettingsProfiles::setShared(nullptr);
    ClassKit::setShared(nullptr);
    Prefs::setShared(nullptr);
}

KitServices Composition::Stores::kitServices(Platform& platform) {
    return {
        platform.files, platform.fileChooser, [&platform] { platform.application.toFront(); },
        [](const QString& title, const QString& location) { RecorderController::shared().addChapter(title, location); },
        [](const QString& text) { RecorderController::shared().flashMessage(text); }};
}

} // namespace velmo
