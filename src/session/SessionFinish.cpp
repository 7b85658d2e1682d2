#include "media/RecordingJournal.h"
#include "session/MainThreadResult.h"
#include "session/RecorderController.h"
#include "session/SessionErrors.h"
#include "session/internal/Tell.h"

#include <system_error>
#include <utility>

namespace velmo {

using internal::tell;

namespace {

/// Whether it succeeds makes no difference to anybody.
void removeFile(const std::filesystem::path& file) {
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

} // namespace

/// What a recording leaves, frozen at the stop: the controller's own fields are emptied, and perhaps filled by the
/// next session, while the file is still worked on.
struct RecorderController::Saved {
    std::filesystem::path url;
    std::vector<KitItem> items;
    bool copyFiles = false;
    std::vector<Chapter> chapters;
    std::vector<double> markers;
    double duration = 0;
    std::optional<QString> endedBy; ///< what, when not the user
};

void RecorderController::stop() {
    if (!isActive() || !recorder_ || !fileURL_) {
        return;
    }
    auto saved = std::make_shared<Saved>();
    saved->url = *fileURL_;
    saved->duration = recordedSeconds();
    saved->chapters = chapters_;
    saved->markers = markers_;
    saved->endedBy = std::exchange(endedBy_, std::nullopt);
    if (surfaces_.classKit != nullptr) {
        saved->items = surfaces_.classKit->items();
        saved->copyFiles = surfaces_.classKit->copyFiles();
    }
    setState(State::saving);
    endLive();
    schedule([this, saved] { save(std::move(*saved)); });
}

RecorderController::Task RecorderController::save(Saved saved) {
    const Life life = life_;
    const Result<std::filesystem::path> file = co_await stopCapture();
    if (life.expired()) {
        co_return;
    }
    if (!file.ok()) {
        co_await failSave(saved.url, file.error());
        co_return;
    }
    MainThreadResult<Done> mixed{Done{}};
    services_.mixer.mixIfNeeded(saved.url, [mix = mixed.callback()] { mix(Done{}); });
    co_await mixed;
    if (life.expired()) {
        co_return;
    }
    finish(false);
    if (surfaces_.classKit != nullptr) {
        MainThreadResult<Done> written{Done{}};
        surfaces_.classKit->writeFolder(saved.url, saved.items, saved.chapters, saved.copyFiles,
                                        [write = written.callback()] { write(Done{}); });
        co_await written;
        if (life.expired()) {
            co_return;
        }
    }
    QStringList titles;
    for (const Chapter& chapter : saved.chapters) {
        titles << chapter.title;
    }
    services_.library.add(saved.url, saved.duration, saved.markers, titles);
    tell(surfaces_.libraryWindow, &LibraryWindowPort::show, saved.url);
    if (saved.endedBy) {
        co_await inform("La grabación se detuvo",
                        *saved.endedBy + QStringLiteral(" Todo lo que grabaste hasta ahí está guardado."));
    }
}

QCoro::Task<Result<std::filesystem::path>> RecorderController::stopCapture() {
    MainThreadResult<Result<std::filesystem::path>> stopped{Result<std::filesystem::path>(unansweredError())};
    recorder_->stop(stopped.callback());
    Result<std::filesystem::path> file = co_await stopped;
    co_return file;
}

RecorderController::Task RecorderController::failSave(std::filesystem::path url, Error error) {
    const Life life = life_;
    finish(false);
    if (!hasJournal(url)) { // else the next launch can still make something of it
        removeFile(url);
    }
    co_await inform("No se pudo guardar la grabación", QString::fromStdString(error.text));
    if (!life.expired()) {
        tell(surfaces_.libraryWindow, &LibraryWindowPort::show, std::nullopt);
    }
}

void RecorderController::discard(bool keepPreview, std::function<void()> then) {
    if (!recorder_) {
        return;
    }
    setState(State::saving);
    endLive();
    schedule([this, url = fileURL_, keepPreview, then = std::move(then)] { runDiscard(url, keepPreview, then); });
}

RecorderController::Task RecorderController::runDiscard(std::optional<std::filesystem::path> url, bool keepPreview,
                                                        std::function<void()> then) {
    const Life life = life_;
    const Result<std::filesystem::path> ignored = co_await stopCapture();
    if (life.expired()) {
        co_return;
    }
    if (url) {
        removeFile(*url);
        removeFile(asideOf(*url)); // where a stop that failed has put it
        removeJournal(*url);       // last: what a journal without a video leaves is nothing
    }
    finish(keepPreview);
    then();
}

/// What must not outlive the last recorded moment.
void RecorderController::endLive() {
    ticker_->invalidate();
    tell(surfaces_.regionPicker, &RegionPickerPort::cancel);
    tell(surfaces_.controlBar, &ControlBarPort::hide);
}

/// The one place that takes a session apart. Copes with a session that never came to have a recorder.
void RecorderController::finish(bool keepPreview) {
    resetEffects();
    recorder_.reset();
    fileURL_.reset();
    recordingScreen_.reset();
    ticker_.reset();
    diskTimer_.reset();
    segmentStart_.reset();
    tell(surfaces_.regionPicker, &RegionPickerPort::cancel);
    tell(surfaces_.controlBar, &ControlBarPort::hide);
    tell(surfaces_.kitPanel, &KitPanelPort::hide);
    tell(surfaces_.teleprompter, &TeleprompterPort::hide);
    tell(surfaces_.drawing, &DrawingPort::teardown);
    tell(surfaces_.board, &BoardPort::endRecording);
    tell(surfaces_.bubble, &BubblePort::exitCameraOnly);
    if (!keepPreview) {
        hidePreviews();
    }
    setState(State::idle);
}

void RecorderController::resetEffects() {
    zoomTimer_.reset();
    clickMonitors_.clear();
    publish(zoomOn_, false, &RecorderController::zoomOnChanged);
    publish(regionOn_, false, &RecorderController::regionOnChanged);
    publish(spotlightOn_, false, &RecorderController::spotlightOnChanged);
    tell(surfaces_.spotlight, &SpotlightPort::stop);
    tell(surfaces_.presenter, &PresenterPort::reset);
    publish(presenterOn_, false, &RecorderController::presenterOnChanged);
    if (scene_ == Scene::column) {
        tell(surfaces_.camera, &CameraPort::stopFrames);
        tell(surfaces_.bubble, &BubblePort::setCoveredByColumn, false);
        if (recorder_) {
            recorder_->zoom().setColumn(false, true);
            recorder_->zoom().setCameraFrame({});
        }
    }
    publish(scene_, Scene::screen, &RecorderController::sceneChanged);
    if (recorder_) {
        recorder_->zoom().setRegion(std::nullopt);
        recorder_->zoom().setSpotlight(false);
    }
}

} // namespace velmo
