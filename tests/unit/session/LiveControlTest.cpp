#include "World.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

using LiveControl = World;

TEST_F(LiveControl, AChapterCountsAsAPlaceAmongTheMarkers) {
    record();
    advance(1);
    controller->addMarker();
    controller->addChapter("Lectura", "a.pdf");
    EXPECT_EQ(controller->flash(), "Capítulo · Lectura");
    advance(64);
    controller->addMarker();
    EXPECT_EQ(controller->flash(), "Marcador 3 · 01:05");
    EXPECT_THAT(controller->markers(), ElementsAre(1, 1, 65));
    EXPECT_THAT(controller->chapters(), ElementsAre(Chapter{1, "Marcador 1", {}}, Chapter{1, "Lectura", "a.pdf"},
                                                    Chapter{65, "Marcador 3", {}}));
}

TEST_F(LiveControl, AMarkerWhilePausedStandsAtThePausedTime) {
    record();
    advance(61);
    controller->togglePause();
    advance(100);
    controller->addMarker();
    EXPECT_THAT(controller->markers(), ElementsAre(61));
    EXPECT_EQ(controller->flash(), "Marcador 1 · 01:01");
}

TEST_F(LiveControl, MarksNeedASession) {
    controller->addMarker();
    controller->addChapter("x", {});
    EXPECT_THAT(controller->markers(), IsEmpty());
    EXPECT_FALSE(controller->flash());
}

class SilentMicrophone : public World {
protected:
    const QString kWarning = QStringLiteral("No te escuchamos · revisa el micrófono");
    void SetUp() override {
        record();
        camera.loudness = 0.03;
        advance(0.25); // the first silent tick
    }
};

TEST_F(SilentMicrophone, WarnsAfterMoreThanEightSeconds) {
    advance(8);
    EXPECT_FALSE(controller->flash()) << "8 seconds precisely are not over 8";
    advance(0.25);
    EXPECT_EQ(controller->flash(), kWarning);
    advance(4.75);
    EXPECT_EQ(controller->flash(), kWarning);
    advance(0.25);
    EXPECT_FALSE(controller->flash());
}

TEST_F(SilentMicrophone, WarnsAgainAfterThirtySeconds) {
    advance(8.25);
    ASSERT_EQ(controller->flash(), kWarning);
    advance(30);
    EXPECT_FALSE(controller->flash());
    advance(0.25);
    EXPECT_EQ(controller->flash(), kWarning);
}

TEST_F(SilentMicrophone, OneSoundResetsTheEightSecondsButNotTheThirty) {
    advance(8.25);
    advance(10);
    camera.loudness = 0.031;
    advance(0.25);
    camera.loudness = 0;
    advance(8.5);
    EXPECT_FALSE(controller->flash());
    advance(12);
    EXPECT_EQ(controller->flash(), kWarning);
}

TEST_F(SilentMicrophone, APauseRestartsTheCount) {
    advance(7);
    controller->togglePause();
    advance(20);
    EXPECT_FALSE(controller->flash());
    controller->togglePause();
    advance(8);
    EXPECT_FALSE(controller->flash());
    advance(0.5);
    EXPECT_EQ(controller->flash(), kWarning);
}

TEST_F(SilentMicrophone, ANewRecordingCountsItsSilenceFromItsOwnStart) {
    advance(7);
    controller->stop();
    settle();
    advance(60);
    record();
    advance(8);
    EXPECT_FALSE(controller->flash());
    advance(0.5);
    EXPECT_EQ(controller->flash(), kWarning);
}

TEST_F(SilentMicrophone, WithoutAMicrophoneThereIsNoWarning) {
    prefs.micID = QStringLiteral("none");
    advance(60);
    EXPECT_FALSE(controller->flash());
}

TEST_F(LiveControl, ALevelThatNobodyKnowsIsNotSilence) {
    SessionSurfaces without = surfaces();
    without.camera = nullptr;
    controller->attach(without);
    record();
    advance(60);
    EXPECT_FALSE(controller->flash());
}

TEST_F(LiveControl, WithoutAStoredRegionThePickerOpens) {
    record();
    controller->toggleRegion();
    EXPECT_THAT(taken(), ElementsAre("regionPicker.pick Arrastra para elegir la parte de la pantalla que se grabará · "
                                     "Esc para cancelar"));
    EXPECT_FALSE(controller->regionOn());
    regionPicker.answer = Rect{0.25, 0.25, 0.5, 0.5};
    controller->toggleRegion();
    EXPECT_TRUE(controller->regionOn());
    EXPECT_EQ(calls.back(), "zoom.setRegion 25,25,50,50");
    EXPECT_EQ(prefs.recordRegion.value(), (Rect{0.25, 0.25, 0.5, 0.5}));
}

TEST_F(LiveControl, AnOpenPickEndsWithTheRecording) {
    regionPicker.isHeld = true;
    for (const auto& pick : {&RecorderController::chooseRegion, &RecorderController::zoomToArea}) {
        record();
        (controller.get()->*pick)();
        calls.clear();
        controller->stop();
        EXPECT_THAT(calls, ElementsAre("regionPicker.cancel", "controlBar.hide")) << "before anything is saved";
        settle();
    }
    record();
    controller->chooseRegion();
    calls.clear();
    controller->cancel();
    alerts.answer(0);
    settle();
    EXPECT_EQ(count("regionPicker.cancel"), 1);
    EXPECT_FALSE(prefs.recordRegion.value());
}

