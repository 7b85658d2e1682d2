#include "settings/Prefs.h"

#include <cassert>

namespace velmo {

namespace {

Prefs* sharedPrefs = nullptr;

} // namespace

DefaultsStore& SettingBase::store() const {
    return prefs_.store_;
}

void SettingBase::announce() {
    emit prefs_.changed(key_);
}

Prefs::Prefs(DefaultsStore& store) : store_(store) {
    // Puts a stored region that was refused out of the store there and then.
    recordRegion = std::optional<Rect>(recordRegion.value());
}

Prefs::~Prefs() {
    if (sharedPrefs == this) {
        sharedPrefs = nullptr;
    }
}

Prefs& Prefs::shared() {
    assert(sharedPrefs != nullptr);
    return *sharedPrefs;
}

void Prefs::setShared(Prefs* prefs) {
    sharedPrefs = prefs;
}

void Prefs::reload() {
    const Prefs fresh(store_);
    const auto update = [&](auto... field) { ((this->*field).takeOver(fresh.*field), ...); };
    update(&Prefs::mode, &Prefs::cameraID, &Prefs::micID, &Prefs::displayID, &Prefs::bubbleSize, &Prefs::bubbleShape,
           &Prefs::ringIndex, &Prefs::ringStyle, &Prefs::softShadow, &Prefs::cornerFraction, &Prefs::ringWeight,
           &Prefs::chameleonPalette, &Prefs::ringCustomHex, &Prefs::mirror, &Prefs::countdown, &Prefs::systemAudio,
           &Prefs::videoQuality, &Prefs::fps60, &Prefs::zoomLevel, &Prefs::zoomAuto, &Prefs::zoomFollow,
           &Prefs::muteClicks, &Prefs::startPresenter, &Prefs::showName, &Prefs::showPhone, &Prefs::scriptText,
           &Prefs::prompterOn, &Prefs::prompterSpeed, &Prefs::prompterFont, &Prefs::phoneSize, &Prefs::presenterName,
           &Prefs::presenterRole, &Prefs::presenterStyle, &Prefs::secondCameraID, &Prefs::secondBubbleSize,
           &Prefs::secondBubbleShape, &Prefs::secondMirror, &Prefs::cursorHighlight, &Prefs::shortcutModifier);
}

} // namespace velmo
