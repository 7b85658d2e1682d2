#pragma once

#include "app/HotKeys.h"
#include "app/ShellActions.h"
#include "app/StatusItemModel.h"
#include "session/Collaborators.h"
#include "session/RecorderController.h"
#include "session/SessionServices.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

class QSessionManager;

namespace velmo {

class StatusItem;

/// What the shell stands on. References are borrowed and outlive the delegate; an empty function is a part that this
/// build does not have.
struct Shell {
    RecorderController& recorder;
    HotKeys& hotKeys;
    LibraryWindowPort& libraryWindow;
    AlertPort& alerts;
    ApplicationPort& application;
    std::function<void()> startDisplayWatch = {};
    std::function<void()> enableScreenDevices = {};
    /// Gives the main menu to the window that carries it.
    std::function<void(const ShellActions&)> setMainMenu = {};
    std::function<bool()> isOnboarded = {};
    std::function<void()> showWelcome = {};
    std::function<void()> showAbout = {};
    std::function<void()> showShortcuts = {};
    std::function<void()> openVideosFolder = {};
    std::function<bool()> isQuadrelAvailable = {};
    std::function<void()> openQuadrel = {};
    std::function<void()> stopQuadrel = {};
    std::function<void()> openNotices = {};
    std::function<void()> openSite = {};
    std::function<void()> quit = {};                         ///< ends the event loop, unasked
    std::function<ShortcutModifier()> shortcutModifier = {}; ///< Control when empty
};

/// The shell: launch, menus, status item, hot keys, and what a reopen and a quit mean. Main thread.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(Shell shell);
    ~AppDelegate() override;

    void applicationDidFinishLaunching();
    /// Another start of the program while this one runs. True: it has been dealt with.
    bool applicationShouldHandleReopen();
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
    /// Asked before every quit by the user. Refuses, and says so, while a recording runs.
    bool applicationShouldTerminate();
    void applicationWillTerminate();

    /// What the quit entries of the menus do.
    void terminate();
    /// The desktop asks before it ends the user's session.
    void commitData(QSessionManager& manager);

    /// To be called when another modifier was chosen: it holds at once, for keys and texts.
    void shortcutModifierChanged();

    const ShellActions& actions() const { return actions_; }

private:
    void makeActions();
    void makeSessionActions();
    void makeWindowActions();
    void subscribe();
    void updateStatus();
    void updateRecordingKeys();
    ShortcutModifier shortcutModifier() const;
    QCoro::Task<void> explainRefusal();

    Shell shell_;
    ShellActions actions_;
    std::unique_ptr<StatusItem> statusItem_;
    std::vector<QMetaObject::Connection> subscriptions_;
    StatusItemModel statusModel_;
    bool hasRecordingKeys_ = false;
};

} // namespace velmo
