#include "World.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

class ZoomControl : public World {
protected:
    void zoomTo(double width) {
        regionPicker.answer = Rect{0.25, 0.5, width, 0.25};
        controller->zoomToArea();
        calls.clear();
    }
};

TEST_F(ZoomControl, SwitchingOnGoesToTheRememberedLevel) {
    prefs.zoomLevel = 3.0;
    record();
    controller->toggleZoom();
    EXPECT_THAT(taken(), ElementsAre("zoom.setLevel 3.00", "zoom.setFollow true", "zoom.setEnabled true"));
    EXPECT_EQ(controller->zoomLevelNow(), 3.0);
    controller->toggleZoom();
    EXPECT_EQ(calls.back(), "zoom.setEnabled false");
}

TEST_F(ZoomControl, WorksWhilePaused) {
    record();
    controller->togglePause();
    controller->toggleZoom();
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomControl, NeedsASession) {
    controller->toggleZoom();
    controller->zoomIn();
    controller->zoomOutStep();
    controller->resetZoom();
    controller->zoomToArea();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomControl, WalksUpInHalvesToSixAndRemembersUpToFour) {
    record();
    controller->zoomIn();
    EXPECT_EQ(controller->zoomLevelNow(), 2.0) << "the first press switches on";
    for (int press = 0; press < 6; ++press) {
        controller->zoomIn();
    }
    EXPECT_EQ(controller->zoomLevelNow(), 5.0);
    EXPECT_EQ(prefs.zoomLevel.value(), 4.0);
    EXPECT_EQ(calls.back(), "zoom.setLevel 5.00");
    for (int press = 0; press < 4; ++press) {
        controller->zoomIn();
    }
    EXPECT_EQ(controller->zoomLevelNow(), 6.0);
}

TEST_F(ZoomControl, AnInBetweenLevelLandsOnTheNextHalf) {
    record();
    zoomTo(1 / 5.8);
    controller->zoomIn();
    EXPECT_EQ(controller->zoomLevelNow(), 6.0);
    zoomTo(1 / 2.3);
    controller->zoomIn();
    EXPECT_EQ(controller->zoomLevelNow(), 2.5);
    zoomTo(1 / 2.3);
    controller->zoomOutStep();
    EXPECT_EQ(controller->zoomLevelNow(), 2.0);
    zoomTo(1 / 1.6);
    controller->zoomOutStep();
    EXPECT_EQ(controller->zoomLevelNow(), 1.5);
}

TEST_F(ZoomControl, BelowOneAndAHalfZoomGoesOff) {
    record();
    controller->toggleZoom();
    controller->zoomOutStep();
    EXPECT_EQ(controller->zoomLevelNow(), 1.5);
    EXPECT_TRUE(controller->zoomOn());
    controller->zoomOutStep();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_EQ(controller->zoomLevelNow(), 1.5) << "the remembered level";
}

TEST_F(ZoomControl, ResettingSwitchesOffWhatIsOn) {
    record();
    controller->resetZoom();
    EXPECT_THAT(taken(), IsEmpty());
    zoomTo(0.25);
    controller->togglePause();
    calls.clear();
    controller->resetZoom();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_EQ(count("zoom.setEnabled false"), 1);
    EXPECT_EQ(controller->zoomLevelNow(), 2.0) << "the remembered level";
}

TEST_F(ZoomControl, AnAreaIsHeldAtALevelOfItsWidth) {
    record();
    regionPicker.answer = Rect{0.25, 0.5, 0.5, 0.25};
    controller->zoomToArea();
    EXPECT_THAT(taken(), ElementsAre("regionPicker.pick Arrastra sobre lo que quieres acercar · Esc para cancelar",
                                     "zoom.focus 0.50,0.62 2.00"));
    EXPECT_TRUE(controller->zoomOn());
    EXPECT_FALSE(controller->zoomFollowing());
    EXPECT_TRUE(prefs.zoomFollow.value());
}

TEST_F(ZoomControl, TheLevelOfAnAreaHasItsBounds) {
    record();
    zoomTo(0.9);
    EXPECT_EQ(controller->zoomLevelNow(), 1.2);
    zoomTo(0.1);
    EXPECT_EQ(controller->zoomLevelNow(), 6.0);
    zoomTo(0);
    EXPECT_EQ(controller->zoomLevelNow(), 6.0);
}

TEST_F(ZoomControl, ACancelledAreaLeavesTheZoomAlone) {
    record();
    controller->zoomToArea();
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomControl, AnAreaTakesTheRegionAway) {
    prefs.recordRegion = Rect{0, 0, 0.5, 0.5};
    record();
    controller->toggleRegion();
    controller->zoomToArea();
    EXPECT_TRUE(controller->regionOn()) << "cancelled";
    calls.clear();
    regionPicker.answer = Rect{0, 0, 0.5, 0.5};
    controller->zoomToArea();
    EXPECT_FALSE(controller->regionOn());
    EXPECT_THAT(calls, ElementsAre(testing::_, "zoom.setRegion none", "zoom.focus 0.25,0.25 2.00"));
}

TEST_F(ZoomControl, FollowingIsRemembered) {
    controller->toggleZoomFollow();
    EXPECT_FALSE(controller->zoomFollowing());
    EXPECT_FALSE(prefs.zoomFollow.value());
    EXPECT_THAT(calls, IsEmpty());
    record();
    controller->toggleZoomFollow();
    EXPECT_THAT(calls, ElementsAre("zoom.setFollow true"));
}

