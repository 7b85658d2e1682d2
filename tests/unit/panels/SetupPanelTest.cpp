#include "panels/SetupPanel.h"

#include "SetupFixture.h"
#include "panels/setup/ResolutionRow.h"
#include "panels/setup/SetupCard.h"
#include "support/NothingCut.h"
#include "ui/Button.h"
#include "ui/Disclosure.h"
#include "ui/LevelMeter.h"
#include "ui/ModeTile.h"
#include "ui/Picker.h"
#include "ui/Segments.h"
#include "ui/Switch.h"
#include "ui/TextField.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QTest>

namespace velmo {
namespace {

using SetupPanelTest = test::SetupWorld;

constexpr int kAnHour = 3600000; // ms

Fade& heightOf(SetupPanel& panel) {
    return *panel.findChild<Fade*>(QString(), Qt::FindDirectChildrenOnly);
}

/// The panel's height where it is on its way to.
void arrive(SetupPanel& panel) {
    heightOf(panel).setCurrentTime(heightOf(panel).duration());
}

/// Titles of the cards that stand, from top to bottom.
QStringList cardsOf(const QWidget& panel) {
    QStringList titles;
    for (const SetupCard* card : panel.findChildren<SetupCard*>()) {
        if (!card->isHidden()) {
            titles += card->accessibleName();
        }
    }
    return titles;
}

TEST_F(SetupPanelTest, ClosingItByAnyMeansEndsThePreparation) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    panel->close();
    EXPECT_EQ(controller->state(), test::State::idle);
    controller->openSetup();
    panel->show();
    named<Button>(*panel, "Cerrar")->click();
    EXPECT_EQ(controller->state(), test::State::idle);
    controller->openSetup();
    panel->show();
    QTest::keyClick(panel.get(), Qt::Key_Escape);
    EXPECT_EQ(controller->state(), test::State::idle);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(SetupPanelTest, HidingItLeavesThePreparationAsItIs) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    panel->hide();
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(controller->state(), test::State::setup);
}

TEST_F(SetupPanelTest, ReopeningItWhileItIsVisibleDoesNotMoveIt) {
    const auto panel = make();
    panel->show();
    panel->move(31, 47);
    panel->show();
    EXPECT_EQ(panel->pos(), QPoint(31, 47));
}

TEST_F(SetupPanelTest, ItsButtonStartsTheRecordingAndASecondClickStartsNoOther) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    auto* start = named<Button>(*panel, "Comenzar grabación");
    start->click();
    start->click();
    test::settle();
    EXPECT_EQ(controller->state(), test::State::preparing);
    advance(0.25);
    test::settle();
    EXPECT_EQ(controller->state(), test::State::recording);
    EXPECT_EQ(count("library.newRecordingURL"), 1);
}

TEST_F(SetupPanelTest, AChosenMicrophoneIsWrittenAtOnceAndNoneHidesTheMeter) {
    const auto panel = make();
    panel->show();
    auto* picker = named<Picker>(*panel, "Micrófono");
    ASSERT_EQ(picker->choices().size(), 3u);
    EXPECT_EQ(picker->choices().back().title, QStringLiteral("Sin micrófono"));
    EXPECT_EQ(picker->current(), QStringLiteral("a"));
    EXPECT_TRUE(panel->findChild<LevelMeter*>()->isVisible());
    emit picker->picked(QStringLiteral("b"));
    EXPECT_EQ(prefs.micID.value(), QStringLiteral("b"));
    EXPECT_EQ(picker->current(), QStringLiteral("b"));
    emit picker->picked(QStringLiteral("none"));
    EXPECT_FALSE(panel->findChild<LevelMeter*>()->isVisible());
}

TEST_F(SetupPanelTest, DevicesThatComeAndGoAreSeenWhenTheMenuOpens) {
    prefs.mode = RecordMode::cam;
    const auto panel = make();
    panel->show();
    auto* microphonePicker = named<Picker>(*panel, "Micrófono");
    inputs.list.push_back({"c", "Nuevo"});
    emit microphonePicker->opening();
    EXPECT_EQ(microphonePicker->choices().size(), 4u);
    inputs.list.clear();
    emit microphonePicker->opening();
    EXPECT_EQ(microphonePicker->text(), QStringLiteral("Sin micrófono"));
    auto* cameraPicker = named<Picker>(*panel, "Cámara");
    EXPECT_EQ(cameraPicker->choices().size(), 2u);
    cameras.list.clear();
    emit cameraPicker->opening();
    EXPECT_EQ(cameraPicker->text(), QStringLiteral("Sin cámara"));
}

