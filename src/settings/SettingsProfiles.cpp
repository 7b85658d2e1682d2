#include "settings/SettingsProfiles.h"

#include "settings/DefaultsStore.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <cassert>
#include <utility>

namespace velmo {

namespace {

constexpr const char* kKeys[] = {
    "mode",
    "cameraID",
    "secondCameraID",
    "micID",
    "displayID",
    "bubbleSize",
    "bubbleShape",
    "ringIndex",
    "ringStyle",
    "softShadow",
    "cornerFraction",
    "ringWeight",
    "chameleonPalette",
    "ringCustomHex",
    "mirror",
    "secondBubbleSize",
    "secondBubbleShape",
    "secondMirror",
    "countdown",
    "systemAudio",
    "muteClicks",
    "videoQuality",
    "fps60",
    "zoomLevel",
    "zoomAuto",
    "zoomFollow",
    "cursorHighlight",
    "startPresenter",
    "presenterStyle",
    "kit.items",
    "kit.copiar",
    "showName",
    "presenterName",
    "presenterRole",
    "showPhone",
    "phoneSize",
    "scriptText",
    "prompterOn",
    "prompterSpeed",
    "prompterFont",
};
static_assert(std::size(kKeys) == 40);

const QString kStoreKey = QStringLiteral("perfiles");
const QString kCurrentKey = QStringLiteral("perfil.actual");

SettingsProfiles* sharedProfiles = nullptr;

QStringList sortedNames(const QJsonObject& profiles) {
    QStringList names = profiles.keys();
    QCollator order{QLocale(QLocale::Spanish)};
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(names.begin(), names.end(),
                     [&](const QString& left, const QString& right) { return order.compare(left, right) < 0; });
    return names;
}

} // namespace

SettingsProfiles::SettingsProfiles(DefaultsStore& store, std::function<void()> reload)
    : store_(store), reload_(std::move(reload)), names_(sortedNames(stored())), current_(store.text(kCurrentKey)) {
    if (current_ && !names_.contains(*current_)) {
        current_.reset();
    }
}

SettingsProfiles::~SettingsProfiles() {
    if (sharedProfiles == this) {
        sharedProfiles = nullptr;
    }
}

SettingsProfiles& SettingsProfiles::shared() {
    assert(sharedProfiles != nullptr);
    return *sharedProfiles;
}

void SettingsProfiles::setShared(SettingsProfiles* profiles) {
    sharedProfiles = profiles;
}

std::span<const char* const> SettingsProfiles::keys() {
    return kKeys;
}

void SettingsProfiles::save(const QString& name) {
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty()) {
        return;
    }
    QJsonObject snapshot;
    for (const char* raw : kKeys) {
        const QString key = QString::fromLatin1(raw);
        if (const QJsonValue value = store_.any(key); !value.isUndefined()) {
            snapshot.insert(key, value);
        }
    }
    QJsonObject profiles = stored();
    profiles.insert(trimmed, snapshot);
    store(profiles);
    setCurrent(trimmed);
    refresh();
}

void SettingsProfiles::apply(const QString& name) {
    const QJsonValue profile = stored().value(name);
    if (!profile.isObject()) {
        return;
    }
    const QJsonObject snapshot = profile.toObject();
    QJsonObject values;
    for (const char* raw : kKeys) {
        const QString key = QString::fromLatin1(raw);
        // A null would take the present value away; no save makes one.
        if (const QJsonValue value = snapshot.value(key); !value.isUndefined() && !value.isNull()) {
            values.insert(key, value);
        }
    }
    store_.setAll(values);
    if (reload_) {
        reload_();
    }
    setCurrent(name);
    emit changed();
    emit applied();
}

void SettingsProfiles::remove(const QString& name) {
    QJsonObject profiles = stored();
    profiles.remove(name);
    store(profiles);
    if (current_ == name) {
        setCurrent(std::nullopt);
    }
    refresh();
}

QJsonObject SettingsProfiles::stored() const {
    return store_.any(kStoreKey).toObject();
}

void SettingsProfiles::store(const QJsonObject& profiles) {
    store_.setAny(kStoreKey, profiles);
}

void SettingsProfiles::setCurrent(const std::optional<QString>& name) {
    current_ = name;
    if (name) {
        store_.setText(kCurrentKey, *name);
    } else {
        store_.remove(kCurrentKey);
    }
}

void SettingsProfiles::refresh() {
    names_ = sortedNames(stored());
    emit changed();
}

} // namespace velmo
