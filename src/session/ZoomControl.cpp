#include "session/RecorderController.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

// Between what the teacher does with the mouse and what the compositor shows. Levels are factors of magnification.

namespace velmo {

namespace {

constexpr double kTickSeconds = 1.0 / 30;
constexpr double kLeastMovement = 2.0;      ///< points between two ticks that count as moving
constexpr double kLeastResize = 0.5;        ///< points that an overlay must have grown or shrunk by
constexpr double kIdleSeconds = 3.5;        ///< after which an automatic zoom falls back
constexpr double kLeastManualLevel = 1.5;   ///< below it the next step down is off
constexpr double kGreatestRemembered = 4.0; ///< higher levels are shown, not remembered
constexpr double kLeastAreaLevel = 1.2;
constexpr double kGreatestLevel = 6.0;

} // namespace

void RecorderController::startZoomTracking(const Screen& screen) {
    const Prefs& prefs = services_.prefs;
    recorder_->zoom().configure(screen.frame);
    recorder_->zoom().setLevel(prefs.zoomLevel);
    recorder_->setMutesClicks(prefs.muteClicks);
    watchClickTimes();
    publish(zoomOn_, false, &RecorderController::zoomOnChanged);
    if (surfaces_.pointer != nullptr) {
        lastMouse_ = surfaces_.pointer->location();
    }
    zoomTimer_ = services_.timers.repeat(kTickSeconds, [this] { schedule([this] { zoomTick(); }); });
    watchGestures();
}

/// Also while paused. Nothing else belongs in here: it runs thirty times a second.
void RecorderController::zoomTick() {
    if (!recorder_ || surfaces_.pointer == nullptr) {
        return;
    }
    const Point mouse = surfaces_.pointer->location();
    if (std::hypot(mouse.x - lastMouse_.x, mouse.y - lastMouse_.y) > kLeastMovement) {
        lastActivity_ = now();
    }
    lastMouse_ = mouse;
    const auto infoOf = [](const auto* port) { return port ? port->captureInfo() : std::optional<BubbleInfo>(); };
    std::vector<BubbleInfo> bubbles;
    for (const auto& info : {infoOf(surfaces_.bubble), infoOf(surfaces_.secondBubble), infoOf(surfaces_.phone)}) {
        if (info) {
            bubbles.push_back(*info);
        }
    }
    recorder_->zoom().update(mouse, bubbles);
    for (const BubbleInfo& bubble : bubbles) {
        const auto known = overlaySizes_.find(bubble.key);
        const Size size = bubble.window.size();
        if (known != overlaySizes_.end() && (std::abs(size.width - known->second.width) > kLeastResize ||
                                             std::abs(size.height - known->second.height) > kLeastResize)) {
            known->second = size;
            recorder_->resizeOverlay(bubble.key, size);
        }
    }
    if (services_.prefs.zoomAuto && zoomOn_ && now() - lastActivity_ > kIdleSeconds) {
        setZoom(false);
    }
}

bool RecorderController::canZoom() const {
    return isActive() && usesScreen(services_.prefs.mode) && recorder_ != nullptr;
}

void RecorderController::toggleZoom() {
    if (!canZoom()) {
        return;
    }
    setZoom(!zoomOn_);
    if (zoomOn_) {
        lastActivity_ = now();
    }
}

void RecorderController::zoomIn() {
    if (!canZoom()) {
        return;
    }
    if (zoomOn_) {
        applyLevel(std::min(std::floor(2 * zoomLevelNow_) / 2 + 0.5, kGreatestLevel));
    } else {
        setZoom(true);
        lastActivity_ = now();
    }
}

void RecorderController::zoomOutStep() {
    if (!isActive() || !zoomOn_ || !recorder_) {
        return;
    }
    const double level = std::ceil(2 * zoomLevelNow_) / 2 - 0.5;
    if (level < kLeastManualLevel) {
        setZoom(false);
    } else {
        applyLevel(level);
    }
}

void RecorderController::resetZoom() {
    if (zoomOn_ && recorder_) {
        setZoom(false);
    }
}

void RecorderController::toggleZoomFollow() {
    publish(zoomFollowing_, !zoomFollowing_, &RecorderController::zoomFollowingChanged);
    services_.prefs.zoomFollow = zoomFollowing_;
    if (recorder_) {
        recorder_->zoom().setFollow(zoomFollowing_);
    }
}

void RecorderController::zoomToArea() {
    const auto picked = [this](const Rect& area) {
        if (regionOn_) {
            setRegion(false);
        }
        // A picked line has no width and asks for the greatest level.
        const double wanted = area.width > 0 ? 1 / area.width : kGreatestLevel;
        const double level = std::clamp(wanted, kLeastAreaLevel, kGreatestLevel);
        publish(zoomOn_, true, &RecorderController::zoomOnChanged);
        publish(zoomFollowing_, false, &RecorderController::zoomFollowingChanged);
        publish(zoomLevelNow_, level, &RecorderController::zoomLevelNowChanged);
        recorder_->zoom().focus({area.midX(), area.midY()}, level);
        lastActivity_ = now();
    };
    pick(std::nullopt, QStringLiteral("Arrastra sobre lo que quieres acercar · Esc para cancelar"), picked);
}

/// Zoom and region exclude each other. Switching off too brings the shown level back to the remembered one.
void RecorderController::setZoom(bool on) {
    const Prefs& prefs = services_.prefs;
    if (on && regionOn_) {
        setRegion(false);
    }
    publish(zoomOn_, on, &RecorderController::zoomOnChanged);
    publish(zoomLevelNow_, prefs.zoomLevel.value(), &RecorderController::zoomLevelNowChanged);
    publish(zoomFollowing_, prefs.zoomFollow.value(), &RecorderController::zoomFollowingChanged);
    recorder_->zoom().setLevel(prefs.zoomLevel);
    recorder_->zoom().setFollow(prefs.zoomFollow);
    recorder_->zoom().setEnabled(on);
}

void RecorderController::applyLevel(double level) {
    publish(zoomLevelNow_, level, &RecorderController::zoomLevelNowChanged);
    services_.prefs.zoomLevel = std::clamp(std::round(2 * level) / 2, kLeastManualLevel, kGreatestRemembered);
    if (recorder_) {
        recorder_->zoom().setLevel(level);
    }
    lastActivity_ = now();
}

} // namespace velmo