TEST_F(SetupPanelTest, ACameraThatStandsInForAnotherBecomesTheChoiceWhenItIsChosen) {
    prefs.mode = RecordMode::cam;
    prefs.cameraID = QStringLiteral("away");
    const auto panel = make();
    panel->show();
    auto* picker = named<Picker>(*panel, "Cámara");
    ASSERT_EQ(picker->current(), QStringLiteral("cam1"));
    picker->click();
    picker->findChild<QMenu*>()->actions().front()->trigger();
    EXPECT_EQ(prefs.cameraID.value(), QStringLiteral("cam1"));
}

TEST_F(SetupPanelTest, ThePreviewsFollowTheCameraThatIsPluggedInAndOut) {
    prefs.mode = RecordMode::screenCam;
    const auto both = std::exchange(cameras.list, {});
    const auto panel = make();
    panel->show();
    controller->openSetup();
    test::settle();
    taken();
    cameras.list = both;
    advance(1);
    EXPECT_EQ(count("camera.configure cam1 mic1"), 1);
    EXPECT_EQ(count("bubble.show"), 1);
    cameras.list.erase(cameras.list.begin());
    advance(1);
    EXPECT_EQ(named<Picker>(*panel, "Cámara")->current(), QStringLiteral("cam2"));
    EXPECT_EQ(count("camera.configure cam2 mic1"), 1);
    cameras.list.clear();
    emit named<Picker>(*panel, "Cámara")->opening();
    test::settle();
    EXPECT_EQ(count("bubble.hide"), 1);
}

TEST_F(SetupPanelTest, TheLevelFollowsTheMicrophoneThatIsPluggedIn) {
    const auto panel = make();
    panel->show();
    controller->openSetup();
    test::settle();
    taken();
    inputs.list.erase(inputs.list.begin());
    microphones.list = {{"mic2", "Otro"}};
    advance(1);
    EXPECT_EQ(count("camera.configure none mic2"), 1);
}

TEST_F(SetupPanelTest, TheSecondBubbleFollowsItsCameraThoughItsCardIsClosed) {
    prefs.mode = RecordMode::screenCam;
    prefs.secondCameraID = QStringLiteral("cam2");
    cameras.list.pop_back();
    const auto panel = make();
    panel->show();
    controller->openSetup();
    test::settle();
    taken();
    cameras.list.push_back({"cam2", "Camera 2"});
    advance(1);
    EXPECT_EQ(count("secondCamera.configure cam2"), 1);
}

TEST_F(SetupPanelTest, ThePreviewsAreLeftAloneWhileNothingIsPluggedAndWhileThePanelIsAway) {
    prefs.mode = RecordMode::screenCam;
    const auto panel = make();
    panel->show();
    controller->openSetup();
    test::settle();
    taken();
    named<ModeTile>(*panel, "Cámara")->click();
    test::settle();
    EXPECT_EQ(count("bubble.show"), 1);
    advance(5);
    EXPECT_EQ(count("bubble.show"), 1) << "whoever writes a setting has told them";
    panel->hide();
    taken();
    cameras.list.clear();
    advance(5);
    EXPECT_THAT(calls, testing::IsEmpty());
    EXPECT_EQ(timers.running(), 0);
}

TEST_F(SetupPanelTest, WhatIsForTheCameraAloneStandsOnlyInTheModesThatUseIt) {
    const auto panel = make();
    panel->show();
    EXPECT_FALSE(named<Picker>(*panel, "Cámara")->isVisible());
    EXPECT_FALSE(named<Switch>(*panel, "Empezar hablando a la cámara")->isVisible());
    EXPECT_FALSE(named<Switch>(*panel, "Mostrar mi nombre bajo la cámara")->isVisible());
    EXPECT_TRUE(named<Switch>(*panel, "Mostrar mi celular")->isVisible());
    prefs.mode = RecordMode::screenCam;
    EXPECT_TRUE(named<Picker>(*panel, "Cámara")->isVisible());
    EXPECT_TRUE(named<Switch>(*panel, "Empezar hablando a la cámara")->isVisible());
    prefs.mode = RecordMode::cam;
    EXPECT_FALSE(named<Switch>(*panel, "Empezar hablando a la cámara")->isVisible());
    EXPECT_TRUE(named<Switch>(*panel, "Mostrar mi nombre bajo la cámara")->isVisible());
    EXPECT_FALSE(named<Switch>(*panel, "Mostrar mi celular")->isVisible());
}

