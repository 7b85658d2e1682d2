#include "app/RecordingRescue.h"

#include <QCoreApplication>

#include <thread>
#include <utility>

namespace velmo {
namespace {

constexpr std::chrono::milliseconds kPoll{2};

} // namespace

class RecordingRescue::Window final : public LibraryWindowPort {
public:
    Window(RecordingRescue& rescue, LibraryWindowPort& real) : rescue_(rescue), real_(real) {}

    void show(std::optional<std::filesystem::path> focus) override {
        if (!rescue_.leaving_) {
            real_.show(std::move(focus));
        }
        rescue_.settle();
    }
    void hide() override {
        if (!rescue_.leaving_) {
            real_.hide();
        }
    }

private:
    RecordingRescue& rescue_;
    LibraryWindowPort& real_;
};

class RecordingRescue::Messages final : public AlertPort {
public:
    Messages(RecordingRescue& rescue, AlertPort& real) : rescue_(rescue), real_(real) {}

    QCoro::Task<void> inform(QString message, QString informative) override {
        if (rescue_.leaving_) {
            rescue_.log_((message + QStringLiteral(": ") + informative).toStdString());
            co_return;
        }
        co_await real_.inform(message, informative);
    }
    QCoro::Task<int> ask(QString message, QString informative, QStringList buttons, bool firstIsDestructive) override {
        if (rescue_.leaving_) {
            co_return static_cast<int>(buttons.size()) - 1; // the last button is the one that does nothing
        }
        co_return co_await real_.ask(message, informative, buttons, firstIsDestructive);
    }

private:
    RecordingRescue& rescue_;
    AlertPort& real_;
};

RecordingRescue::RecordingRescue(LibraryWindowPort& window, AlertPort& alerts, Log log)
    : window_(std::make_unique<Window>(*this, window)), messages_(std::make_unique<Messages>(*this, alerts)),
      log_(std::move(log)) {}

RecordingRescue::~RecordingRescue() = default;

LibraryWindowPort& RecordingRescue::libraryWindow() {
    return *window_;
}

AlertPort& RecordingRescue::alerts() {
    return *messages_;
}

void RecordingRescue::watch(RecorderController& recorder) {
    recorder_ = &recorder;
    connect(&recorder, &RecorderController::stateChanged, this, [this] {
        const auto state = recorder_->state();
        if (state == RecorderController::State::recording) {
            pending_ = true;
        } else if (state == RecorderController::State::preparing) {
            settle(); // the recording before it was thrown away to start again
        }
    });
}

void RecordingRescue::forget() {
    recorder_->disconnect(this);
    recorder_ = nullptr;
}

void RecordingRescue::leave(std::function<void()> left) {
    left_.push_back(std::move(left));
    beginToLeave();
}

bool RecordingRescue::leaveNow(std::chrono::milliseconds limit) {
    beginToLeave();
    const auto end = std::chrono::steady_clock::now() + limit;
    while (pending_ && std::chrono::steady_clock::now() < end) {
        QCoreApplication::sendPostedEvents();
        std::this_thread::sleep_for(kPoll);
    }
    return !pending_;
}

void RecordingRescue::beginToLeave() {
    leaving_ = true;
    if (!pending_) {
        settle();
    } else if (recorder_ != nullptr) {
        recorder_->stop(); // nothing happens when it is being saved already
    }
}

/// One recording is in the library, or thrown away. The next may have begun while its folder was still being written.
void RecordingRescue::settle() {
    using State = RecorderController::State;
    pending_ = recorder_ != nullptr && (recorder_->isActive() || recorder_->state() == State::saving);
    if (leaving_ && !pending_) {
        for (const auto& left : std::exchange(left_, {})) {
            left();
        }
    }
}

} // namespace velmo
