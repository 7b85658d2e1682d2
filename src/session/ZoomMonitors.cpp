#include "session/RecorderController.h"
#include "session/ZoomGesture.h"
#include "session/internal/Tell.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

// What mouse and touchpad do in whatever program, as the session hears of it. A monitor that could not be installed is
// not there: the recording goes on without what it would have told.

namespace velmo {

using internal::windowOf;

namespace {

constexpr double kGreatestLevel = 6.0;
constexpr double kEngagingLevel = 1.04; ///< below it a gesture switches off, above it on

} // namespace

void RecorderController::keepMonitor(InputMonitors::Token monitor) {
    if (monitor) {
        clickMonitors_.push_back(std::move(monitor));
    }
}

/// On the thread of the event, straight to the recording's sound: nothing may come in between.
void RecorderController::watchClickTimes() {
    if (surfaces_.inputMonitors != nullptr) {
        keepMonitor(surfaces_.inputMonitors->addMouseButtons(recorder_->clickNoter()));
    }
}

void RecorderController::watchGestures() {
    if (surfaces_.inputMonitors == nullptr) {
        return;
    }
    keepMonitor(surfaces_.inputMonitors->addLeftMouseDown(
        [here = ofThisCapture()] { here([](RecorderController& session) { session.leftMouseDown(); }); }));
    keepMonitor(surfaces_.inputMonitors->addScrollAndMagnify([here = ofThisCapture()](const InputGesture& gesture) {
        if (const auto factor = zoomFactor(gesture)) {
            here([factor = *factor](RecorderController& session) { session.zoomGesture(factor); });
        }
    }));
}

/// From any thread to the main one, for as long as this capture lasts.
std::function<void(std::function<void(RecorderController&)>)> RecorderController::ofThisCapture() {
    return [this, life = Life(life_), capture = captures_](std::function<void(RecorderController&)> work) {
        QCoreApplication* const application = QCoreApplication::instance();
        if (application == nullptr) {
            return;
        }
        const auto onMain = [this, life, capture, work = std::move(work)] {
            if (!life.expired() && capture == captures_) {
                work(*this);
            }
        };
        QMetaObject::invokeMethod(application, onMain, Qt::QueuedConnection);
    };
}

/// A press on the bar or another surface of the program means that surface. What the class is shown in, the ink and the
/// board, is no such surface.
bool RecorderController::isOnOwnSurface() const {
    const auto window = surfaces_.pointer != nullptr ? surfaces_.pointer->ownWindow() : std::nullopt;
    return window && window != windowOf(surfaces_.drawing, &DrawingPort::overlayWindowID) &&
           window != windowOf(surfaces_.board, &BoardPort::windowID);
}

void RecorderController::leftMouseDown() {
    if (!services_.prefs.zoomAuto || state_ != State::recording || !recorder_ || isOnOwnSurface()) {
        return;
    }
    lastActivity_ = now();
    if (!zoomOn_) {
        setZoom(true);
    }
}

/// Never remembered: the next switching on goes to the remembered level.
void RecorderController::zoomGesture(double factor) {
    if (state_ != State::recording || !canZoom()) {
        return;
    }
    const double level = std::clamp((zoomOn_ ? zoomLevelNow_ : 1.0) * factor, 1.0, kGreatestLevel);
    if (zoomOn_) {
        if (level < kEngagingLevel) {
            setZoom(false);
            return;
        }
        publish(zoomLevelNow_, level, &RecorderController::zoomLevelNowChanged);
        recorder_->zoom().setLevel(level);
        lastActivity_ = now();
        return;
    }
    if (level <= kEngagingLevel) {
        return;
    }
    if (regionOn_) {
        setRegion(false);
    }
    const bool follow = services_.prefs.zoomFollow;
    publish(zoomOn_, true, &RecorderController::zoomOnChanged);
    publish(zoomFollowing_, bool(follow), &RecorderController::zoomFollowingChanged);
    recorder_->zoom().setFollow(follow);
    publish(zoomLevelNow_, level, &RecorderController::zoomLevelNowChanged);
    recorder_->zoom().setLevel(level);
    lastActivity_ = now();
    recorder_->zoom().setEnabled(true);
}

} // namespace velmo