TEST_F(SetupPanelTest, InTheModeWithoutAScreenZoomAndPresenterAreGoneAndTheDisplayIsDisabled) {
    store.setBoolean(QStringLiteral("panel.mas"), true);
    const auto panel = make();
    panel->show();
    EXPECT_TRUE(named<Picker>(*panel, "Pantalla")->isEnabled());
    EXPECT_EQ(cardsOf(*panel), QStringList({"Pantalla y cámaras", "Burbuja de cámara", "Calidad y sonido",
                                            "Zoom y señalar", "Cámara completa", "Guion (teleprompter)"}));
    prefs.mode = RecordMode::cam;
    EXPECT_FALSE(named<Picker>(*panel, "Pantalla")->isEnabled());
    EXPECT_EQ(cardsOf(*panel),
              QStringList({"Pantalla y cámaras", "Burbuja de cámara", "Calidad y sonido", "Guion (teleprompter)"}));
}

TEST_F(SetupPanelTest, ClosedCardsOfAnotherModeComeBackAsTheyWere) {
    store.setBoolean(QStringLiteral("panel.mas"), true);
    store.setBoolean(QStringLiteral("panel.zoom"), true);
    const auto panel = make();
    panel->show();
    prefs.mode = RecordMode::cam;
    prefs.mode = RecordMode::screen;
    EXPECT_TRUE(named<Switch>(*panel, "El zoom sigue al mouse")->isVisible());
}

TEST_F(SetupPanelTest, SwitchesWriteTheirSettingAndShowWhatOthersWrite) {
    const auto panel = make();
    const std::pair<const char*, Setting<bool>*> all[] = {
        {"Empezar hablando a la cámara", &prefs.startPresenter},
        {"Mostrar mi nombre bajo la cámara", &prefs.showName},
        {"Mostrar mi celular", &prefs.showPhone},
        {"Cámara en espejo", &prefs.mirror},
        {"Sombra suave", &prefs.softShadow},
        {"Movimiento más fluido (60 cuadros por segundo)", &prefs.fps60},
        {"Grabar el sonido de la computadora", &prefs.systemAudio},
        {"Quitar el sonido de los clics", &prefs.muteClicks},
        {"Cuenta regresiva 3·2·1", &prefs.countdown},
        {"Acercar automáticamente al hacer clic", &prefs.zoomAuto},
        {"El zoom sigue al mouse", &prefs.zoomFollow},
        {"Burbuja al hacer círculos con el mouse", &prefs.cursorHighlight},
        {"Mostrar el guion al grabar", &prefs.prompterOn},
    };
    for (const auto& [name, setting] : all) {
        auto* one = named<Switch>(*panel, name);
        ASSERT_NE(one, nullptr) << name;
        EXPECT_EQ(one->isChecked(), setting->value()) << name;
        const bool before = setting->value();
        one->click();
        EXPECT_NE(setting->value(), before) << name;
        *setting = before;
        EXPECT_EQ(one->isChecked(), before) << name;
    }
}

TEST_F(SetupPanelTest, AModeIsWrittenAtOnceAndThePreviewsHearOfIt) {
    const auto panel = make();
    controller->openSetup();
    test::settle();
    taken();
    ASSERT_EQ(panel->findChildren<ModeTile*>().size(), 3);
    named<ModeTile>(*panel, "Cámara")->click();
    EXPECT_EQ(prefs.mode.value(), RecordMode::cam);
    test::settle();
    EXPECT_GT(count("bubble.show"), 0);
}

TEST_F(SetupPanelTest, ADisplayIsChosenByItsIdentifierAndTheFirstEntryIsTheMainOne) {
    const auto panel = make();
    auto* picker = named<Picker>(*panel, "Pantalla");
    ASSERT_EQ(picker->choices().size(), 2u);
    EXPECT_EQ(picker->choices()[0], (Picker::Choice{QStringLiteral("0"), QStringLiteral("Pantalla principal")}));
    EXPECT_EQ(picker->choices()[1].id, QStringLiteral("2"));
    emit picker->picked(QStringLiteral("2"));
    EXPECT_EQ(prefs.displayID.value(), 2);
    prefs.displayID = 99;
    EXPECT_EQ(picker->current(), QStringLiteral("0"));
}

