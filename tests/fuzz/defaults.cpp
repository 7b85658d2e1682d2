// The defaults file with everything in it: the settings, the profiles, the class material. Whatever it holds, the
// program starts with it, and what is written then is read back the same.

#include "Fuzz.h"
#include "classkit/KitJson.h"
#include "settings/JsonDefaultsStore.h"
#include "settings/Prefs.h"
#include "settings/SettingsProfiles.h"
#include "support/TemporaryFolder.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace velmo;

namespace {

void useProfiles(JsonDefaultsStore& store, Prefs& prefs) {
    SettingsProfiles profiles(store, [&prefs] { prefs.reload(); });
    const QStringList names = profiles.names().mid(0, 4);
    for (const QString& name : names) {
        profiles.apply(name);
        fuzz::require(profiles.current() == name || !store.any("perfiles")[name].isObject());
    }
    profiles.save(QStringLiteral("Nuevo"));
    fuzz::require(profiles.names().contains(QStringLiteral("Nuevo")));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const auto file = folder.write("defaults.json", {reinterpret_cast<const char*>(data), size});
    {
        JsonDefaultsStore store(file);
        Prefs prefs(store);
        useProfiles(store, prefs);
        static_cast<void>(itemsFromJson(store.any("kit.items")));
        if (const auto kit = store.data("kit.items")) {
            static_cast<void>(itemsFromJson(QJsonDocument::fromJson(*kit).array()));
        }
    }
    fuzz::require(JsonDefaultsStore(file).any("perfiles").isObject());
    std::error_code ignored;
    std::filesystem::remove(folder / "defaults.json.damaged-1", ignored);
    return 0;
}