TEST_F(ZoomControl, TheCompositorHearsOfTheMouseThirtyTimesASecond) {
    record();
    pointer.place = {960, 540};
    advance(1);
    EXPECT_NEAR(script.zoom->updates, 30, 1);
    EXPECT_EQ(script.zoom->lastMouse, (Point{960, 540}));
    controller->togglePause();
    advance(1);
    EXPECT_NEAR(script.zoom->updates, 60, 2);
}

TEST_F(ZoomControl, ABubbleThatGrewGetsAStreamOfItsSize) {
    prefs.mode = RecordMode::screenCam;
    addWindow(10, {0, 0, 220, 220});
    bubble.info = BubbleInfo{{0, 0, 200, 200}, true, 0.2, {}, {0, 0, 220.5, 220}, 0};
    record();
    advance(0.5);
    EXPECT_EQ(count("recorder.resizeOverlay 0 320.00"), 0);
    bubble.info->window.width = 320;
    advance(0.5);
    EXPECT_EQ(count("recorder.resizeOverlay 0 320.00"), 1);
    EXPECT_EQ(script.zoom->lastBubbles.size(), 1u);
}

TEST_F(ZoomControl, TheCompositorHearsOfTheVisibleBubblesInTheirOrder) {
    phone.info = BubbleInfo{{}, false, 0, {}, {}, 2};
    secondBubble.info = BubbleInfo{{}, false, 0, {}, {}, 1};
    bubble.info = BubbleInfo{{}, false, 0, {}, {}, 0};
    const auto heard = [this] {
        advance(0.125);
        std::vector<int> keys;
        for (const BubbleInfo& each : script.zoom->lastBubbles) {
            keys.push_back(each.key);
        }
        return keys;
    };
    record();
    EXPECT_THAT(heard(), ElementsAre(0, 1, 2));
    secondBubble.info.reset();
    EXPECT_THAT(heard(), ElementsAre(0, 2));
}

TEST_F(ZoomControl, ABubbleWithoutAStreamIsNotResized) {
    prefs.mode = RecordMode::screenCam;
    addWindow(10, {0, 0, 220, 220});
    script.overlayErrors[0] = Error{"x", 1, "y"};
    bubble.info = BubbleInfo{{}, true, 0.2, {}, {0, 0, 220, 320}, 0};
    record();
    advance(0.5);
    EXPECT_EQ(count("recorder.resizeOverlay 0 220.00"), 0);
    EXPECT_THAT(controller->overlaySizes(), IsEmpty());
}

TEST_F(ZoomControl, ABubbleThatGrewInHeightAloneGetsAStreamOfItsSizeOnce) {
    prefs.mode = RecordMode::screenCam;
    addWindow(10, {0, 0, 220, 220});
    bubble.info = BubbleInfo{{}, true, 0.2, {}, {0, 0, 220, 220.625}, 0};
    record();
    advance(0.5);
    EXPECT_EQ(count("recorder.resizeOverlay 0 220.00"), 1);
    EXPECT_EQ(controller->overlaySizes().at(0), (Size{220, 220.625}));
}

struct ZoomCommand {
    const char* name;
    void (RecorderController::*operation)();
};
void PrintTo(const ZoomCommand& command, std::ostream* out) {
    *out << command.name;
}
class ZoomCommands : public ZoomControl, public testing::WithParamInterface<ZoomCommand> {};

TEST_P(ZoomCommands, KeepAnAutomaticZoomOpen) {
    prefs.zoomAuto = true;
    prefs.zoomLevel = 3;
    regionPicker.answer = Rect{0, 0, 0.5, 0.5};
    record();
    if (GetParam().operation != &RecorderController::toggleZoom) {
        controller->toggleZoom();
    }
    advance(3);
    (controller.get()->*GetParam().operation)();
    ASSERT_TRUE(controller->zoomOn());
    advance(3.375);
    EXPECT_TRUE(controller->zoomOn());
    advance(0.25);
    EXPECT_FALSE(controller->zoomOn());
}

INSTANTIATE_TEST_SUITE_P(All, ZoomCommands,
                         testing::Values(ZoomCommand{"toggleZoom", &RecorderController::toggleZoom},
                                         ZoomCommand{"zoomIn", &RecorderController::zoomIn},
                                         ZoomCommand{"zoomOutStep", &RecorderController::zoomOutStep},
                                         ZoomCommand{"zoomToArea", &RecorderController::zoomToArea}));

TEST_F(ZoomControl, TheFirstStepInKeepsAnAutomaticZoomOpenToo) {
    prefs.zoomAuto = true;
    record();
    advance(3);
    controller->zoomIn();
    advance(3.375);
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomControl, AnAutomaticZoomFallsBackWhenTheMouseRests) {
    prefs.zoomAuto = true;
    record();
    controller->toggleZoom();
    advance(3);
    pointer.place = {3, 0};
    advance(3);
    EXPECT_TRUE(controller->zoomOn());
    pointer.place = {5, 0}; // 2 points precisely are not over 2
    advance(1);
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomControl, AManualZoomStays) {
    record();
    controller->toggleZoom();
    advance(10);
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomControl, ACameraAloneHasNoZoom) {
    prefs.mode = RecordMode::cam;
    addWindow(10, {0, 0, 100, 100});
    record();
    controller->toggleZoom();
    controller->zoomIn();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(controller->zoomOn());
}

} // namespace
} // namespace velmo::test
