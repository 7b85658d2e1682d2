#include "app/Composition.h"

#include "app/AboutPanel.h"
#include "app/ClassKitAdapter.h"
#include "app/Credit.h"
#include "app/DesktopApplication.h"
#include "app/DesktopFileChooser.h"
#include "app/DesktopPointer.h"
#include "app/DeviceAccess.h"
#include "app/LaunchOptions.h"
#include "app/LibraryAdapter.h"
#include "app/MainMenu.h"
#include "app/MixerAdapter.h"
#include "app/ProgramFiles.h"
#include "app/RecordingKeys.h"
#include "app/RecordingRescue.h"
#include "app/RecoveryNotice.h"
#include "app/Shortcuts.h"
#include "app/ShortcutsDialog.h"
#include "capture/DiagLog.h"
#include "capture/DisplayWatch.h"
#include "classkit/ClassKit.h"
#include "classkit/SlideTemplates.h"
#include "classkit/views/KitPanel.h"
#include "classkit/views/KitSetupSection.h"
#include "compositor/NameTagImage.h"
#include "compositor/PointerBubble.h"
#include "library/Library.h"
#include "library/Recovery.h"
#include "library/views/LibraryWindow.h"
#include "panels/Alerts.h"
#include "panels/ControlBar.h"
#include "panels/CountdownWindow.h"
#include "panels/SetupPanel.h"
#include "panels/WelcomeWindow.h"
#include "platform/JoinedCameras.h"
#include "platform/desktop/CameraNodes.h"
#include "platform/desktop/CameraPortal.h"
#include "platform/desktop/DesktopFileActions.h"
#include "platform/desktop/QtDelayedCalls.h"
#include "platform/desktop/QtDisplayReconfiguration.h"
#include "platform/desktop/QtScreens.h"
#include "platform/desktop/SettingsPrograms.h"
#include "platform/desktop/StatvfsDiskSpace.h"
#include "platform/desktop/SysPowerSources.h"
#include "platform/desktop/XInputPointerMotion.h"
#include "platform/desktop/XcbHotKeyService.h"
#include "platform/ffmpeg/FfmpegAssetInspector.h"
#include "platform/ffmpeg/FfmpegAssetReaderFactory.h"
#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"
#include "platform/ffmpeg/FfmpegCameras.h"
#include "platform/ffmpeg/FfmpegPassthroughWriterFactory.h"
#include "platform/pulse/PulseAudioInputService.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "platform/x11/X11InputMonitors.h"
#include "platform/x11/X11ScreenCapture.h"
#include "session/QtTimers.h"
#include "session/ScreenRecorderFactory.h"
#include "settings/Devices.h"
#include "settings/JsonDefaultsStore.h"
#include "settings/Prefs.h"
#include "settings/SettingsProfiles.h"
#include "surfaces/BubbleController.h"
#include "surfaces/CameraManager.h"
#include "surfaces/PresenterWindow.h"
#include "surfaces/RegionPicker.h"
#include "surfaces/ScreenDrawing.h"
#include "surfaces/SecondBubbleController.h"
#include "surfaces/SecondCameraManager.h"
#include "surfaces/SpotlightOverlay.h"
#include "surfaces/Teleprompter.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMenuBar>
#include <QStandardPaths>

#include <syslog.h>

#include <string>
#include <vector>

namespace velmo {
namespace {

void logLine(const std::string& line) {
    DiagLog::write(line);
}

FfmpegWriterOptions writerOptions() {
    FfmpegWriterOptions options;
    options.log = &logLine;
    options.keepsJournal = true; // the library takes it away
    return options;
}

AudioMixer makeMixer(const AssetReaderFactory& readers, const PassthroughWriterFactory& writers) {
    return AudioMixer(readers, writers, [](const std::string& line) { ::syslog(LOG_WARNING, "%s", line.c_str()); });
}

/// Calls `follow` whenever the user chooses another modifier of the keys, as long as `context` lives.
template <typename Follow>
void whenModifierChanges(const Prefs& prefs, QObject& context, Follow follow) {
    QObject::connect(&prefs, &Prefs::changed, &context, [&prefs, follow](const QString& key) {
        if (key == prefs.shortcutModifier.key()) {
            follow();
        }
    });
}

/// Keeps the texts of `widget` at the modifier that the user has chosen.
template <typename Widget>
void followModifier(const Prefs& prefs, Widget& widget) {
    const auto follow = [&prefs, &widget] { widget.setShortcutModifier(prefs.shortcutModifier); };
    whenModifierChanges(prefs, widget, follow);
    follow();
}

void postToMain(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

int ownProcess() {
    return static_cast<int>(QCoreApplication::applicationPid());
}

} // namespace

/// What the system gives.
struct Composition::Platform {
    std::function<void(std::function<void(bool)>)> askForCamera() {
        if (!CameraPortal::isInUse()) {
            return {};
        }
        return [this](std::function<void(bool)> answered) { cameraPortal.request(std::move(answered)); };
    }
    explicit Platform(const LaunchOptions& options)
        : devices(clock, options.cameraSources, options.cameraFolder),
          syntheticCameras(clock, options.syntheticCameras.value_or(SyntheticCameras::Options{})),
          cameras(options.syntheticCameras ? std::vector<CameraService*>{&devices, &syntheticCameras}
                                           : std::vector<CameraService*>{&devices}) {}

