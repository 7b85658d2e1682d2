#include "World.h"
#include "session/ZoomGesture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

InputGesture magnify(double magnification, std::uint32_t modifiers) {
    return {InputGesture::Type::magnify, modifiers, magnification, 0, false};
}

InputGesture scrolled(double delta, bool precise, std::uint32_t modifiers = kOptionModifier) {
    return {InputGesture::Type::scrollWheel, modifiers, 0, delta, precise};
}

TEST(ZoomFactor, APinchCountsAlmostOneAndAHalfTimes) {
    EXPECT_DOUBLE_EQ(*zoomFactor(magnify(0.05, kOptionModifier)), 1.07);
    EXPECT_DOUBLE_EQ(*zoomFactor(magnify(-0.1, kOptionModifier)), 0.86);
}

TEST(ZoomFactor, AClickOfTheWheelCountsAsTenFinePoints) {
    EXPECT_DOUBLE_EQ(*zoomFactor(scrolled(1, false)), 1.06);
    EXPECT_DOUBLE_EQ(*zoomFactor(scrolled(10, true)), 1.06);
    EXPECT_DOUBLE_EQ(*zoomFactor(scrolled(-2, false)), 0.88);
}

TEST(ZoomFactor, AScrollThatDoesNotMoveUpOrDownIsNone) {
    EXPECT_EQ(zoomFactor(scrolled(0, false)), std::nullopt);
    EXPECT_EQ(zoomFactor(scrolled(0, true)), std::nullopt);
}

TEST(ZoomFactor, WithoutTheOptionKeyThereIsNone) {
    EXPECT_EQ(zoomFactor(magnify(0.5, 0)), std::nullopt);
    EXPECT_EQ(zoomFactor(scrolled(3, false, 0)), std::nullopt);
    EXPECT_EQ(zoomFactor(scrolled(3, false, ~kOptionModifier)), std::nullopt);
}

class ZoomMonitors : public World {
protected:
    /// A gesture that multiplies by `factor`.
    void gesture(double factor) {
        monitors.pinch((factor - 1) / 1.4);
        settle();
    }
    void click() {
        monitors.pressLeft();
        settle();
    }
    void zoomTo(double level) {
        regionPicker.answer = Rect{0, 0, 1 / level, 1 / level};
        controller->zoomToArea();
        ASSERT_NEAR(controller->zoomLevelNow(), level, 1e-9);
        calls.clear();
    }
};

TEST_F(ZoomMonitors, ARecordingOfTheScreenInstallsThemAndItsEndRemovesThem) {
    record();
    EXPECT_EQ(monitors.installed(), 3U);
    controller->stop();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(monitors.installed(), 0U);
}

TEST_F(ZoomMonitors, ACameraAloneInstallsNone) {
    prefs.mode = RecordMode::cam;
    addWindow(10, {0, 0, 100, 100});
    record();
    EXPECT_EQ(monitors.installed(), 0U);
}

