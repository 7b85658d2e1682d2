#pragma once

#include "base/Geometry.h"
#include "settings/BubbleShape.h"
#include "settings/BubbleSize.h"
#include "settings/ChameleonPalette.h"
#include "settings/DefaultsStore.h"
#include "settings/PresenterStyle.h"
#include "settings/RecordMode.h"
#include "settings/RingStyle.h"
#include "settings/RingWeight.h"
#include "settings/Setting.h"
#include "settings/ShortcutModifier.h"
#include "settings/VideoQuality.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>

namespace velmo {

/// What the user has chosen. Main thread only; capture threads are handed values when a recording starts.
///
/// Each field is read once, when the object is made, and written through to the store at every assignment:
/// `prefs.zoomLevel = 2.5`. Nothing is clamped or validated here. A stored value that is missing, of another type
/// or unknown gives the field's default and stays in the store until the field is next written.
class Prefs final : public QObject {
    Q_OBJECT

    DefaultsStore& store_;

public:
    /// `store` is borrowed and must outlive this object.
    explicit Prefs(DefaultsStore& store);
    ~Prefs() override;

    /// The program's one object, registered by the composition root before anything asks for it.
    static Prefs& shared();
    /// Borrowed; null takes the registration back.
    static void setShared(Prefs* prefs);

    /// Brings the fields up to what the store holds now and announces those that differ. The first-run flag and
    /// the chosen region stay as they are.
    void reload();

    DefaultsStore& store() const { return store_; }

    Setting<RecordMode> mode{*this, "mode", RecordMode::screenCam};
    Setting<QString> cameraID{*this, "cameraID", {}};       ///< empty is the default camera, "none" no camera
    Setting<QString> micID{*this, "micID", {}};             ///< likewise
    Setting<std::int64_t> displayID{*this, "displayID", 0}; ///< 0: none chosen
    Setting<BubbleSize> bubbleSize{*this, "bubbleSize", BubbleSize::m};
    Setting<BubbleShape> bubbleShape{*this, "bubbleShape", BubbleShape::circle};
    Setting<std::int64_t> ringIndex{*this, "ringIndex", 0}; ///< into the theme's ring colours
    Setting<RingStyle> ringStyle{*this, "ringStyle", RingStyle::chameleon};
    Setting<double> cornerFraction{*this, "cornerFraction", 0.2}; ///< corner radius of the bubble
    Setting<RingWeight> ringWeight{*this, "ringWeight", RingWeight::medium};
    Setting<bool> softShadow{*this, "softShadow", true};
    Setting<ChameleonPalette> chameleonPalette{*this, "chameleonPalette", ChameleonPalette::lime};
    Setting<QString> ringCustomHex{*this, "ringCustomHex", {}}; ///< goes before `ringIndex` when it parses
    Setting<bool> mirror{*this, "mirror", true};
    Setting<bool> countdown{*this, "countdown", true};
    Setting<bool> systemAudio{*this, "systemAudio", false};
    Setting<VideoQuality> videoQuality{*this, "videoQuality", VideoQuality::retina};
    Setting<bool> fps60{*this, "fps60", false};
    Setting<double> zoomLevel{*this, "zoomLevel", 2.0};
    Setting<bool> zoomAuto{*this, "zoomAuto", false};
    Setting<bool> zoomFollow{*this, "zoomFollow", true};
    Setting<bool> muteClicks{*this, "muteClicks", true};
    Setting<bool> onboarded{*this, "onboarded", false};
    Setting<bool> startPresenter{*this, "startPresenter", false};
    Setting<bool> showName{*this, "showName", false};
    Setting<bool> showPhone{*this, "showPhone", false};
    Setting<QString> scriptText{*this, "scriptText", {}};
    Setting<bool> prompterOn{*this, "prompterOn", true};
    Setting<double> prompterSpeed{*this, "prompterSpeed", 32.0};
    Setting<double> prompterFont{*this, "prompterFont", 28.0};
    Setting<BubbleSize> phoneSize{*this, "phoneSize", BubbleSize::m};
    Setting<QString> presenterName{*this, "presenterName", {}};
    Setting<QString> presenterRole{*this, "presenterRole", {}};
    Setting<PresenterStyle> presenterStyle{*this, "presenterStyle", PresenterStyle::framed};
    Setting<QString> secondCameraID{*this, "secondCameraID", QStringLiteral("none")};
    Setting<BubbleSize> secondBubbleSize{*this, "secondBubbleSize", BubbleSize::m};
    Setting<BubbleShape> secondBubbleShape{*this, "secondBubbleShape", BubbleShape::rounded};
    Setting<bool> secondMirror{*this, "secondMirror", false};
    Setting<bool> cursorHighlight{*this, "cursorHighlight", true};
    Setting<ShortcutModifier> shortcutModifier{*this, "shortcutModifier", ShortcutModifier::control};
    Setting<std::optional<Rect>> recordRegion{*this, "recordRegion", {}}; ///< fractions of the screen, 0 to 1

signals:
    /// A field has another value, already in the store. `key` is the field's name.
    void changed(const QString& key);

private:
    friend class SettingBase;
};

} // namespace velmo