    const HostClock& clock = HostClock::shared();
    PulseAudioInputService audio{clock};
    FfmpegCameras devices;
    SyntheticCameras syntheticCameras;
    JoinedCameras cameras;
    X11ScreenCapture capture{std::nullopt, &audio, clock};
    X11InputMonitors inputMonitors{std::nullopt, clock};
    FfmpegAssetWriterFactory writers{writerOptions()};
    FfmpegAssetReaderFactory readers;
    FfmpegPassthroughWriterFactory passthroughWriters;
    FfmpegAssetInspector inspector;
    QtTimers timers;
    QtDelayedCalls delayedCalls;
    QtScreens screens;
    QtDisplayReconfiguration displays;
    SysPowerSources power;
    StatvfsDiskSpace disk;
    DesktopFileActions files;
    DesktopFileChooser fileChooser;
    DesktopApplication application;
    DesktopPointer pointer;
    XInputPointerMotion pointerMotion;
    CameraPortal cameraPortal;
    XcbHotKeyService hotKeys;
    DisplayWatch displayWatch{displays, delayedCalls};
    MixerAdapter mixer{makeMixer(readers, passthroughWriters), std::make_unique<ThreadQueue>("velmo.mixer")};
};

/// What is kept between launches.
struct Composition::Stores {
    explicit Stores(Platform& platform)
        : devices(&platform.cameras, &platform.audio), classKit(defaults, kitServices(platform)),
          permissions({devices, platform.audio, platform.timers, std::make_unique<ThreadQueue>("velmo.devices.access"),
                       [] { return CameraNodes::tryAll(); }, platform.askForCamera()}),
          library(Library::standardFolder(),
                  {platform.files, platform.inspector, std::make_unique<ThreadQueue>("velmo.library")}),
          recoveryMixer(makeMixer(platform.readers, platform.passthroughWriters)),
          recovery(library,
                   {std::make_unique<ThreadQueue>("velmo.recovery"),
                    [this](const std::filesystem::path& video) { recoveryMixer.mixIfNeeded(video); }, &logLine}) {}

    static KitServices kitServices(Platform& platform) {
        return {platform.files, platform.fileChooser, [&platform] { platform.application.toFront(); },
                [](const QString& title, const QString& location) {
                    RecorderController::shared().addChapter(title, location);
                },
                [](const QString& text) { RecorderController::shared().flashMessage(text); }};
    }

    JsonDefaultsStore defaults{JsonDefaultsStore::standardFile(), &logLine};
    Prefs prefs{defaults};
    Devices devices;
    ClassKit classKit;
    DeviceAccess permissions;
    SettingsProfiles profiles{defaults, [this] {
                                  prefs.reload();
                                  classKit.reload();
                              }};
    ClassKitAdapter classMaterial{classKit, std::make_unique<ThreadQueue>("velmo.classkit")};
    Library library;
    LibraryAdapter libraryStore{library};
    AudioMixer recoveryMixer;
    Recovery recovery; ///< after what it works with
};

/// The recording session and what answers to it.
struct Composition::Session {
    Session(Platform& platform, Stores& stores)
        : recorders({platform.capture, platform.writers, platform.clock, DiagLog::shared()}),
          window(stores.library, platform.files, stores.defaults, [] { RecorderController::shared().openSetup(); }) {}
    ~Session() {
        rescue.forget();
        RecorderController::setShared(nullptr);
    }

