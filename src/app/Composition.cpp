#include "app/Composition.h"

#include "app/AboutPanel.h"
#include "app/Credit.h"
#include "app/LaunchOptions.h"
#include "app/MainMenu.h"
#include "app/ProgramFiles.h"
#include "app/RecordingKeys.h"
#include "app/Shortcuts.h"
#include "app/ShortcutsDialog.h"
#include "app/composition/ModifierFollowing.h"
#include "app/composition/Platform.h"
#include "app/composition/Session.h"
#include "app/composition/Stores.h"
#include "app/composition/Surfaces.h"

#include <QCoreApplication>
#include <QMenuBar>

namespace velmo {
namespace {

void postToMain(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

} // namespace

Composition::Composition(const LaunchOptions& options)
    : platform_(std::make_unique<Platform>(options)), stores_(std::make_unique<Stores>(*platform_)),
      session_(std::make_unique<Session>(*platform_, *stores_)),
      surfaces_(std::make_unique<Surfaces>(*platform_, *stores_, *session_)) {
    session_->recorder.attach(sessionSurfaces());
    hotKeys_ =
        std::make_unique<HotKeys>(platform_->hotKeys, recordingKeys(session_->recorder), &postToMain, &Platform::log);
    delegate_ = std::make_unique<AppDelegate>(shell());
    followModifier(stores_->prefs, session_->window);
    whenModifierChanges(stores_->prefs, *delegate_, [this] { delegate_->shortcutModifierChanged(); });
}

Composition::~Composition() {
    session_->recorder.detach(); // the surfaces go first
}

AppDelegate& Composition::delegate() {
    return *delegate_;
}

RecordingRescue& Composition::rescue() {
    return session_->rescue;
}

RecorderController& Composition::recorder() {
    return session_->recorder;
}

SessionSurfaces Composition::sessionSurfaces() {
    SessionSurfaces surfaces;
    surfaces.libraryWindow = &session_->rescue.libraryWindow();
    surfaces.setupPanel = &surfaces_->setupPanel;
    surfaces.controlBar = &surfaces_->controlBar;
    surfaces.kitPanel = &surfaces_->kitPanel;
    surfaces.teleprompter = &surfaces_->teleprompter;
    surfaces.countdown = &surfaces_->countdown;
    surfaces.pointer = &platform_->pointer;
    surfaces.spotlight = &surfaces_->spotlight;
    surfaces.regionPicker = &surfaces_->regionPicker;
    surfaces.drawing = &surfaces_->drawing;
    surfaces.inputMonitors = &platform_->inputMonitors;
    surfaces.camera = &surfaces_->camera;
    surfaces.secondCamera = &surfaces_->secondCamera;
    surfaces.bubble = &surfaces_->bubble;
    surfaces.secondBubble = &surfaces_->secondBubble;
    surfaces.presenter = &surfaces_->presenter;
    surfaces.classKit = &stores_->classMaterial;
    return surfaces;
}

Shell Composition::shell() {
    Shell shell{session_->recorder, *hotKeys_, session_->window, session_->alerts, platform_->application};
    shell.startDisplayWatch = [this] { platform_->displayWatch.start(); };
    shell.setMainMenu = [this](const ShellActions& actions) { buildMainMenu(*session_->window.menuBar(), actions); };
    shell.isOnboarded = [this] { return stores_->prefs.onboarded.value(); };
    shell.showWelcome = [this] {
        surfaces_->welcome.present();
        platform_->application.toFront();
    };
    shell.showAbout = [this] {
        (new AboutPanel)->present(); // goes by itself
        platform_->application.toFront();
    };
    shell.showShortcuts = [this] {
        const auto state = [this] { return Shortcuts::State{stores_->prefs.shortcutModifier, hotKeys_->taken()}; };
        const Shortcuts::State now = state();
        Shortcuts::show(
            now, [this] { platform_->application.toFront(); },
            [this, state, &now](const QString&, const QString&, const QStringList&) {
                auto* const dialog = new ShortcutsDialog(now);
                whenModifierChanges(stores_->prefs, *dialog, [state, dialog] { dialog->setState(state()); });
                dialog->present();
            });
    };
    shell.openVideosFolder = [this] {
        if (const auto opened = stores_->library.openFolder(); !opened.ok()) {
            session_->alerts.inform(QStringLiteral("No se pudo abrir la carpeta de videos"),
                                    QString::fromStdString(opened.error().text));
        }
    };
    shell.openNotices = [this] {
        if (const auto file = programFile(QCoreApplication::applicationDirPath(), kThirdPartyNotices)) {
            platform_->files.open(file->toStdString());
        }
    };
    shell.openSite = [this] { platform_->files.openAddress(Credit::site); };
    shell.shortcutModifier = [this] { return stores_->prefs.shortcutModifier.value(); };
    shell.quit = [this] { session_->rescue.leave([] { QCoreApplication::exit(EXIT_SUCCESS); }); };
    return shell;
}

} // namespace velmo
