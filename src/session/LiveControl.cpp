#include "session/RecorderController.h"
#include "session/internal/Tell.h"

#include "settings/Format.h"

#include <utility>

// What the teacher changes while the recording runs. Each operation fails by doing nothing.

namespace velmo {

using internal::tell;

namespace {

constexpr double kMarkFlashSeconds = 1.6;
constexpr double kQuietLevel = 0.03; ///< up to here the microphone counts as silent
constexpr double kQuietSeconds = 8.0;
constexpr double kBetweenMicWarnings = 30.0;
constexpr double kMicWarningSeconds = 5.0;
constexpr const char* kNoDevice = "none";

} // namespace

void RecorderController::addMarker() {
    if (!isActive()) {
        return;
    }
    const double time = recordedSeconds();
    const QString name = QStringLiteral("Marcador %1").arg(markers_.size() + 1);
    mark(name, std::nullopt, time);
    showFlash(name + QStringLiteral(" · ") + Format::duration(time), kMarkFlashSeconds);
}

void RecorderController::addChapter(const QString& title, std::optional<QString> location) {
    if (!isActive()) {
        return;
    }
    mark(title, std::move(location), recordedSeconds());
    showFlash(QStringLiteral("Capítulo · ") + title, kMarkFlashSeconds);
}

/// Both lists always have the same length.
void RecorderController::mark(const QString& title, std::optional<QString> location, double time) {
    markers_.push_back(time);
    if (recorder_) {
        recorder_->noteMark(
            {time, title.toStdString(), location ? std::optional(location->toStdString()) : std::nullopt});
    }
    chapters_.push_back({time, title, std::move(location)});
}

std::optional<double> RecorderController::microphoneLevel() const {
    return surfaces_.camera != nullptr ? std::optional(surfaces_.camera->level()) : std::nullopt;
}

/// Rides on the tick. A level that nobody knows is not silence.
void RecorderController::checkMicrophone() {
    if (state_ != State::recording || services_.prefs.micID.value() == kNoDevice ||
        microphoneLevel().value_or(1.0) > kQuietLevel) {
        quietSince_.reset();
        return;
    }
    const double time = now();
    if (!quietSince_) {
        quietSince_ = time;
    }
    if (time - *quietSince_ > kQuietSeconds && time - lastMicWarning_ > kBetweenMicWarnings) {
        lastMicWarning_ = time;
        showFlash(QStringLiteral("No te escuchamos · revisa el micrófono"), kMicWarningSeconds);
    }
}

void RecorderController::setRegion(bool on) {
    if (!recorder_) {
        return;
    }
    const std::optional<Rect>& region = services_.prefs.recordRegion.value();
    if (on && zoomOn_) {
        setZoom(false);
    }
    publish(regionOn_, on && region.has_value(), &RecorderController::regionOnChanged);
    recorder_->zoom().setRegion(regionOn_ ? region : std::nullopt);
}

void RecorderController::toggleRegion() {
    if (!isActive() || !usesScreen(services_.prefs.mode) || !recorder_) {
        return;
    }
    if (regionOn_) {
        setRegion(false);
    } else if (services_.prefs.recordRegion.value()) {
        setRegion(true);
    } else {
        chooseRegion();
    }
}

void RecorderController::chooseRegion() {
    const auto picked = [this](const Rect& region) {
        services_.prefs.recordRegion = region;
        setRegion(true);
    };
    pick(services_.prefs.recordRegion,
         QStringLiteral("Arrastra para elegir la parte de la pantalla que se grabará · Esc para cancelar"), picked);
}

/// What is picked is for the recording in which it was asked for.
void RecorderController::pick(std::optional<Rect> current, QString prompt, std::function<void(const Rect&)> picked) {
    if (!isActive() || !usesScreen(services_.prefs.mode) || !recordingScreen_ || surfaces_.regionPicker == nullptr) {
        return;
    }
    surfaces_.regionPicker->pick(
        *recordingScreen_, current, std::move(prompt),
        [this, life = Life(life_), capture = captures_, picked = std::move(picked)](std::optional<Rect> rect) {
            if (!life.expired() && capture == captures_ && isActive() && recorder_ && rect) {
                picked(*rect);
            }
        });
}

void RecorderController::toggleSpotlight() {
    if (!isActive() || !usesScreen(services_.prefs.mode) || !recorder_ || surfaces_.spotlight == nullptr) {
        return;
    }
    publish(spotlightOn_, !spotlightOn_, &RecorderController::spotlightOnChanged);
    recorder_->zoom().setSpotlight(spotlightOn_);
    surfaces_.spotlight->setSpotlight(spotlightOn_);
}

void RecorderController::toggleDrawing() {
    if (isActive() && usesScreen(services_.prefs.mode)) {
        tell(surfaces_.drawing, &DrawingPort::toggle);
    }
}

void RecorderController::toggleBoard() {
    if (!isActive() || !usesScreen(services_.prefs.mode) || surfaces_.board == nullptr ||
        !surfaces_.board->isAvailable()) {
        return;
    }
    if (surfaces_.presenter == nullptr || !surfaces_.presenter->isFull()) {
        surfaces_.board->toggle();
        return;
    }
    // Under a full presenter the board could not be seen.
    if (!surfaces_.board->shown()) {
        surfaces_.board->show();
    }
    surfaces_.presenter->exit({});
    publish(presenterOn_, false, &RecorderController::presenterOnChanged);
    publish(scene_, Scene::screen, &RecorderController::sceneChanged);
}

void RecorderController::toggleKit() {
    if (isActive()) {
        tell(surfaces_.kitPanel, &KitPanelPort::toggle);
    }
}

void RecorderController::prompterKey() {
    TeleprompterPort* const prompter = surfaces_.teleprompter;
    if (!isActive() || prompter == nullptr || !prompter->hasScript()) {
        return;
    }
    if (prompter->visible()) {
        prompter->togglePlay();
    } else if (recordingScreen_) {
        prompter->show(*recordingScreen_);
    }
}

} // namespace velmo