    ScreenRecorderFactory recorders;
    LibraryWindow window;
    Alerts alerts;
    RecordingRescue rescue{window, alerts, &logLine};
    std::unique_ptr<RecorderController> recorder;
    std::unique_ptr<RecoveryNotice> recoveryNotice; ///< after the controller that it watches
};

/// What stands around a recording on the screen.
struct Composition::Surfaces {
    Surfaces(Platform& platform, Stores& stores, RecorderController& recorder, LibraryWindowPort& library)
        : classKit(stores.classKit), camera({platform.cameras, platform.audio, platform.clock}),
          secondCamera({platform.cameras, platform.clock}),
          bubble({stores.prefs, platform.screens, platform.clock, platform.timers, camera.feed(), &NameTag::image},
                 {[this] { return camera.hasVideo(); }, [this] { secondBubble.applyPrefs(); }}),
          secondBubble(
              {stores.prefs, platform.screens, platform.clock, platform.timers, secondCamera.feed(), &NameTag::image}),
          presenter({stores.prefs,
                     bubble,
                     platform.capture,
                     platform.clock,
                     platform.timers,
                     std::make_unique<ThreadQueue>("velmo.presenter"),
                     {},
                     ownProcess()}),
          countdown(platform.timers), kitPanel(stores.classKit, recorder, platform.screens),
          teleprompter({stores.prefs, platform.clock, platform.timers}),
          controlBar({{recorder, &bubble, &secondBubble, nullptr, &teleprompter},
                      stores.prefs,
                      &camera,
                      [this] { return around(); }}),
          setupPanel({recorder, stores.prefs, stores.devices, platform.screens, camera, stores.profiles,
                      [&platform] { showTemplates(platform.files); }},
                     {kitSection(stores)}),
          welcome(welcomeServices(platform, stores), stores.prefs,
                  [&recorder, &library] {
                      if (!recorder.isActive()) {
                          library.show(std::nullopt);
                      }
                  }),
          spotlight({platform.clock, platform.timers, platform.pointer, platform.pointerMotion,
                     [&prefs = stores.prefs] { return PointerBubble::paletteColors(hexes(prefs.chameleonPalette)); }}),
          drawing({platform.clock, platform.timers, [this] { bringBubblesToFront(); }}) {
        CameraManager::setShared(&camera);
        SecondCameraManager::setShared(&secondCamera);
        tieBubbles(platform.displayWatch);
        QObject::connect(&stores.profiles, &SettingsProfiles::applied, &bubble, [this, &recorder] {
            recorder.previewChanged();
            bubble.applyPrefs();
            secondBubble.applyPrefs();
        });
        tieBar();
    }
    ~Surfaces() {
        SecondCameraManager::setShared(nullptr);
        CameraManager::setShared(nullptr);
    }

    static SettingsPrograms::Page pageOf(Permissions::Pane pane) {
        using Page = SettingsPrograms::Page;
        constexpr Page kPages[] = {Page::screen, Page::camera, Page::sound}; // in the order of the panes
        return kPages[static_cast<std::size_t>(pane)];
    }

    static Permissions::Services welcomeServices(Platform& platform, Stores& stores) {
        return {platform.capture,
                stores.permissions,
                stores.permissions,
                platform.timers,
                [](Permissions::Pane pane) { SettingsPrograms::open(pageOf(pane)); },
                [](Permissions::Pane pane) { return SettingsPrograms::commandFor(pageOf(pane)).has_value(); }};
    }

    static void showTemplates(FileActions& files) {
        const auto templates = programFile(QCoreApplication::applicationDirPath(), kSlideTemplates);
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        SlideTemplates::reveal(QFileInfo(templates.value_or(QString())).path().toStdString(), documents.toStdString(),
                               files);
    }

    static SetupSection kitSection(Stores& stores) {
        return {{QStringLiteral("Material de la clase"), QStringLiteral("books.vertical"),
                 QStringLiteral("panel.material"), false},
                [&stores] {
                    auto* section = new KitSetupSection(stores.classKit);
                    followModifier(stores.prefs, *section);
                    return section;
                }};
    }

