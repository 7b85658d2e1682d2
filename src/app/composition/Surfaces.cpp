#include "app/composition/Surfaces.h"

#include "app/ProgramFiles.h"
#include "app/composition/ModifierFollowing.h"
#include "app/composition/Platform.h"
#include "app/composition/Session.h"
#include "app/composition/Stores.h"
#include "classkit/SlideTemplates.h"
#include "classkit/views/KitSetupSection.h"
#include "compositor/NameTagImage.h"
#include "compositor/PointerBubble.h"
#include "platform/desktop/SettingsPrograms.h"
#include "surfaces/LiveLook.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmo {
namespace {

SettingsPrograms::Page pageOf(Permissions::Pane pane) {
    using Page = SettingsPrograms::Page;
    constexpr Page kPages[] = {Page::screen, Page::camera, Page::sound}; // in the order of the panes
    return kPages[static_cast<std::size_t>(pane)];
}

Permissions::Services permissionServices(ScreenCaptureService& capture, DeviceAccess& access, MainTimers& timers) {
    return {capture,
            access,
            access,
            timers,
            [](Permissions::Pane pane) { SettingsPrograms::open(pageOf(pane)); },
            [](Permissions::Pane pane) { return SettingsPrograms::commandFor(pageOf(pane)).has_value(); }};
}

void showTemplates(FileActions& files) {
    const auto templates = programFile(QCoreApplication::applicationDirPath(), kSlideTemplates);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    SlideTemplates::reveal(QFileInfo(templates.value_or(QString())).path().toStdString(), documents.toStdString(),
                           files);
}

SetupSection kitSection(ClassKit& classKit, const Prefs& prefs) {
    return {{QStringLiteral("Material de la clase"), QStringLiteral("books.vertical"), QStringLiteral("panel.material"),
             false},
            [&classKit, &prefs] {
                auto* section = new KitSetupSection(classKit);
                followModifier(prefs, *section);
                return section;
            }};
}

} // namespace

Composition::Surfaces::Surfaces(Platform& platform, Stores& stores, Session& session)
    : classKit(stores.classKit), camera({platform.cameras, platform.audio, platform.clock, platform.timers}),
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
                 Platform::ownProcess()}),
      countdown(platform.timers), kitPanel(stores.classKit, session.recorder, platform.screens),
      teleprompter({stores.prefs, platform.clock, platform.timers}),
      setupPanel({session.recorder, stores.prefs, stores.devices, platform.screens, camera, stores.profiles,
                  platform.timers, [&platform] { showTemplates(platform.files); }},
                 {kitSection(stores.classKit, stores.prefs)}),
      welcome(permissionServices(platform.capture, stores.permissions, platform.timers), stores.prefs,
              [&session] {
                  if (!session.recorder.isActive()) {
                      session.window.show(std::nullopt);
                  }
              }),
      spotlight({platform.clock, platform.timers, platform.pointer, platform.pointerMotion,
                 [&prefs = stores.prefs] { return PointerBubble::paletteColors(hexes(prefs.chameleonPalette)); }}),
      drawing({platform.clock, platform.timers, [this] { bringBubblesToFront(); },
               [this] { return teleprompter.place(); }}),
      controlBar({{session.recorder, &bubble, &secondBubble, nullptr, &teleprompter}, stores.prefs, &camera, [this] {
                      return around();
                  }}) {
    CameraManager::setShared(&camera);
    SecondCameraManager::setShared(&secondCamera);
    tieBubbles(platform.displayWatch);
    LiveLook::follow(stores.prefs, bubble, secondBubble);
    QObject::connect(&stores.profiles, &SettingsProfiles::applied, &bubble, [this, &session] {
        session.recorder.previewChanged();
        dressBubbles();
    });
    tieBar();
}

Composition::Surfaces::~Surfaces() {
    SecondCameraManager::setShared(nullptr);
    CameraManager::setShared(nullptr);
}

BarSurroundings Composition::Surfaces::around() const {
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

void Composition::Surfaces::dressBubbles() {
    bubble.applyPrefs();
    secondBubble.applyPrefs();
}

void Composition::Surfaces::bringBubblesToFront() {
    bubble.bringToFront();
    secondBubble.bringToFront();
}

void Composition::Surfaces::tieBubbles(DisplayWatch& displays) {
    QObject::connect(&camera, &CameraManager::levelChanged, &bubble, [this] { bubble.setLevel(camera.level()); });
    displaysChange = displays.observe([this] {
        bubble.reconnect();
        secondBubble.reconnect();
    });
}

void Composition::Surfaces::tieBar() {
    const auto refreshOn = [this](auto& sender, auto signal) {
        QObject::connect(&sender, signal, &controlBar, &ControlBar::refresh);
    };
    refreshOn(secondBubble, &SecondBubbleController::visibleChanged);
    refreshOn(secondBubble, &SecondBubbleController::userHiddenChanged);
    refreshOn(drawing, &ScreenDrawing::drawingChanged);
    refreshOn(classKit, &ClassKit::itemsChanged);
    refreshOn(kitPanel, &KitPanel::visibleChanged);
    refreshOn(camera, &CameraManager::hasVideoChanged);
    refreshOn(teleprompter, &Teleprompter::visibleChanged);
    controlBar.refresh();
}

} // namespace velmo
