#include "World.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

using SessionStart = World;

const Error kDeclined{kStreamErrorDomain, kStreamErrorUserDeclined, "no"};
const Error kBroken{"X11", 8, "La conexión se cortó."};

TEST_F(SessionStart, AScreenIsRecordedInTheGivenOrder) {
    prefs.countdown = true;
    classKit.list = {KitItem{}};
    teleprompter.script = true;
    controller->start();
    settle();
    EXPECT_EQ(controller->state(), State::preparing);
    advance(0.25);
    settle();
    EXPECT_THAT(calls,
                ElementsAre("setupPanel.hide", "permissions.request audio", "camera.configure none mic1", "bubble.hide",
                            "secondCamera.configure none", "secondBubble.hide", "phone.hide", "capture.query",
                            "board.ensureServer", "libraryWindow.hide", "bubble.keep", "secondBubble.keep",
                            "phone.keep", "countdown.run", "controlBar.show", "drawing.prepare",
                            "bubble.prepareControlsForCapture", "board.prepare", "spotlight.prepare",
                            "phone.prepareForCapture", "capture.query", "drawing.parkPrepared", "bubble.parkControls",
                            "board.park", "spotlight.park", "presenter.park", "phone.park", "library.newRecordingURL",
                            "recorder.start", "zoom.configure", "zoom.setLevel 2.00", "recorder.setMutesClicks true",
                            "spotlight.setOnCircle", "spotlight.start bubbles", "kitPanel.show", "teleprompter.show"));
    EXPECT_EQ(controller->state(), State::recording);
    EXPECT_THAT(lines, ElementsAre("permiso pantalla OK (preflight=true)"));
}

TEST_F(SessionStart, ScreenAndCameraAlsoPreparesThePresenter) {
    prefs.mode = RecordMode::screenCam;
    addWindow(10, {100, 100, 220, 220});
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("presenter.prepare"), 1);
    EXPECT_EQ(count("bubble.show"), 1);
    EXPECT_EQ(count("recorder.addOverlay 0"), 1);
    EXPECT_EQ(controller->overlaySizes().at(0), (Size{220, 220}));
}