    BarSurroundings around() const {
        using Material = BarSurroundings::Material;
        BarSurroundings now;
        now.hasVideo = camera.hasVideo();
        now.hasSecondBubble = secondBubble.visible() || secondBubble.userHidden();
        now.isDrawing = drawing.drawing();
        const Material there = kitPanel.visible() ? Material::shown : Material::hidden;
        now.scriptVisible = teleprompter.visible();
        now.material = classKit.items().empty() ? Material::none : there;
        return now;
    }

    void bringBubblesToFront() {
        bubble.bringToFront();
        secondBubble.bringToFront();
    }

    void tieBubbles(DisplayWatch& displays) {
        QObject::connect(&camera, &CameraManager::levelChanged, &bubble, [this] { bubble.setLevel(camera.level()); });
        displaysChange = displays.observe([this] {
            bubble.reconnect();
            secondBubble.reconnect();
        });
    }

    void tieBar() {
        QObject::connect(&secondBubble, &SecondBubbleController::visibleChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&secondBubble, &SecondBubbleController::userHiddenChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&drawing, &ScreenDrawing::drawingChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&classKit, &ClassKit::itemsChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&kitPanel, &KitPanel::visibleChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&camera, &CameraManager::hasVideoChanged, &controlBar, &ControlBar::refresh);
        QObject::connect(&teleprompter, &Teleprompter::visibleChanged, &controlBar, &ControlBar::refresh);
        controlBar.refresh();
    }

    const ClassKit& classKit;

    CameraManager camera;
    SecondCameraManager secondCamera;
    BubbleController bubble;
    SecondBubbleController secondBubble;
    PresenterWindow presenter;
    CountdownWindow countdown;
    KitPanel kitPanel;
    Teleprompter teleprompter;
    ControlBar controlBar; // asks what stands around it
    SetupPanel setupPanel;
    WelcomeWindow welcome;
    SpotlightOverlay spotlight;
    RegionPicker regionPicker;
    ScreenDrawing drawing;
    DisplayWatch::Observation displaysChange;
};

Composition::Composition(const LaunchOptions& options)
    : platform_(std::make_unique<Platform>(options)), stores_(std::make_unique<Stores>(*platform_)),
      session_(std::make_unique<Session>(*platform_, *stores_)) {
    Prefs::setShared(&stores_->prefs);
    ClassKit::setShared(&stores_->classKit);
    SettingsProfiles::setShared(&stores_->profiles);
    Library::setShared(&stores_->library);
    session_->recorder = std::make_unique<RecorderController>(sessionServices());
    RecorderController::setShared(session_->recorder.get());
    session_->rescue.watch(*session_->recorder);
    session_->recoveryNotice = std::make_unique<RecoveryNotice>(stores_->recovery, *session_->recorder,
                                                                session_->window, session_->rescue.alerts());
    stores_->recovery.start(stores_->classKit.items(), stores_->classKit.copyFiles());
    surfaces_ = std::make_unique<Surfaces>(*platform_, *stores_, *session_->recorder, session_->window);
    session_->recorder->attach(sessionSurfaces());
    hotKeys_ = std::make_unique<HotKeys>(platform_->hotKeys, recordingKeys(*session_->recorder), &postToMain, &logLine);
    delegate_ = std::make_unique<AppDelegate>(shell());
    followModifier(stores_->prefs, session_->window);
    whenModifierChanges(stores_->prefs, *delegate_, [this] { delegate_->shortcutModifierChanged(); });
}

Composition::~Composition() {
    session_->recorder->attach({}); // the surfaces go first
    delegate_.reset();
    hotKeys_.reset();
    surfaces_.reset();
    session_.reset();
    Library::setShared(nullptr);
    SettingsProfiles::setShared(nullptr);
    ClassKit::setShared(nullptr);
    Prefs::setShared(nullptr);
}

AppDelegate& Composition::delegate() {
    return *delegate_;
}

RecordingRescue& Composition::rescue() {
    return session_->rescue;
}

RecorderController& Composition::recorder() {
    return *session_->recorder;
}

SessionServices Composition::sessionServices() {
    return {stores_->prefs,         platform_->clock,    platform_->timers, session_->rescue.alerts(),
            platform_->application, platform_->screens,  platform_->power,  platform_->disk,
            platform_->capture,     session_->recorders, stores_->devices,  stores_->permissions,
            stores_->libraryStore,  platform_->mixer,    &DiagLog::write,   ownProcess()};
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
    Shell shell{*session_->recorder, *hotKeys_, session_->window, session_->alerts, platform_->application};
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
