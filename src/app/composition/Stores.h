#pragma once

#include "app/ClassKitAdapter.h"
#include "app/Composition.h"
#include "app/DeviceAccess.h"
#include "app/LibraryAdapter.h"
#include "app/composition/Platform.h"
#include "classkit/ClassKit.h"
#include "library/Library.h"
#include "library/Recovery.h"
#include "settings/Devices.h"
#include "settings/JsonDefaultsStore.h"
#include "settings/Prefs.h"
#include "settings/SettingsProfiles.h"

namespace velmo {

/// What is kept between launches. Registers what is shared of it.
struct Composition::Stores {
    explicit Stores(Platform& platform);
    ~Stores();

    static KitServices kitServices(Platform& platform);

    JsonDefaultsStore defaults{JsonDefaultsStore::standardFile(), &Platform::log};
    Prefs prefs{defaults};
    Devices devices;
    ClassKit classKit;
    DeviceAccess permissions;
    SettingsProfiles profiles{defaults, [this] {
                                  prefs.reload();
                                  classKit.reload();
                              }};
    ClassKitAdapter classMaterial{classKit, std::make_unique<ThreadQueue>("velmo.classkit")};
    Library library;
    LibraryAdapter libraryStore{library};
    AudioMixer recoveryMixer;
    Recovery recovery; ///< after what it works with
};

} // namespace velmo
