#include "session/Preflight.h"
#include "session/RecorderController.h"
#include "session/internal/Tell.h"

#include <algorithm>

namespace velmo {

using internal::tell;
using Media = DevicePermissions::Media;

namespace {

constexpr int kAuthorized = 3;
constexpr const char* kNoDevice = "none";

} // namespace

bool RecorderController::authorized(Media media) const {
    return services_.permissions.status(media) == kAuthorized;
}

/// Absent for "none", without permission, and when there is no camera.
std::optional<std::string> RecorderController::cameraFor(const QString& id) const {
    const auto device = authorized(Media::video) ? services_.devices.camera(id) : std::nullopt;
    return device ? std::optional(device->uniqueID) : std::nullopt;
}

/// The microphone of the settings, absent likewise.
std::optional<std::string> RecorderController::microphone() const {
    const auto device = authorized(Media::audio) ? services_.devices.microphone(services_.prefs.micID) : std::nullopt;
    return device ? std::optional(device->uniqueID) : std::nullopt;
}

/// Also scheduled while the setup is open; what the user has closed meanwhile is left closed.
RecorderController::Task RecorderController::refreshPreview() {
    const Life life = life_;
    const auto wanted = [this] { return state_ == State::setup || state_ == State::preparing; };
    const Prefs& prefs = services_.prefs;
    const bool wantsCamera = usesCamera(prefs.mode) && prefs.cameraID.value() != kNoDevice;
    const bool wantsMicrophone = prefs.micID.value() != kNoDevice;
    if (wantsCamera) {
        co_await services_.permissions.request(Media::video);
    }
    if (wantsMicrophone && !life.expired()) {
        co_await services_.permissions.request(Media::audio);
    }
    if (life.expired() || !wanted()) { // a question may stand for long
        co_return;
    }
    const std::optional<std::string> camera = wantsCamera ? cameraFor(prefs.cameraID) : std::nullopt;
    if (surfaces_.camera != nullptr) {
        co_await surfaces_.camera->configure(camera, microphone());
        if (life.expired()) {
            co_return;
        }
    }
    if (!wanted()) {
        co_return;
    }
    tell(surfaces_.bubble, camera ? &BubblePort::show : &BubblePort::hide);
    const bool wantsSecond =
        prefs.mode == RecordMode::screenCam && prefs.secondCameraID.value() != prefs.cameraID.value();
    std::optional<std::string> second = wantsSecond ? cameraFor(prefs.secondCameraID) : std::nullopt;
    if (second == camera) { // one has stood in for the other, and a device has one reader
        second.reset();
    }
    if (surfaces_.secondCamera != nullptr) {
        co_await surfaces_.secondCamera->configure(second);
        if (life.expired() || !wanted()) {
            co_return;
        }
    }
    const bool showsSecond = second && surfaces_.secondBubble != nullptr && !surfaces_.secondBubble->userHidden();
    tell(surfaces_.secondBubble, showsSecond ? &SecondBubblePort::show : &SecondBubblePort::hide);
    tell(surfaces_.phone, prefs.showPhone && usesScreen(prefs.mode) ? &PhonePort::show : &PhonePort::hide);
}

/// Absent only when the display server has gone.
std::optional<Screen> RecorderController::targetScreen() const {
    const std::vector<Screen> screens = services_.screens.all();
    const auto chosen = std::find_if(screens.begin(), screens.end(), [this](const Screen& screen) {
        return screen.displayID == services_.prefs.displayID;
    });
    if (chosen != screens.end()) {
        return *chosen;
    }
    return screens.empty() ? std::nullopt : std::optional(screens.front());
}

/// Empty when nothing speaks against recording.
QString RecorderController::preflightWarning() const {
    const Prefs& prefs = services_.prefs;
    QStringList lines;
    if (const std::optional<Screen> screen = targetScreen()) {
        const auto available = services_.disk.available(services_.library.folder());
        if (const auto line = diskWarning(available, *screen, prefs.videoQuality, prefs.fps60 ? 60 : 30)) {
            lines << *line;
        }
    }
    lines += batteryWarnings(services_.power.list());
    return lines.join('\n');
}

} // namespace velmo
