#include "app/AppDelegate.h"

#include "app/EditCommand.h"
#include "app/RecordingKeys.h"
#include "app/StatusItem.h"

#include <QApplication>
#include <QSessionManager>
#include <QWidget>

#include <functional>
#include <utility>

namespace velmo {
namespace {

void callIfPresent(const std::function<void()>& function) {
    if (function) {
        function();
    }
}

void hideWindows() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowType() == Qt::Window) {
            widget->hide();
        }
    }
}

} // namespace

AppDelegate::AppDelegate(Shell shell) : shell_(std::move(shell)) {
    makeActions();
}

AppDelegate::~AppDelegate() {
    for (const QMetaObject::Connection& subscription : subscriptions_) {
        disconnect(subscription);
    }
}

void AppDelegate::applicationDidFinishLaunching() {
    callIfPresent(shell_.startDisplayWatch);
    callIfPresent(shell_.enableScreenDevices);
    shell_.setMainMenu(actions_);
    statusItem_ = std::make_unique<StatusItem>(actions_);
    subscribe();
    shell_.hotKeys.install();
    shell_.hotKeys.setModifiers(rowOf(shortcutModifier()).mask);
    shell_.hotKeys.registerKey(kToggleKeyID, kToggleKeyCode, shell_.hotKeys.modifiers(),
                               [this] { shell_.recorder.toggleFromHotkey(); });
    subscriptions_.push_back(connect(&shell_.recorder, &RecorderController::stateChanged, this,
                                     &AppDelegate::updateRecordingKeys, Qt::QueuedConnection));
    shell_.libraryWindow.show(std::nullopt);
    if (!shell_.isOnboarded()) {
        callIfPresent(shell_.showWelcome);
    }
}

bool AppDelegate::applicationShouldHandleReopen() {
    if (!shell_.recorder.isActive()) {
        shell_.libraryWindow.show(std::nullopt);
    }
    return true;
}

bool AppDelegate::applicationShouldTerminate() {
    if (!shell_.recorder.isActive()) {
        return true;
    }
    explainRefusal();
    return false;
}

QCoro::Task<void> AppDelegate::explainRefusal() {
    shell_.application.toFront();
    co_await shell_.alerts.inform(QStringLiteral("Estás grabando"),
                                  QStringLiteral("Termina o descarta la grabación antes de salir."));
}

void AppDelegate::applicationWillTerminate() {
    callIfPresent(shell_.stopQuadrel);
}

void AppDelegate::terminate() {
    if (applicationShouldTerminate()) {
        shell_.quit();
    }
}

void AppDelegate::commitData(QSessionManager& manager) {
    if (shell_.recorder.isActive() && manager.allowsInteraction()) {
        manager.cancel();
        manager.release();
        explainRefusal();
    }
}

void AppDelegate::subscribe() {
    const auto update = [this] { updateStatus(); };
    subscriptions_ = {
        connect(&shell_.recorder, &RecorderController::stateChanged, this, update, Qt::QueuedConnection),
        connect(&shell_.recorder, &RecorderController::elapsedChanged, this, update, Qt::QueuedConnection)};
    updateStatus();
}

void AppDelegate::updateStatus() {
    const auto update =
        statusModel_.update(shell_.recorder.state(), shell_.recorder.elapsed(),
                            shell_.isQuadrelAvailable && shell_.isQuadrelAvailable(), shortcutModifier());
    if (update.menu) {
        statusItem_->setMenu(*update.menu);
    }
    statusItem_->setLook(update.look);
}

ShortcutModifier AppDelegate::shortcutModifier() const {
    return shell_.shortcutModifier ? shell_.shortcutModifier() : ShortcutModifier::control;
}

void AppDelegate::shortcutModifierChanged() {
    shell_.hotKeys.setModifiers(rowOf(shortcutModifier()).mask);
    updateStatus();
}

void AppDelegate::updateRecordingKeys() {
    const bool wanted = shell_.recorder.isActive();
    if (wanted != std::exchange(hasRecordingKeys_, wanted)) {
        shell_.hotKeys.setRecordingKeys(wanted);
    }
}

void AppDelegate::makeActions() {
    makeSessionActions();
    makeWindowActions();
    using Action = ShellAction;
    actions_.set(Action::about, shell_.showAbout);
    actions_.set(Action::quit, [this] { terminate(); });
    actions_.set(Action::openFolder, shell_.openVideosFolder);
    actions_.set(Action::openQuadrel, shell_.openQuadrel);
    actions_.set(Action::reviewPermissions, shell_.showWelcome);
    actions_.set(Action::showShortcuts, shell_.showShortcuts);
    actions_.set(Action::openNotices, shell_.openNotices);
    actions_.set(Action::openSite, shell_.openSite);
}

void AppDelegate::makeSessionActions() {
    const auto call = [this](ShellAction action, void (RecorderController::*operation)()) {
        actions_.set(action, [this, operation] { std::invoke(operation, shell_.recorder); });
    };
    call(ShellAction::openSetup, &RecorderController::openSetup);
    call(ShellAction::startNow, &RecorderController::start);
    call(ShellAction::stopAndSave, &RecorderController::stop);
    call(ShellAction::togglePause, &RecorderController::togglePause);
    call(ShellAction::addMarker, &RecorderController::addMarker);
    call(ShellAction::restart, &RecorderController::restart);
    call(ShellAction::discard, &RecorderController::cancel);
}

void AppDelegate::makeWindowActions() {
    using Action = ShellAction;
    actions_.set(Action::openLibrary, [this] { shell_.libraryWindow.show(std::nullopt); });
    actions_.set(Action::hide, &hideWindows);
    actions_.set(Action::minimize, [] {
        if (QWidget* window = QApplication::activeWindow()) {
            window->showMinimized();
        }
    });
    actions_.set(Action::close, [] {
        if (QWidget* window = QApplication::activeWindow()) {
            window->close();
        }
    });
    actions_.set(Action::undo, [] { sendEditCommand("undo"); });
    actions_.set(Action::cut, [] { sendEditCommand("cut"); });
    actions_.set(Action::copy, [] { sendEditCommand("copy"); });
    actions_.set(Action::paste, [] { sendEditCommand("paste"); });
    actions_.set(Action::selectAll, [] { sendEditCommand("selectAll"); });
}

} // namespace velmo
