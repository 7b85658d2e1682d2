#include "session/RecorderController.h"

#include "session/internal/Tell.h"

#include <QMetaObject>

#include <cassert>
#include <utility>

namespace velmo {

using internal::tell;

namespace {

constexpr double kTickSeconds = 0.25;
constexpr double kFlashSeconds = 1.6;

RecorderController* sharedController = nullptr;

} // namespace

RecorderController::RecorderController(SessionServices services, SessionSurfaces surfaces)
    : services_(std::move(services)), surfaces_(surfaces), lastActivity_(now()) {}

RecorderController::~RecorderController() {
    if (sharedController == this) {
        sharedController = nullptr;
    }
}

RecorderController& RecorderController::shared() {
    assert(sharedController != nullptr);
    return *sharedController;
}

void RecorderController::setShared(RecorderController* controller) {
    sharedController = controller;
}

void RecorderController::attach(SessionSurfaces surfaces) {
    assert(state_ == State::idle);
    surfaces_ = surfaces;
}

void RecorderController::openSetup() {
    if (state_ != State::idle && state_ != State::setup) {
        return;
    }
    setState(State::setup);
    tell(surfaces_.setupPanel, &SetupPanelPort::show);
    schedule([this] { refreshPreview(); });
}

void RecorderController::closeSetup() {
    if (state_ != State::setup) {
        return;
    }
    setState(State::idle);
    tell(surfaces_.setupPanel, &SetupPanelPort::hide);
    hidePreviews();
}

void RecorderController::previewChanged() {
    if (state_ == State::setup) {
        schedule([this] { refreshPreview(); });
    }
}

void RecorderController::start() {
    schedule([this] { runStart(StartAfter::nothing); });
}

void RecorderController::toggleFromHotkey() {
    if (isActive()) {
        stop();
    } else if (state_ == State::idle || state_ == State::setup) {
        start();
    }
}

void RecorderController::togglePause() {
    if (!recorder_) {
        return;
    }
    if (state_ == State::recording) {
        recorder_->pause();
        accumulated_ = recordedSeconds();
        segmentStart_.reset();
        setState(State::paused);
    } else if (state_ == State::paused) {
        recorder_->resume();
        segmentStart_ = now();
        setState(State::recording);
    }
    tick();
}

void RecorderController::cancel() {
    if (isActive() && dialogs_ == 0) {
        runCancel();
    }
}

void RecorderController::restart() {
    if (isActive() && dialogs_ == 0) {
        runRestart();
    }
}

RecorderController::Task RecorderController::runCancel() {
    const Life life = life_;
    const bool agreed = co_await confirmPaused("¿Descartar esta grabación?", "El video se eliminará.", "Descartar");
    if (life.expired() || !agreed) {
        co_return;
    }
    discard(false, [this] { tell(surfaces_.libraryWindow, &LibraryWindowPort::show, std::nullopt); });
}

RecorderController::Task RecorderController::runRestart() {
    const Life life = life_;
    const bool agreed =
        co_await confirmPaused("¿Empezar de nuevo?", "Se descartará lo grabado hasta ahora.", "Reiniciar");
    if (life.expired() || !agreed) {
        co_return;
    }
    discard(true, [this] { schedule([this] { runStart(StartAfter::restart); }); });
}

/// Nothing is recorded while the question stands. The hot keys work meanwhile: a session that they paused, resumed or
/// ended is left as they left it.
QCoro::Task<bool> RecorderController::confirmPaused(QString title, QString text, QString ok) {
    const Life life = life_;
    const bool pausedHere = state_ == State::recording;
    if (pausedHere) {
        togglePause();
    }
    const bool agreed = co_await confirm(title, text, ok);
    if (life.expired() || !isActive()) {
        co_return false;
    }
    if (!agreed && pausedHere && state_ == State::paused) {
        togglePause();
    }
    co_return agreed;
}

void RecorderController::flashMessage(const QString& text) {
    showFlash(text, kFlashSeconds);
}

void RecorderController::showFlash(const QString& text, double seconds) {
    publish(flash_, std::optional<QString>(text), &RecorderController::flashChanged);
    services_.timers.after(seconds, [this, life = Life(life_), text] {
        if (!life.expired() && flash_ == text) {
            publish(flash_, std::optional<QString>(), &RecorderController::flashChanged);
        }
    });
}

QCoro::Task<bool> RecorderController::confirm(QString title, QString text, QString ok) {
    const QStringList buttons{ok, QStringLiteral("Cancelar")};
    const int chosen = co_await ask(title, text, buttons, true);
    co_return chosen == 0;
}

QCoro::Task<int> RecorderController::ask(QString title, QString text, QStringList buttons, bool firstIsDestructive) {
    const Life life = life_;
    services_.application.toFront();
    ++dialogs_;
    const int chosen = co_await services_.alerts.ask(title, text, buttons, firstIsDestructive);
    if (!life.expired()) {
        --dialogs_;
    }
    co_return chosen;
}

RecorderController::Task RecorderController::inform(QString title, QString text) {
    const Life life = life_;
    services_.application.toFront();
    ++dialogs_;
    co_await services_.alerts.inform(title, text);
    if (!life.expired()) {
        --dialogs_;
    }
}

void RecorderController::hidePreviews() {
    tell(surfaces_.bubble, &BubblePort::hide);
    tell(surfaces_.camera, &CameraPort::stop);
    tell(surfaces_.secondBubble, &SecondBubblePort::hide);
    tell(surfaces_.secondCamera, &SecondCameraPort::stop);
    tell(surfaces_.phone, &PhonePort::hide);
}

void RecorderController::startTicker() {
    ticker_ = services_.timers.repeat(kTickSeconds, [this] {
        schedule([this] {
            // A tick that was under way when the session ended must not touch what it left.
            if (isActive()) {
                tick();
            }
        });
    });
}

void RecorderController::tick() {
    publish(elapsed_, recordedSeconds(), &RecorderController::elapsedChanged);
    checkMicrophone();
}

double RecorderController::recordedSeconds() const {
    return accumulated_ + (segmentStart_ ? now() - *segmentStart_ : 0.0);
}

double RecorderController::now() const {
    return services_.clock.now().seconds();
}

void RecorderController::setState(State state) {
    publish(state_, state, &RecorderController::stateChanged);
}

void RecorderController::schedule(std::function<void()> work) {
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

void RecorderController::log(const QString& line) const {
    if (services_.log) {
        services_.log(line.toStdString());
    }
}

} // namespace velmo