TEST_F(SessionStart, ACameraAloneIsRecordedFromItsWindow) {
    prefs.mode = RecordMode::cam;
    prefs.systemAudio = true;
    capture.scale = 2;
    addWindow(10, {0, 0, 801, 450});
    controller->start();
    advance(0.25);
    settle();
    EXPECT_THAT(calls, ElementsAre("setupPanel.hide", "permissions.request video", "permissions.request audio",
                                   "camera.configure cam1 mic1", "bubble.show", "secondCamera.configure none",
                                   "secondBubble.hide", "phone.hide", "libraryWindow.hide", "bubble.enterCameraOnly",
                                   "controlBar.show", "bubble.prepareControlsForCapture", "capture.query",
                                   "drawing.parkPrepared", "bubble.parkControls", "board.park", "spotlight.park",
                                   "presenter.park", "phone.park", "library.newRecordingURL", "recorder.start"));
    EXPECT_EQ(script.request.filter, ContentFilter::window(10));
    EXPECT_EQ(script.request.size, (Size{1602, 900}));
    EXPECT_FALSE(script.request.systemAudio) << "there is no screen to hear";
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(SessionStart, TheWishesOfTheSettingsReachTheRecorder) {
    prefs.fps60 = true;
    prefs.systemAudio = true;
    prefs.micID = QStringLiteral("mic2");
    prefs.displayID = 2;
    record();
    EXPECT_EQ(script.request.fps, 60);
    EXPECT_TRUE(script.request.systemAudio);
    EXPECT_EQ(script.request.microphoneID, "mic2");
    EXPECT_EQ(script.request.url, "/videos/class.mp4");
    EXPECT_EQ(script.request.filter.asDisplay()->displayID, 2u);
    EXPECT_EQ(controller->recordingScreen()->displayID, 2u);
}

TEST_F(SessionStart, WithoutAMicrophoneTheRecordingRunsSilent) {
    prefs.micID = QStringLiteral("none");
    record();
    EXPECT_FALSE(script.request.microphoneID);
}

TEST_F(SessionStart, ARefusedMicrophoneIsNoFailure) {
    permissions.audio = 2;
    record();
    EXPECT_FALSE(script.request.microphoneID);
}

TEST_F(SessionStart, AnUnknownDisplayIsTheMainScreen) {
    prefs.displayID = 99;
    record();
    EXPECT_EQ(controller->recordingScreen()->displayID, 1u);
}

TEST_F(SessionStart, TheClockStartsAfterEverythingElse) {
    prefs.countdown = true;
    countdown.isHeld = true;
    script.startIsHeld = true;
    controller->start();
    advance(3);
    countdown.held(Done{});
    advance(0.25);
    settle();
    ASSERT_TRUE(bool(script.heldStart));
    advance(2);
    EXPECT_EQ(controller->state(), State::preparing);
    script.heldStart(Result<void>());
    settle();
    EXPECT_EQ(controller->state(), State::recording);
    advance(1);
    EXPECT_EQ(controller->elapsed(), 1);
}

TEST_F(SessionStart, WindowsHaveAQuarterOfASecondToAppear) {
    controller->start();
    advance(0.125);
    EXPECT_EQ(count("capture.query"), 1);
    advance(0.125);
    EXPECT_EQ(count("capture.query"), 2);
}

TEST_F(SessionStart, PressedTwiceItStartsOnce) {
    controller->start();
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("recorder.start"), 1);
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(SessionStart, PressedTwiceItAsksOnce) {
    power.sources = {{kBatteryPower, 5, 100}};
    controller->start();
    controller->start();
    settle();
    EXPECT_EQ(count("application.toFront"), 1);
    alerts.answer(0);
    settle();
    EXPECT_EQ(controller->state(), State::preparing);
}

TEST_F(SessionStart, ADeclinedWarningLeavesThePanelOpen) {
    power.sources = {{kBatteryPower, 19, 100}};
    controller->openSetup();
    settle();
    calls.clear();
    controller->start();
    settle();
    EXPECT_THAT(calls, ElementsAre("application.toFront",
                                   "ask Antes de grabar | La batería está al 19 % y el cargador no está conectado.\n\n"
                                   "¿Quieres grabar igual? | Grabar igual,Cancelar destructive"));
    alerts.answer(1);
    settle();
    EXPECT_EQ(controller->state(), State::setup);
    EXPECT_EQ(count("setupPanel.hide"), 0);
}

TEST_F(SessionStart, TwoWarningsAreTwoLinesOfOneQuestion) {
    power.sources = {{kBatteryPower, 10, 100}};
    disk.bytes = 1;
    alerts.answers = {0};
    controller->start();
    settle();
    EXPECT_EQ(calls[1],
              "ask Antes de grabar | Casi no queda espacio en el disco para grabar.\nLa batería está al 10 % y "
              "el cargador no está conectado.\n\n¿Quieres grabar igual? | Grabar igual,Cancelar destructive");
    EXPECT_EQ(controller->state(), State::preparing);
}

TEST_F(SessionStart, TheCameraModeNeedsACamera) {
    prefs.mode = RecordMode::cam;
    camera.video = false;
    controller->openSetup();
    settle();
    calls.clear();
    controller->start();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    ASSERT_GE(calls.size(), 7u);
    EXPECT_THAT(Calls(calls.end() - 7, calls.end()),
                ElementsAre("bubble.hide", "camera.stop", "secondBubble.hide", "secondCamera.stop", "phone.hide",
                            "application.toFront",
                            "inform Activa una cámara | El modo Cámara necesita una cámara conectada y con permiso."));
    calls.clear();
    alerts.answer(0);
    settle();
    EXPECT_EQ(controller->state(), State::setup);
    EXPECT_EQ(calls.front(), "setupPanel.show");
}

TEST_F(SessionStart, ARefusedScreenAsksTheSystemAndTellsTheUser) {
    capture.errors[0] = kDeclined;
    capture.preflight = false;
    alerts.answers = {0};
    controller->start();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    const auto refused = std::find(calls.begin(), calls.end(), "capture.query");
    EXPECT_THAT(
        Calls(refused + 1, calls.end()),
        ElementsAre("bubble.hide", "camera.stop", "secondBubble.hide", "secondCamera.stop", "phone.hide",
                    "capture.requestAccess", "application.toFront",
                    "ask Permite la grabación de pantalla | Permite a Velmo Studio grabar la pantalla en los "
                    "ajustes de privacidad del sistema. Después vuelve a abrir la app. | Abrir Ajustes,Ahora no",
                    "application.openScreenCaptureSettings"));
    EXPECT_THAT(lines, ElementsAre("SCShareableContent falló: SCStreamErrorDomain -3801 no preflight=false"));
}

TEST_F(SessionStart, AScreenThatCannotBeReadIsSaid) {
    capture.errors[0] = kBroken;
    alerts.answers = {0};
    controller->start();
    settle();
    EXPECT_EQ(calls.back(), "inform No se pudo acceder a la pantalla | La conexión se cortó.");
    EXPECT_EQ(count("capture.requestAccess"), 0);
    EXPECT_EQ(count("libraryWindow.hide"), 0);
    EXPECT_EQ(count("libraryWindow.show none"), 0);
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(SessionStart, AFailureOfTheSecondQueryTakesEverythingDown) {
    capture.errors[1] = kBroken;
    controller->start();
    advance(0.25);
    settle();
    const auto failed = std::find(calls.rbegin(), calls.rend(), "capture.query").base();
    EXPECT_THAT(Calls(failed, calls.end()),
                ElementsAre("spotlight.stop", "presenter.reset", "controlBar.hide", "kitPanel.hide",
                            "teleprompter.hide", "drawing.teardown", "board.endRecording", "bubble.exitCameraOnly",
                            "bubble.hide", "camera.stop", "secondBubble.hide", "secondCamera.stop", "phone.hide",
                            "application.toFront", "inform No se pudo empezar a grabar | La conexión se cortó."));
    EXPECT_EQ(lines.back(), "inicio de grabación falló: X11 8 La conexión se cortó.");
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_FALSE(controller->recordingScreen());
    alerts.answer(0);
    settle();
    EXPECT_EQ(calls.back(), "libraryWindow.show none");
}

TEST_F(SessionStart, ARecorderThatCannotStartLeavesNothingBehind) {
    script.startError = Error{"VelmoStudio.RecorderError", 0, "No se pudo escribir el video. Permission denied"};
    prefs.mode = RecordMode::cam;
    addWindow(10, {0, 0, 100, 100});
    alerts.answers = {0};
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(script.alive, 0);
    EXPECT_EQ(count("inform No se pudo empezar a grabar | No se pudo escribir el video. Permission denied"), 1)
        << "without a screen no permission for it can be missing";
    EXPECT_EQ(controller->state(), State::idle);
    script.startError.reset();
    record();
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(SessionStart, APermissionErrorAtTheStartIsToldAsOne) {
    script.startError = Error{"portal", 2, "The user DECLINED"};
    alerts.answers = {1};
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("application.openScreenCaptureSettings"), 0);
    EXPECT_EQ(calls.back(), "libraryWindow.show none");
    EXPECT_EQ(calls[calls.size() - 3], "application.toFront");
}

TEST_F(SessionStart, NoDisplayIsSaid) {
    capture.content.displays.clear();
    alerts.answers = {0};
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("inform No se pudo empezar a grabar | No se encontró la pantalla."), 1);
}

TEST_F(SessionStart, NoScreenAtAllIsSaid) {
    screens.screens.clear();
    alerts.answers = {0};
    controller->start();
    settle();
    EXPECT_EQ(count("inform No se pudo empezar a grabar | No se encontró la pantalla."), 1);
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(SessionStart, AMissingCameraWindowIsSaid) {
    prefs.mode = RecordMode::cam;
    alerts.answers = {0};
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("inform No se pudo empezar a grabar | No se encontró la ventana de la cámara."), 1);
}

TEST_F(SessionStart, NoSecondStartWhileAMessageStands) {
    capture.errors[0] = kBroken;
    controller->start();
    settle();
    ASSERT_TRUE(alerts.stands());
    calls.clear();
    controller->toggleFromHotkey();
    settle();
    EXPECT_THAT(calls, IsEmpty());
    alerts.answer(0);
    settle();
    controller->toggleFromHotkey();
    settle();
    EXPECT_EQ(controller->state(), State::preparing);
}

TEST_F(SessionStart, AnOverlayThatFailsDoesNotStopTheRecording) {
    prefs.mode = RecordMode::screenCam;
    prefs.secondCameraID = QStringLiteral("cam2");
    addWindow(10, {0, 0, 220, 220});
    addWindow(11, {300, 0, 293, 220});
    script.overlayErrors[1] = Error{"SCStreamErrorDomain", -3821, "ya no está"};
    record();
    EXPECT_EQ(lines.back(), "captura de burbuja 1 falló: ya no está");
    EXPECT_TRUE(controller->overlaySizes().contains(0));
    EXPECT_FALSE(controller->overlaySizes().contains(1));
}

TEST_F(SessionStart, ThePresenterComesLittleAfterTheStart) {
    prefs.startPresenter = true;
    prefs.mode = RecordMode::screenCam;
    record();
    advance(0.3);
    EXPECT_EQ(controller->scene(), Scene::screen);
    advance(0.2);
    EXPECT_EQ(controller->scene(), Scene::me);
    EXPECT_EQ(count("presenter.enter framed"), 1);
}

TEST_F(SessionStart, ACircleOfThePointerReachesTheCompositor) {
    record();
    spotlight.circle(12.5);
    EXPECT_THAT(calls, ElementsAre("zoom.showBubble 12.50 5"));
    EXPECT_EQ(lines.back(), "círculo con el mouse: burbuja en el puntero");
    controller->stop();
    settle();
    calls.clear();
    spotlight.circle(13);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionStart, WithNoSurfacesAtAllAScreenIsStillRecorded) {
    controller->attach({});
    prefs.countdown = true;
    record();
    controller->stop();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(count("library.add /videos/class.mp4"), 1);
}

TEST_F(SessionStart, WithoutTheBoardNothingOfItIsPrepared) {
    board.available = false;
    controller->start();
    advance(0.25);
    settle();
    EXPECT_EQ(count("board.ensureServer"), 0);
    EXPECT_EQ(count("board.prepare"), 0);
    EXPECT_EQ(count("board.park"), 1);
}

TEST_F(SessionStart, TheCaptureThatEndsByItselfIsAStop) {
    record();
    advance(9);
    script.onStop(kBroken);
    EXPECT_EQ(controller->state(), State::recording) << "the news comes from another thread";
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(library.duration, 9);
}

TEST_F(SessionStart, TheCaptureThatEndsWhileTheSessionStillBeginsIsStoppedAsSoonAsItHasBegunAndTold) {
    script.startIsHeld = true;
    controller->start();
    advance(0.25);
    settle();
    script.onStop(Error{"velmo.media", 28, "El disco está lleno."});
    settle();
    EXPECT_EQ(controller->state(), State::preparing);
    calls.clear();
    script.heldStart(Result<void>());
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(count("library.add /videos/class.mp4"), 1);
    EXPECT_EQ(count("inform La grabación se detuvo | El disco está lleno. Todo lo que grabaste hasta ahí está "
                    "guardado."),
              1);
}

TEST_F(SessionStart, LateNewsOfAnEarlierCaptureDoesNotEndThisOne) {
    record();
    const auto earlier = script.onStop;
    controller->stop();
    settle();
    record();
    earlier(kBroken);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
}

} // namespace
} // namespace velmo::test
