#include "World.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace velmo::test {
namespace {

using SessionState = World;

const Calls kPreviewsTakenDown{"bubble.hide", "camera.stop", "secondBubble.hide", "secondCamera.stop", "phone.hide"};

TEST(Scene, OnlyTheNumbersOneToFourAreScenes) {
    EXPECT_FALSE(sceneFromRaw(0));
    EXPECT_FALSE(sceneFromRaw(5));
    EXPECT_FALSE(sceneFromRaw(-1));
    for (int raw = 1; raw <= 4; ++raw) {
        EXPECT_EQ(sceneFromRaw(raw), kAllScenes[std::size_t(raw - 1)]);
    }
    EXPECT_EQ(title(Scene::side), "Yo al lado de mis diapositivas");
    EXPECT_EQ(symbol(Scene::screen), "macwindow");
}

TEST_F(SessionState, BeginsIdleWithTheGivenValues) {
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(controller->elapsed(), 0);
    EXPECT_FALSE(controller->flash());
    EXPECT_EQ(controller->zoomLevelNow(), 2.0);
    EXPECT_TRUE(controller->zoomFollowing());
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_FALSE(controller->isActive());
}

TEST_F(SessionState, OpeningTheSetupShowsThePanelAndThenThePreviews) {
    prefs.mode = RecordMode::screenCam;
    controller->openSetup();
    EXPECT_EQ(controller->state(), State::setup);
    EXPECT_THAT(taken(), ElementsAre("setupPanel.show"));
    settle();
    EXPECT_THAT(taken(),
                ElementsAre("permissions.request video", "permissions.request audio", "camera.configure cam1 mic1",
                            "bubble.show", "secondCamera.configure none", "secondBubble.hide", "phone.hide"));
}

TEST_F(SessionState, OpeningTheSetupTwiceShowsItAgain) {
    controller->openSetup();
    settle();
    calls.clear();
    controller->openSetup();
    EXPECT_EQ(count("setupPanel.show"), 1);
}

TEST_F(SessionState, ClosingTheSetupTakesThePreviewsDownInOrder) {
    controller->openSetup();
    settle();
    calls.clear();
    controller->closeSetup();
    Calls expected{"setupPanel.hide"};
    expected.insert(expected.end(), kPreviewsTakenDown.begin(), kPreviewsTakenDown.end());
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(SessionState, SurfacesThatGoWhileTheSetupIsOpenAreToldNothingMore) {
    controller->openSetup();
    controller->detach();
    calls.clear();
    settle();
    controller->closeSetup();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_THAT(calls, Each(StartsWith("permissions.")));
}

TEST_F(SessionState, SurfacesThatGoWhileASessionIsPreparedAreToldNothingMore) {
    prefs.countdown = true;
    countdown.isHeld = true;
    controller->start();
    settle();
    ASSERT_EQ(controller->state(), State::preparing);
    ASSERT_EQ(count("countdown.run"), 1);
    controller->detach();
    calls.clear();
    controller.reset();
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, ClosingWithoutASetupDoesNothing) {
    controller->closeSetup();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, ARefreshThatOutlivesTheSetupShowsNothing) {
    prefs.mode = RecordMode::screenCam;
    camera.isHeld = true;
    controller->openSetup();
    settle();
    controller->closeSetup();
    calls.clear();
    camera.held(Done{});
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, ASetupThatIsClosedUnderAQuestionForPermissionTurnsNoDeviceOn) {
    prefs.mode = RecordMode::screenCam;
    permissions.isHeld = true;
    controller->openSetup();
    settle();
    controller->closeSetup();
    calls.clear();
    permissions.isHeld = false;
    permissions.held(Done{});
    settle();
    EXPECT_EQ(count("camera.configure cam1 mic1"), 0);
    EXPECT_EQ(count("bubble.show"), 0);
}

TEST_F(SessionState, AChangedPreviewCountsOnlyInTheSetup) {
    controller->previewChanged();
    settle();
    EXPECT_THAT(calls, IsEmpty());
    controller->openSetup();
    settle();
    calls.clear();
    controller->previewChanged();
    settle();
    EXPECT_EQ(count("camera.configure none mic1"), 1);
}

TEST_F(SessionState, WithNoDeviceWantedNobodyIsAskedForPermission) {
    prefs.mode = RecordMode::screen;
    prefs.micID = QStringLiteral("none");
    controller->openSetup();
    settle();
    EXPECT_EQ(calls[1], "camera.configure none none");
}

TEST_F(SessionState, WithoutPermissionThereIsNoDevice) {
    prefs.mode = RecordMode::screenCam;
    permissions.video = 2;
    permissions.audio = 2;
    controller->openSetup();
    settle();
    EXPECT_EQ(count("camera.configure none none"), 1);
    EXPECT_EQ(count("bubble.hide"), 1);
}

TEST_F(SessionState, ASecondCameraEqualToTheFirstIsOff) {
    prefs.mode = RecordMode::screenCam;
    prefs.cameraID = QStringLiteral("cam2");
    prefs.secondCameraID = QStringLiteral("cam2");
    controller->openSetup();
    settle();
    EXPECT_EQ(count("secondCamera.configure none"), 1);
    EXPECT_EQ(count("secondBubble.hide"), 1);
}

TEST_F(SessionState, ASecondCameraThatStandsInForTheFirstOrTheOtherWayRoundIsOff) {
    prefs.mode = RecordMode::screenCam;
    const std::pair<const char*, const char*> choices[] = {{"gone", "cam1"}, {"cam1", "gone"}, {"", "cam1"}};
    for (const auto& [first, second] : choices) {
        calls.clear();
        prefs.cameraID = QString::fromLatin1(first);
        prefs.secondCameraID = QString::fromLatin1(second);
        controller->openSetup();
        settle();
        EXPECT_EQ(count("camera.configure cam1 mic1"), 1) << first;
        EXPECT_EQ(count("secondCamera.configure none"), 1) << first;
        EXPECT_EQ(count("secondBubble.hide"), 1) << first;
        controller->closeSetup();
        settle();
    }
}

TEST_F(SessionState, ASecondCameraShowsItsBubbleUnlessTheUserHidIt) {
    prefs.mode = RecordMode::screenCam;
    prefs.secondCameraID = QStringLiteral("cam2");
    controller->openSetup();
    settle();
    EXPECT_EQ(count("secondCamera.configure cam2"), 1);
    EXPECT_EQ(count("secondBubble.show"), 1);
    calls.clear();
    secondBubble.hidden = true;
    controller->previewChanged();
    settle();
    EXPECT_EQ(count("secondBubble.hide"), 1);
}

TEST_F(SessionState, ThePhoneIsShownOnlyWithTheScreen) {
    prefs.showPhone = true;
    controller->openSetup();
    settle();
    EXPECT_EQ(count("phone.show"), 1);
    calls.clear();
    prefs.mode = RecordMode::cam;
    controller->previewChanged();
    settle();
    EXPECT_EQ(count("phone.hide"), 1);
}

TEST_F(SessionState, TheHotKeyStartsAndStops) {
    controller->toggleFromHotkey();
    advance(0.25);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
    controller->toggleFromHotkey();
    EXPECT_EQ(controller->state(), State::saving);
    settle();
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(SessionState, TheHotKeyDoesNothingWhilePreparing) {
    prefs.countdown = true;
    countdown.isHeld = true;
    controller->start();
    settle();
    ASSERT_EQ(controller->state(), State::preparing);
    controller->toggleFromHotkey();
    controller->toggleFromHotkey();
    settle();
    EXPECT_EQ(count("countdown.run"), 1);
    countdown.held(Done{});
    advance(0.25);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
    EXPECT_EQ(count("recorder.start"), 1);
    EXPECT_EQ(count("recorder.stop"), 0);
}

TEST_F(SessionState, NothingDisturbsASessionThatIsBeingSaved) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    calls.clear();
    controller->toggleFromHotkey();
    controller->start();
    controller->stop();
    controller->cancel();
    controller->restart();
    controller->togglePause();
    controller->addMarker();
    settle();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(controller->state(), State::saving);
    EXPECT_THAT(controller->markers(), IsEmpty());
}

TEST_F(SessionState, APauseIsNotRecordedTime) {
    record();
    advance(10.0);
    controller->togglePause();
    EXPECT_EQ(controller->state(), State::paused);
    EXPECT_EQ(controller->elapsed(), 10.0);
    advance(60);
    EXPECT_EQ(controller->elapsed(), 10.0);
    controller->togglePause();
    advance(2.5);
    controller->togglePause();
    advance(5);
    EXPECT_EQ(controller->elapsed(), 12.5);
    EXPECT_EQ(count("recorder.pause"), 2);
    EXPECT_EQ(count("recorder.resume"), 1);
}

TEST_F(SessionState, PausingWithoutASessionDoesNothing) {
    controller->togglePause();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, TheShownTimeMovesFourTimesASecond) {
    record();
    std::vector<double> shown;
    QObject::connect(controller.get(), &RecorderController::elapsedChanged, controller.get(),
                     [&] { shown.push_back(controller->elapsed()); });
    advance(1);
    EXPECT_THAT(shown, ElementsAre(0.25, 0.5, 0.75, 1.0));
}

TEST_F(SessionState, ATickUnderWayAtTheStopDoesNotMoveTheTime) {
    record();
    advance(1);
    timers.advanceUnsettled(0.25);
    script.stopIsHeld = true;
    controller->stop();
    clock.advance(5);
    settle();
    EXPECT_EQ(controller->elapsed(), 1);
}

TEST_F(SessionState, AStopWhilePausedHasNoOpenSegment) {
    record();
    advance(7.5);
    controller->togglePause();
    advance(100);
    controller->stop();
    settle();
    EXPECT_EQ(library.duration, 7.5);
}

TEST_F(SessionState, ADeclinedCancelGoesOnWithoutTheTimeOfTheQuestion) {
    record();
    advance(4);
    controller->cancel();
    EXPECT_EQ(controller->state(), State::paused);
    EXPECT_THAT(taken(), ElementsAre("recorder.pause", "application.toFront",
                                     "ask ¿Descartar esta grabación? | El video se eliminará. | Descartar,Cancelar "
                                     "destructive"));
    advance(30);
    alerts.answer(1);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
    EXPECT_EQ(controller->elapsed(), 4);
    advance(1);
    EXPECT_EQ(controller->elapsed(), 5);
}

TEST_F(SessionState, ADeclinedCancelLeavesAUsersPauseAlone) {
    record();
    controller->togglePause();
    calls.clear();
    controller->cancel();
    alerts.answer(1);
    settle();
    EXPECT_EQ(controller->state(), State::paused);
    EXPECT_EQ(count("recorder.resume"), 0);
}

TEST_F(SessionState, TheHotKeyStillEndsASessionWhileTheQuestionStands) {
    record();
    advance(3);
    controller->cancel();
    controller->toggleFromHotkey();
    settle();
    ASSERT_EQ(controller->state(), State::idle);
    EXPECT_EQ(library.duration, 3);
    calls.clear();
    alerts.answer(0);
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, WhatTheUserResumedDuringTheQuestionIsNotPausedAgain) {
    record();
    controller->cancel();
    controller->togglePause();
    ASSERT_EQ(controller->state(), State::recording);
    alerts.answer(1);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(SessionState, ASecondQuestionIsNotAskedWhileOneStands) {
    record();
    controller->cancel();
    calls.clear();
    controller->cancel();
    controller->restart();
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, CancelAndRestartNeedASession) {
    controller->cancel();
    controller->restart();
    controller->stop();
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionState, ADeclinedRestartGoesOn) {
    record();
    alerts.answers = {1};
    controller->restart();
    settle();
    EXPECT_EQ(calls[2],
              "ask ¿Empezar de nuevo? | Se descartará lo grabado hasta ahora. | Reiniciar,Cancelar destructive");
    EXPECT_EQ(controller->state(), State::recording);
    EXPECT_EQ(count("recorder.stop"), 0);
}

TEST_F(SessionState, ARestartThatIsDeclinedAtAWarningEndsInTheLibraryWithoutACamera) {
    prefs.mode = RecordMode::screenCam;
    record();
    disk.bytes = 10'000'000;
    calls.clear();
    alerts.answers = {0, 1}; // to start again, but not with so little room
    controller->restart();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(count("recorder.start"), 0);
    EXPECT_EQ(count("camera.stop"), 1);
    EXPECT_EQ(count("bubble.hide"), 1);
    EXPECT_EQ(count("libraryWindow.show none"), 1);
}

TEST_F(SessionState, ARestartKeepsMarksAndTimeUntilTheNewRecordingBegins) {
    record();
    advance(6);
    controller->addMarker();
    std::vector<State> states;
    std::vector<std::size_t> marks;
    QObject::connect(controller.get(), &RecorderController::stateChanged, controller.get(), [&] {
        states.push_back(controller->state());
        marks.push_back(controller->markers().size());
    });
    alerts.answers = {0};
    controller->restart();
    settle();
    EXPECT_EQ(controller->elapsed(), 6);
    advance(0.25);
    settle();
    EXPECT_THAT(states, ElementsAre(State::paused, State::saving, State::idle, State::preparing, State::recording));
    EXPECT_THAT(marks, ElementsAre(1, 1, 1, 1, 0));
    EXPECT_EQ(controller->elapsed(), 0);
    EXPECT_THAT(controller->chapters(), IsEmpty());
}

TEST_F(SessionState, AFlashGoesAfterItsTime) {
    controller->flashMessage("hola");
    EXPECT_EQ(controller->flash(), "hola");
    advance(1.5);
    EXPECT_EQ(controller->flash(), "hola");
    advance(0.125);
    EXPECT_FALSE(controller->flash());
}

TEST_F(SessionState, ANewerFlashSurvivesTheOldOnesTimer) {
    record();
    controller->flashMessage("a");
    camera.loudness = 0;
    controller->addChapter("b", std::nullopt);
    advance(1.5);
    controller->flashMessage("c");
    advance(0.5);
    EXPECT_EQ(controller->flash(), "c");
}

TEST_F(SessionState, TheSameTextShownTwiceGoesWithTheFirstTimer) {
    controller->flashMessage("a");
    advance(1);
    controller->flashMessage("a");
    advance(0.75);
    EXPECT_FALSE(controller->flash());
}

TEST_F(SessionState, WhatIsGivenAsSharedIsShared) {
    RecorderController::setShared(controller.get());
    EXPECT_EQ(&RecorderController::shared(), controller.get());
    RecorderController::setShared(nullptr);
}

} // namespace
} // namespace velmo::test