TEST_F(SetupPanelTest, ScreensAndCamerasThatChangeWhileItsCardsAreOpenAreSeen) {
    store.setBoolean(QStringLiteral("panel.mas"), true);
    store.setBoolean(QStringLiteral("panel.fuentes"), true);
    const auto panel = make();
    panel->show();
    const auto* resolution = panel->findChild<ResolutionRow*>();
    const auto caption = [resolution] { return resolution->findChildren<QLabel*>()[1]->text(); };
    ASSERT_TRUE(caption().startsWith(QStringLiteral("2880 × 1800 px"))) << caption().toStdString();
    const auto* screenPicker = named<Picker>(*panel, "Pantalla");
    const auto* cameraPicker = named<Picker>(*panel, "Segunda cámara");
    ASSERT_EQ(cameraPicker->choices().size(), 3u);
    screens.screens = {{1, {0, 0, 1280, 720}, 1}, {2, {1280, 0, 1024, 768}, 1}, {3, {2304, 0, 800, 600}, 2}};
    cameras.list.pop_back();
    advance(1);
    EXPECT_TRUE(caption().startsWith(QStringLiteral("1280 × 720 px"))) << caption().toStdString();
    ASSERT_EQ(screenPicker->choices().size(), 3u);
    EXPECT_EQ(screenPicker->choices()[1].title, QStringLiteral("Pantalla 2 · 1024 × 768"));
    EXPECT_EQ(screenPicker->choices()[2].title, QStringLiteral("Pantalla 3 · 1600 × 1200"));
    EXPECT_EQ(cameraPicker->choices().size(), 2u);
}

TEST_F(SetupPanelTest, ASecondCameraIsNoneUntilOneIsChosen) {
    const auto panel = make();
    auto* picker = named<Picker>(*panel, "Segunda cámara");
    EXPECT_EQ(picker->text(), QStringLiteral("Ninguna"));
    emit picker->picked(QStringLiteral("cam2"));
    EXPECT_EQ(prefs.secondCameraID.value(), QStringLiteral("cam2"));
    EXPECT_EQ(picker->text(), QStringLiteral("Camera 2"));
}

TEST_F(SetupPanelTest, CardsAndMoreOptionsAreAsTheyWereLeft) {
    {
        const auto panel = make();
        panel->show();
        EXPECT_FALSE(named<Disclosure>(*panel, "Más opciones")->isChecked());
        named<Disclosure>(*panel, "Más opciones")->click();
        named<Disclosure>(*panel, "Pantalla y cámaras")->click();
        named<Disclosure>(*panel, "Calidad y sonido")->click();
    }
    const auto panel = make();
    EXPECT_TRUE(named<Disclosure>(*panel, "Menos opciones")->isChecked());
    EXPECT_TRUE(named<Disclosure>(*panel, "Pantalla y cámaras")->isChecked());
    EXPECT_FALSE(named<Disclosure>(*panel, "Calidad y sonido")->isChecked());
}

TEST_F(SetupPanelTest, TheMaterialOfAnotherRoomStandsBeforeTheScriptInACardThatRemembersItself) {
    int made = 0;
    const auto withMaterial = [&] {
        return make({{{QStringLiteral("Otra"), QStringLiteral("folder"), QStringLiteral("panel.otra"), false}, [&made] {
                          ++made;
                          return new QWidget;
                      }}});
    };
    {
        const auto panel = withMaterial();
        EXPECT_EQ(made, 1);
        EXPECT_EQ(cardsOf(*panel).mid(5), QStringList({"Otra", "Guion (teleprompter)"}));
        EXPECT_FALSE(named<Disclosure>(*panel, "Otra")->isChecked());
        named<Disclosure>(*panel, "Otra")->click();
    }
    EXPECT_TRUE(named<Disclosure>(*withMaterial(), "Otra")->isChecked());
}

TEST_F(SetupPanelTest, ItsHeightFollowsItsContentAndStaysOnTheScreen) {
    const auto panel = make();
    panel->show();
    QCoreApplication::processEvents();
    const int basic = panel->height();
    named<Disclosure>(*panel, "Más opciones")->click();
    QCoreApplication::processEvents();
    arrive(*panel);
    EXPECT_GT(panel->height(), basic);
    store.setBoolean(QStringLiteral("panel.burbuja"), true);
    const auto tall = make();
    tall->show();
    QCoreApplication::processEvents();
    EXPECT_LE(tall->pos().y() + tall->card().bottom(), 900);
    named<Disclosure>(*panel, "Menos opciones")->click();
    QCoreApplication::processEvents();
    arrive(*panel);
    EXPECT_EQ(panel->height(), basic);
}

