#include "session/MainThreadResult.h"
#include "session/RecorderController.h"
#include "session/SessionErrors.h"
#include "session/internal/Tell.h"

#include "capture/RecorderError.h"
#include "compositor/PointerBubble.h"

#include <utility>

// From the key press to the running capture. The order of the steps is the design: a content query only lists windows
// that are on screen, a filter must be built before the windows that it excludes are put away, and the clock starts
// after everything else.

namespace velmo {

using internal::tell;
using internal::windowOf;

namespace {

/// For the window system to have the windows that were just shown.
constexpr double kWindowsSettleSeconds = 0.25;
constexpr double kPresenterDelaySeconds = 0.4;

QString truth(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

RecorderController::Task RecorderController::runStart(StartAfter after) {
    const Life life = life_;
    const bool agreed = co_await agreedToStart();
    if (life.expired()) {
        co_return;
    }
    if (!agreed) {
        if (after == StartAfter::restart && state_ == State::idle) { // the previews were kept for it
            hidePreviews();
            tell(surfaces_.libraryWindow, &LibraryWindowPort::show, std::nullopt);
        }
        co_return;
    }
    setState(State::preparing);
    tell(surfaces_.setupPanel, &SetupPanelPort::hide);
    const RecordMode mode = services_.prefs.mode;
    co_await refreshPreview();
    if (life.expired()) {
        co_return;
    }
    const bool usable = co_await checkedSources(mode);
    if (life.expired() || !usable) {
        co_return;
    }
    const std::optional<Screen> target = targetScreen();
    if (!target) {
        co_await failStart(RecorderError::noSource("No se encontró la pantalla."), mode);
        co_return;
    }
    const Screen screen = *target;
    recordingScreen_ = screen;
    co_await setStage(screen, mode);
    if (life.expired()) {
        co_return;
    }
    const Result<void> begun = co_await beginCapture(screen, mode);
    if (life.expired()) {
        co_return;
    }
    if (!begun.ok()) {
        co_await failStart(begun.error(), mode);
        co_return;
    }
    startLive(screen, mode);
    startClock();
    if (endedEarly_) {
        stop();
    }
}

/// Everything that has to be on screen before the windows are listed.
RecorderController::Task RecorderController::setStage(Screen screen, RecordMode mode) {
    const Life life = life_;
    if (usesScreen(mode) && surfaces_.board != nullptr && surfaces_.board->isAvailable()) {
        surfaces_.board->ensureServer();
    }
    tell(surfaces_.libraryWindow, &LibraryWindowPort::hide);
    keepPreviewsOn(screen, mode);
    if (services_.prefs.countdown && surfaces_.countdown != nullptr) {
        co_await surfaces_.countdown->run(screen);
        if (life.expired()) {
            co_return;
        }
    }
    showForCapture(screen, mode);
    co_await wait(kWindowsSettleSeconds);
}

QCoro::Task<bool> RecorderController::agreedToStart() {
    const auto canStart = [this] { return (state_ == State::idle || state_ == State::setup) && dialogs_ == 0; };
    const Life life = life_;
    if (!canStart()) {
        co_return false;
    }
    const QString warning = preflightWarning();
    if (warning.isEmpty()) {
        co_return true;
    }
    const QString text = warning + QStringLiteral("\n\n¿Quieres grabar igual?");
    const bool agreed = co_await confirm("Antes de grabar", text, "Grabar igual");
    co_return agreed && !life.expired() && canStart();
}

/// Whether what the mode records is permitted and there; else the user has been told and the session is over.
QCoro::Task<bool> RecorderController::checkedSources(RecordMode mode) {
    const Life life = life_;
    if (usesScreen(mode)) {
        const Result<ShareableContent> content = co_await queryContent();
        if (life.expired()) {
            co_return false;
        }
        if (!content.ok()) {
            co_await failQuery(content.error());
            co_return false;
        }
        log(QStringLiteral("permiso pantalla OK (preflight=%1)").arg(truth(services_.capture.preflightAccess())));
        co_return true;
    }
    if (surfaces_.camera == nullptr || !surfaces_.camera->hasVideo()) {
        co_await failNoCamera();
        co_return false;
    }
    co_return true;
}

QCoro::Task<Result<ShareableContent>> RecorderController::queryContent() {
    MainThreadResult<Result<ShareableContent>> answer{Result<ShareableContent>(unansweredError())};
    services_.capture.queryShareableContent(answer.callback());
    Result<ShareableContent> content = co_await answer;
    co_return content;
}

RecorderController::Task RecorderController::wait(double seconds) {
    MainThreadResult<Done> passed{Done{}};
    services_.timers.after(seconds, [pass = passed.callback()] { pass(Done{}); });
    co_await passed;
}

void RecorderController::keepPreviewsOn(const Screen& screen, RecordMode mode) {
    if (mode == RecordMode::cam) {
        tell(surfaces_.bubble, &BubblePort::enterCameraOnly, screen);
        return;
    }
    tell(surfaces_.bubble, &BubblePort::keep, screen);
    tell(surfaces_.secondBubble, &SecondBubblePort::keep, screen);
    tell(surfaces_.phone, &PhonePort::keep, screen);
}

void RecorderController::showForCapture(const Screen& screen, RecordMode mode) {
    const bool onScreen = usesScreen(mode);
    tell(surfaces_.controlBar, &ControlBarPort::show, screen);
    if (onScreen) {
        tell(surfaces_.drawing, &DrawingPort::prepare, screen);
    }
    tell(surfaces_.bubble, &BubblePort::prepareControlsForCapture);
    if (onScreen && surfaces_.board != nullptr && surfaces_.board->isAvailable()) {
        surfaces_.board->prepare(screen);
    }
    if (onScreen) {
        tell(surfaces_.spotlight, &SpotlightPort::prepare, screen);
    }
    if (mode == RecordMode::screenCam) {
        tell(surfaces_.presenter, &PresenterPort::prepare, screen);
    }
    if (onScreen) {
        tell(surfaces_.phone, &PhonePort::prepareForCapture);
    }
}

/// Out of sight until they are used; they had to be on screen only for the query.
void RecorderController::parkSurfaces() {
    tell(surfaces_.drawing, &DrawingPort::parkPrepared);
    tell(surfaces_.bubble, &BubblePort::parkControls);
    tell(surfaces_.board, &BoardPort::park);
    tell(surfaces_.spotlight, &SpotlightPort::park);
    tell(surfaces_.presenter, &PresenterPort::park);
    tell(surfaces_.phone, &PhonePort::park);
}

OwnWindows RecorderController::ownWindows() const {
    OwnWindows own;
    own.bubble = windowOf(surfaces_.bubble, &BubblePort::windowID);
    own.secondBubble = windowOf(surfaces_.secondBubble, &SecondBubblePort::windowID);
    own.phone = windowOf(surfaces_.phone, &PhonePort::windowID);
    own.drawing = windowOf(surfaces_.drawing, &DrawingPort::overlayWindowID);
    own.board = windowOf(surfaces_.board, &BoardPort::windowID);
    own.presenter = windowOf(surfaces_.presenter, &PresenterPort::windowID);
    return own;
}

/// The query that counts, and the filter built from it.
QCoro::Task<Result<CapturePlan>> RecorderController::planFromWindows(Screen screen, RecordMode mode) {
    const Life life = life_;
    const Result<ShareableContent> content = co_await queryContent();
    if (life.expired()) {
        co_return unansweredError();
    }
    if (!content.ok()) {
        co_return content.error();
    }
    const CaptureWish wish{mode, screen.displayID, services_.prefs.videoQuality, services_.processID};
    Result<CapturePlan> plan = planCapture(wish, ownWindows(), content.value(), [this](const ContentFilter& filter) {
        return services_.capture.pointPixelScale(filter);
    });
    co_return plan;
}

/// The controller holds the recorder only when all that can fail has succeeded.
QCoro::Task<Result<void>> RecorderController::beginCapture(Screen screen, RecordMode mode) {
    const Life life = life_;
    overlayWindows_.clear();
    overlaySizes_.clear();
    const Result<CapturePlan> plan = co_await planFromWindows(screen, mode);
    if (life.expired()) {
        co_return unansweredError();
    }
    if (!plan.ok()) {
        co_return plan.error();
    }
    overlayWindows_ = plan.value().overlayWindows;
    parkSurfaces();
    CaptureRecorder::Request request = captureRequest(plan.value(), mode);
    const std::filesystem::path url = request.url;
    starting_ = makeRecorder();
    MainThreadResult<Result<void>> running{Result<void>(unansweredError())};
    starting_->start(std::move(request), running.callback());
    const Result<void> started = co_await running;
    if (life.expired()) {
        co_return unansweredError();
    }
    if (!started.ok()) {
        starting_.reset();
        co_return started;
    }
    co_await addOverlays();
    if (life.expired()) {
        co_return unansweredError();
    }
    recorder_ = std::move(starting_);
    fileURL_ = url;
    co_return Result<void>();
}

CaptureRecorder::Request RecorderController::captureRequest(const CapturePlan& plan, RecordMode mode) {
    const Prefs& prefs = services_.prefs;
    CaptureRecorder::Request request;
    request.url = services_.library.newRecordingURL();
    request.microphoneID = microphone();
    request.filter = plan.filter;
    request.size = plan.size;
    request.fps = prefs.fps60 ? 60 : 30;
    request.systemAudio = prefs.systemAudio && usesScreen(mode);
    return request;
}

std::unique_ptr<CaptureRecorder> RecorderController::makeRecorder() {
    std::unique_ptr<CaptureRecorder> recorder = services_.recorders.makeRecorder();
    const unsigned capture = ++captures_;
    endedBy_.reset();
    endedEarly_ = false;
    recorder->setOnStop([this, life = Life(life_), capture](const std::optional<Error>& error) {
        QCoreApplication* const application = QCoreApplication::instance();
        if (application == nullptr) {
            return;
        }
        QMetaObject::invokeMethod(
            application,
            [this, life, capture, error] {
                if (!life.expired() && capture == captures_) {
                    captureEnded(error);
                }
            },
            Qt::QueuedConnection);
    });
    return recorder;
}

/// What ends while the session still begins is stopped, and so saved, as soon as it has begun.
void RecorderController::captureEnded(const std::optional<Error>& error) {
    if (state_ != State::preparing && !isActive()) {
        return;
    }
    endedBy_ = error ? reasonOfEnd(*error) : std::nullopt;
    if (state_ == State::preparing) {
        endedEarly_ = true;
    } else {
        stop();
    }
}

RecorderController::Task RecorderController::addOverlays() {
    const Life life = life_;
    const std::map<int, CaptureWindow> windows = overlayWindows_;
    for (const auto& entry : windows) {
        const int key = entry.first;
        MainThreadResult<Result<void>> answer{Result<void>(unansweredError())};
        starting_->addOverlay(key, entry.second, answer.callback());
        const Result<void> added = co_await answer;
        if (life.expired()) {
            co_return;
        }
        if (added.ok()) {
            overlaySizes_[key] = entry.second.frame.size();
        } else {
            log(QStringLiteral("captura de burbuja %1 falló: %2")
                    .arg(key)
                    .arg(QString::fromStdString(added.error().text)));
        }
    }
}

void RecorderController::startLive(const Screen& screen, RecordMode mode) {
    const Prefs& prefs = services_.prefs;
    if (usesScreen(mode)) {
        startZoomTracking(screen);
        startSpotlight(screen);
        watchPresenter();
        if (prefs.startPresenter && mode == RecordMode::screenCam) {
            services_.timers.after(kPresenterDelaySeconds, [this, life = Life(life_)] {
                if (!life.expired()) {
                    togglePresenter();
                }
            });
        }
    }
    if (surfaces_.classKit != nullptr && !surfaces_.classKit->items().empty()) {
        tell(surfaces_.kitPanel, &KitPanelPort::show);
    }
    if (prefs.prompterOn && surfaces_.teleprompter != nullptr && surfaces_.teleprompter->hasScript()) {
        surfaces_.teleprompter->show(screen);
    }
}

void RecorderController::startSpotlight(const Screen& screen) {
    if (surfaces_.spotlight == nullptr) {
        return;
    }
    surfaces_.spotlight->setOnCircle([this, life = Life(life_)](double time) {
        if (!life.expired() && recorder_) {
            const ChameleonPalette palette = services_.prefs.chameleonPalette;
            recorder_->zoom().showBubble(time, PointerBubble::paletteColors(hexes(palette)));
            log(QStringLiteral("círculo con el mouse: burbuja en el puntero"));
        }
    });
    surfaces_.spotlight->start(screen, services_.prefs.cursorHighlight);
}

void RecorderController::startClock() {
    markers_.clear();
    chapters_.clear();
    accumulated_ = 0;
    quietSince_.reset();
    segmentStart_ = now();
    publish(elapsed_, 0.0, &RecorderController::elapsedChanged);
    setState(State::recording);
    startTicker();
    startDiskWatch();
}

} // namespace velmo