TEST_F(ZoomMonitors, WhereTheyAreRefusedTheRecordingWorks) {
    monitors.areRefused = true;
    record();
    controller->toggleZoom();
    EXPECT_TRUE(controller->zoomOn());
    controller->stop();
    settle();
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(ZoomMonitors, WithoutTheServiceTheRecordingWorks) {
    SessionSurfaces without = surfaces();
    without.inputMonitors = nullptr;
    controller->attach(without);
    record();
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(ZoomMonitors, TheTimeOfAClickReachesTheSoundAtOnce) {
    record();
    monitors.moveButton(1000.5);
    EXPECT_THAT(taken(), ElementsAre("recorder.noteClick 1000.50")) << "without a turn of the event loop";
}

TEST_F(ZoomMonitors, ClickTimesAreNotedWhilePaused) {
    record();
    controller->togglePause();
    calls.clear();
    monitors.moveButton(1001);
    EXPECT_THAT(calls, ElementsAre("recorder.noteClick 1001.00"));
}

TEST_F(ZoomMonitors, AClickZoomsInWhereThatIsWantedAndFallsBackWhenTheMouseRests) {
    prefs.zoomAuto = true;
    record();
    click();
    EXPECT_TRUE(controller->zoomOn());
    EXPECT_EQ(controller->zoomLevelNow(), prefs.zoomLevel.value());
    advance(3.4);
    EXPECT_TRUE(controller->zoomOn());
    advance(0.2);
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AClickKeepsAnAutomaticZoomOpen) {
    prefs.zoomAuto = true;
    record();
    click();
    advance(3);
    calls.clear();
    click();
    EXPECT_THAT(calls, IsEmpty()) << "it is on already";
    advance(3);
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AClickDoesNothingWhereAutomaticZoomIsOff) {
    record();
    click();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ZoomMonitors, APressOnASurfaceOfTheProgramIsNoClickInTheClass) {
    prefs.zoomAuto = true;
    prefs.recordRegion = Rect{0.1, 0.1, 0.5, 0.5};
    record();
    pointer.window = 99; // the bar
    click();
    EXPECT_FALSE(controller->zoomOn());
    controller->toggleRegion();
    click();
    EXPECT_TRUE(controller->regionOn());
    calls.clear();
    for (const WindowId shown : {13u, 14u}) { // the ink, the board
        controller->resetZoom();
        pointer.window = shown;
        click();
        EXPECT_TRUE(controller->zoomOn()) << shown;
    }
}

TEST_F(ZoomMonitors, APressOnASurfaceDoesNotKeepAnAutomaticZoomOpen) {
    prefs.zoomAuto = true;
    record();
    click();
    advance(3);
    pointer.window = 99;
    click();
    advance(0.6);
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AClickWhilePausedDoesNothing) {
    prefs.zoomAuto = true;
    record();
    controller->togglePause();
    calls.clear();
    click();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ZoomMonitors, AClickOnItsWayWhenTheSessionEndsDoesNothing) {
    prefs.zoomAuto = true;
    record();
    controller->stop();
    monitors.pressLeft();
    settle();
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AGestureOnItsWayWhenTheControllerGoesIsDropped) {
    record();
    monitors.pinch(0.5);
    controller.reset();
    settle();
    EXPECT_EQ(monitors.installed(), 0U);
}

TEST_F(ZoomMonitors, ASmallGestureDoesNotSwitchOn) {
    record();
    gesture(1.03);
    EXPECT_FALSE(controller->zoomOn());
    monitors.scroll(4, true);
    settle();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ZoomMonitors, AGreaterGestureSwitchesOnAtItsOwnLevel) {
    record();
    gesture(1.05);
    EXPECT_THAT(taken(), ElementsAre("zoom.setFollow true", "zoom.setLevel 1.05", "zoom.setEnabled true"));
    EXPECT_TRUE(controller->zoomOn());
    EXPECT_NEAR(controller->zoomLevelNow(), 1.05, 1e-9);
}

TEST_F(ZoomMonitors, AClickOfTheWheelSwitchesOn) {
    record();
    monitors.scroll(1, false);
    settle();
    EXPECT_NEAR(controller->zoomLevelNow(), 1.06, 1e-9);
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AGestureMovesALevelThatIsShownAndIsNotRemembered) {
    record();
    zoomTo(2.0);
    gesture(1.5);
    EXPECT_NEAR(controller->zoomLevelNow(), 3.0, 1e-9);
    EXPECT_EQ(calls.back(), "zoom.setLevel 3.00");
    EXPECT_EQ(prefs.zoomLevel.value(), 2.0);
    gesture(5);
    EXPECT_EQ(controller->zoomLevelNow(), 6.0);
    controller->toggleZoom();
    controller->toggleZoom();
    EXPECT_EQ(controller->zoomLevelNow(), 2.0) << "the remembered level";
}

TEST_F(ZoomMonitors, AGestureDownToTheWholeScreenSwitchesOff) {
    prefs.zoomLevel = 3.0;
    record();
    zoomTo(1.2);
    gesture(0.8);
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_EQ(controller->zoomLevelNow(), 3.0) << "the remembered level";
}

TEST_F(ZoomMonitors, AtTheBorderNothingSwitchesOn) {
    record();
    gesture(1.04);
    EXPECT_FALSE(controller->zoomOn());
}

TEST_F(ZoomMonitors, AtTheBorderWhatIsOnStaysOn) {
    record();
    monitors.scroll(100, true); // 1.6
    settle();
    ASSERT_TRUE(controller->zoomOn());
    gesture(0.65);
    EXPECT_TRUE(controller->zoomOn());
    EXPECT_EQ(controller->zoomLevelNow(), 1.04) << "to the last bit";
}

TEST_F(ZoomMonitors, AGestureTakesTheRegionAway) {
    record();
    prefs.recordRegion = Rect{0.1, 0.1, 0.5, 0.5};
    controller->toggleRegion();
    ASSERT_TRUE(controller->regionOn());
    gesture(1.5);
    EXPECT_FALSE(controller->regionOn());
    EXPECT_TRUE(controller->zoomOn());
}

TEST_F(ZoomMonitors, ASmallGestureLeavesTheRegion) {
    record();
    prefs.recordRegion = Rect{0.1, 0.1, 0.5, 0.5};
    controller->toggleRegion();
    gesture(1.02);
    EXPECT_TRUE(controller->regionOn());
}

TEST_F(ZoomMonitors, GesturesDoNothingWhilePaused) {
    record();
    controller->togglePause();
    calls.clear();
    gesture(2);
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ZoomMonitors, WithoutTheOptionKeyAGestureDoesNothing) {
    record();
    monitors.make(magnify(1, 0));
    monitors.make(scrolled(5, false, 0));
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ZoomMonitors, AGestureKeepsAnAutomaticZoomOpen) {
    prefs.zoomAuto = true;
    record();
    click();
    advance(3);
    gesture(1.2);
    advance(3);
    EXPECT_TRUE(controller->zoomOn());
    advance(1);
    EXPECT_FALSE(controller->zoomOn());
}

} // namespace
} // namespace velmo::test