TEST_F(SetupPanelTest, ItGrowsAsFarAsTheScreenThatItWasMovedToHasRoom) {
    const int low = 400;
    const double height = QGuiApplication::primaryScreen()->geometry().height();
    screens.screens[1].frame = {1440, height - low, 1920, low}; // beside the upper part of the main one
    const auto panel = make();
    panel->show();
    QCoreApplication::processEvents();
    const QPoint place = QPoint(1500, 20) - panel->card().topLeft();
    panel->move(place);
    named<Disclosure>(*panel, "Más opciones")->click();
    QCoreApplication::processEvents();
    arrive(*panel);
    EXPECT_LE(panel->pos().y() + panel->card().bottom(), low);
    EXPECT_EQ(panel->pos(), place);
    panel->move(QPoint(20, 20) - panel->card().topLeft());
    named<Disclosure>(*panel, "Menos opciones")->click();
    QCoreApplication::processEvents();
    arrive(*panel);
    EXPECT_GT(panel->pos().y() + panel->card().bottom(), low);
}

TEST_F(SetupPanelTest, ItGrowsSmoothlyAndItsTopAndItsControlsStayWhereTheyAre) {
    const auto panel = make();
    panel->show();
    QCoreApplication::processEvents();
    const int basic = panel->height();
    const QPoint corner = panel->pos();
    auto* more = named<Disclosure>(*panel, "Más opciones");
    const int place = more->mapToGlobal(QPoint()).y();
    Fade& height = heightOf(*panel);
    height.setDuration(kAnHour); // the test's own steps come first
    const int start = named<Button>(*panel, "Comenzar grabación")->mapToGlobal(QPoint()).y();
    more->click();
    EXPECT_EQ(named<Button>(*panel, "Comenzar grabación")->mapToGlobal(QPoint()).y(), start)
        << "nothing is squeezed before there is room";
    QCoreApplication::processEvents();
    height.setCurrentTime(kAnHour / 8);
    const int early = panel->height();
    height.setCurrentTime(kAnHour / 3);
    const int late = panel->height();
    EXPECT_LT(basic, early);
    EXPECT_LT(early, late);
    EXPECT_EQ(panel->pos(), corner);
    EXPECT_EQ(more->mapToGlobal(QPoint()).y(), place);
    arrive(*panel);
    EXPECT_GT(panel->height(), late);
}

TEST_F(SetupPanelTest, NoTextIsCutHoweverLargeTheDesktopWantsIt) {
    for (const char* card : {"fuentes", "burbuja", "video", "zoom", "presentador", "guion"}) {
        store.setBoolean(QStringLiteral("panel.") + QString::fromUtf8(card), true);
    }
    store.setBoolean(QStringLiteral("panel.mas"), true);
    prefs.mode = RecordMode::screenCam;
    prefs.showName = true;
    prefs.presenterStyle = PresenterStyle::sideRight;
    for (const double factor : test::kTextScales) {
        const test::LargerText larger(factor);
        const auto panel = make();
        panel->show();
        QCoreApplication::processEvents();
        EXPECT_EQ(test::cutTexts(*panel), QStringList()) << factor;
        EXPECT_LE(panel->pos().y() + panel->card().bottom(), 900) << factor;
    }
}

TEST_F(SetupPanelTest, TextsNameTheKeyThatIsHeld) {
    const auto panel = make();
    prefs.shortcutModifier = ShortcutModifier::super;
    QStringList texts;
    for (const QLabel* label : panel->findChildren<QLabel*>()) {
        texts += label->text();
    }
    EXPECT_TRUE(texts.contains(QStringLiteral("Todo se guarda solo · Super\u00A0G para empezar o terminar")));
    EXPECT_TRUE(texts.filter(QStringLiteral("⌃")).isEmpty())
        << texts.filter(QStringLiteral("⌃")).join('|').toStdString();
    auto* keys = named<Segments>(*panel, "Tecla de los atajos");
    ASSERT_EQ(keys->buttons().size(), 3u);
    keys->buttons()[1]->click();
    EXPECT_EQ(prefs.shortcutModifier.value(), ShortcutModifier::controlAlt);
}

TEST(ResolutionRow, TellsTheSizeAndWhatTheQualityIsGoodFor) {
    const Screen laptop{1, {0, 0, 1440, 900}, 2};
    const Screen large{1, {0, 0, 1920, 1080}, 2};
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::fullHD, laptop),
              QStringLiteral("1920 × 1200 px · fluida y con archivos livianos"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::retina, laptop),
              QStringLiteral("2880 × 1800 px · como se ve tu pantalla; nítida incluso con zoom"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, laptop),
              QStringLiteral("3840 × 2400 px · ampliado a 4K: más calidad en YouTube, archivos grandes"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, large),
              QStringLiteral("3840 × 2160 px · máxima calidad (archivos grandes)"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, std::nullopt),
              QStringLiteral("máxima calidad (archivos grandes)"));
    EXPECT_FALSE(ResolutionRow::isIntel());
}

} // namespace
} // namespace velmo