TEST_F(LiveControl, APickOfOneRecordingThatIsAnsweredInTheNextChangesNothing) {
    regionPicker.isHeld = true;
    for (const auto& pick : {&RecorderController::chooseRegion, &RecorderController::zoomToArea}) {
        record();
        (controller.get()->*pick)();
        const auto answer = std::exchange(regionPicker.held, {});
        controller->stop();
        settle();
        answer(Rect{0.25, 0.25, 0.5, 0.5});
        record();
        answer(Rect{0.25, 0.25, 0.5, 0.5});
        EXPECT_FALSE(controller->regionOn());
        EXPECT_FALSE(controller->zoomOn());
        EXPECT_FALSE(prefs.recordRegion.value());
        EXPECT_THAT(calls, testing::IsEmpty());
        controller->stop();
        settle();
    }
}

TEST_F(LiveControl, ACancelledChoiceLeavesTheRegionAsItIs) {
    prefs.recordRegion = Rect{0, 0, 0.5, 0.5};
    record();
    controller->toggleRegion();
    controller->chooseRegion();
    EXPECT_TRUE(controller->regionOn());
    EXPECT_EQ(prefs.recordRegion.value(), (Rect{0, 0, 0.5, 0.5}));
}

TEST_F(LiveControl, ACameraAloneHasNeitherRegionNorSpotlightNorDrawingNorBoard) {
    prefs.mode = RecordMode::cam;
    addWindow(10, {0, 0, 100, 100});
    record();
    controller->toggleRegion();
    controller->chooseRegion();
    controller->toggleSpotlight();
    controller->toggleDrawing();
    controller->toggleBoard();
    EXPECT_THAT(calls, IsEmpty());
    controller->toggleKit();
    EXPECT_THAT(calls, ElementsAre("kitPanel.toggle")) << "material needs no screen";
}

TEST_F(LiveControl, TheRegionOfLastTimeComesBackWithoutAsking) {
    prefs.recordRegion = Rect{0, 0, 0.5, 0.5};
    record();
    EXPECT_FALSE(controller->regionOn());
    controller->toggleRegion();
    EXPECT_THAT(taken(), ElementsAre("zoom.setRegion 0,0,50,50"));
    controller->toggleRegion();
    EXPECT_THAT(taken(), ElementsAre("zoom.setRegion none"));
    EXPECT_TRUE(prefs.recordRegion.value());
}

TEST_F(LiveControl, TheRegionSwitchesZoomOff) {
    prefs.recordRegion = Rect{0, 0, 0.5, 0.5};
    record();
    controller->toggleZoom();
    controller->toggleRegion();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_TRUE(controller->regionOn());
    controller->toggleZoom();
    EXPECT_FALSE(controller->regionOn());
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(LiveControl, TheSpotlightIsTheSameInTheVideoAndOnTheScreen) {
    record();
    controller->toggleSpotlight();
    EXPECT_THAT(taken(), ElementsAre("zoom.setSpotlight true", "spotlight.setSpotlight true"));
    controller->toggleSpotlight();
    EXPECT_THAT(taken(), ElementsAre("zoom.setSpotlight false", "spotlight.setSpotlight false"));
}

TEST_F(LiveControl, TheKeysReachTheirSurfacesOnlyWhileRecording) {
    teleprompter.script = true;
    const auto pressAll = [this] {
        controller->toggleDrawing();
        controller->toggleBoard();
        controller->toggleKit();
        controller->prompterKey();
        controller->togglePresenter();
    };
    pressAll();
    controller->toggleSpotlight();
    controller->toggleRegion();
    controller->chooseRegion();
    EXPECT_THAT(calls, IsEmpty());
    record();
    pressAll();
    EXPECT_THAT(taken(), ElementsAre("drawing.toggle", "board.toggle", "kitPanel.toggle", "teleprompter.show"));
    teleprompter.isVisible = true;
    controller->prompterKey();
    EXPECT_THAT(taken(), ElementsAre("teleprompter.togglePlay"));
}

TEST_F(LiveControl, TheBoardComesOutFromUnderAFullPresenter) {
    record();
    presenter.full = true;
    controller->toggleBoard();
    EXPECT_THAT(taken(), ElementsAre("board.show", "presenter.exit"));
    board.isShown = true;
    presenter.full = true;
    controller->toggleBoard();
    EXPECT_THAT(taken(), ElementsAre("presenter.exit"));
}

TEST_F(LiveControl, WithoutSurfacesTheKeysDoNothing) {
    controller->attach({});
    record();
    controller->toggleDrawing();
    controller->toggleBoard();
    controller->toggleKit();
    controller->prompterKey();
    controller->toggleSpotlight();
    controller->toggleRegion();
    controller->zoomToArea();
    controller->setScene(Scene::me);
    controller->togglePresenter();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(controller->spotlightOn());
    EXPECT_EQ(controller->scene(), Scene::screen);
}

} // namespace
} // namespace velmo::test
