#include "compositor/ZoomMotion.h"

#include <cmath>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::Optional;

constexpr double kFrame = 1.0 / 30;

ZoomControls zoomedTo(double level, Point mouse = {0.5, 0.5}) {
    ZoomControls controls;
    controls.enabled = true;
    controls.level = level;
    controls.mouse = mouse;
    return controls;
}

/// Steps at the capture rate until everything has come to rest.
void rest(ZoomMotion& motion, const ZoomControls& controls, int frames = 600) {
    double time = motion.lastStep().value_or(0);
    for (int i = 0; i < frames; ++i) {
        motion.step(controls, time += kFrame);
    }
}

Point origin(const ZoomMotion& motion) {
    const double half = 0.5 / std::max(motion.scale(), 1.0);
    return {motion.center().x - half, motion.center().y - half};
}

TEST(ZoomMotion, BeginsAtRestOnTheWholeScreen) {
    const ZoomMotion motion;
    EXPECT_EQ(motion.scale(), 1.0);
    EXPECT_EQ(motion.center(), (Point{0.5, 0.5}));
    EXPECT_EQ(motion.centerTarget(), (Point{0.5, 0.5}));
    EXPECT_EQ(motion.spot(), (Point{0.5, 0.5}));
    EXPECT_EQ(motion.spotAlpha(), 0.0);
    EXPECT_EQ(motion.colT(), 0.0);
    EXPECT_EQ(motion.zoomTarget(), 1.0);
    EXPECT_FALSE(motion.lastStep());
    EXPECT_FALSE(motion.isMoving({}));
}

TEST(ZoomMotion, TheFirstStepEasesNothingButRetargets) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2, {0.9, 0.2});
    controls.spotlight = true;
    controls.columnOn = true;
    motion.step(controls, 100);
    EXPECT_THAT(motion.lastStep(), Optional(100.0));
    EXPECT_EQ(motion.scale(), 1.0);
    EXPECT_EQ(motion.spotAlpha(), 0.0);
    EXPECT_EQ(motion.spot(), (Point{0.5, 0.5}));
    EXPECT_EQ(motion.colT(), 0.0);
    EXPECT_EQ(motion.zoomTarget(), 2.0);
    EXPECT_TRUE(motion.zoomFixed());
    EXPECT_EQ(motion.ringPos(), (Point{0.9, 0.2}));
}

TEST(ZoomMotion, ATimeThatRunsBackMovesNothingAndIsTheNewBeginning) {
    ZoomMotion motion;
    const ZoomControls controls = zoomedTo(2);
    motion.step(controls, 100);
    motion.step(controls, 100 + kFrame);
    const double scale = motion.scale();
    motion.step(controls, 99);
    EXPECT_EQ(motion.scale(), scale);
    EXPECT_THAT(motion.lastStep(), Optional(99.0));
    motion.step(controls, 99 + kFrame);
    EXPECT_NEAR(motion.scale(), scale + (2 - scale) * 6 * kFrame, 1e-12);
}

TEST(ZoomMotion, AGapOfFiveSecondsCountsAsATenthOfOne) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(3, {0.7, 0.6});
    controls.spotlight = true;
    controls.columnOn = true;
    motion.step(controls, 1);
    motion.step(controls, 6);
    EXPECT_DOUBLE_EQ(motion.scale(), 1 + (3 - 1) * 0.6);
    EXPECT_DOUBLE_EQ(motion.colT(), 0.55);
    EXPECT_DOUBLE_EQ(motion.spotAlpha(), 0.8);
    EXPECT_THAT(motion.spot().x, DoubleEq(0.7)); // the spot alone goes the whole way at once
    EXPECT_THAT(motion.spot().y, DoubleEq(0.6));
}

TEST(ZoomMotion, TheSettledCentreGoesHalfTheWayInTheLongestStep) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2);
    controls.follow = false;
    rest(motion, controls);
    controls.anchor = {0.6, 0.4};
    motion.step(controls, *motion.lastStep() + 5);
    EXPECT_NEAR(motion.center().x, 0.55, 1e-9);
    EXPECT_NEAR(motion.center().y, 0.45, 1e-9);
}

TEST(ZoomMotion, ScaleSnapsToItsTargetWithinTwoThousandths) {
    ZoomMotion motion;
    motion.step(zoomedTo(2), 0);
    motion.setScale(1.9951); // a step of 0.1 s leaves 0.00196
    motion.step(zoomedTo(2), 0.1);
    EXPECT_EQ(motion.scale(), 2.0);
    motion.setScale(1.9949); // and here 0.00204
    motion.step(zoomedTo(2), 0.2);
    EXPECT_NE(motion.scale(), 2.0);
}

TEST(ZoomMotion, TheColumnSnapsAtBothEndsAndTheSpotlightOnlyAtTheBottom) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.columnOn = true;
    controls.spotlight = true;
    motion.step(controls, 0);
    double time = 0;
    for (int i = 0; i < 8; ++i) { // 0.45^8 is 0.0017
        EXPECT_LT(motion.colT(), 1.0);
        motion.step(controls, time += 0.1);
    }
    EXPECT_EQ(motion.colT(), 1.0);
    EXPECT_LT(motion.spotAlpha(), 1.0);
    EXPECT_GT(motion.spotAlpha(), 0.999);
    controls = {};
    for (int i = 0; i < 4; ++i) {
        motion.step(controls, time += 0.1);
        EXPECT_GT(motion.colT(), 0.0);
    }
    EXPECT_EQ(motion.spotAlpha(), 0.0); // 0.2^4 is 0.0016
    for (int i = 0; i < 4; ++i) {
        motion.step(controls, time += 0.1);
    }
    EXPECT_EQ(motion.colT(), 0.0);
}

TEST(ZoomMotion, ARegionGivesItsOwnFactorUpToTwenty) {
    ZoomControls controls = zoomedTo(3);
    EXPECT_EQ(controls.targetScale(), 3.0);
    controls.region = Rect{0.2, 0.2, 0.25, 0.25};
    EXPECT_EQ(controls.targetScale(), 4.0);
    controls.region = Rect{0.2, 0.2, 0.01, 0.5};
    EXPECT_DOUBLE_EQ(controls.targetScale(), 20.0);
    controls.enabled = false;
    EXPECT_DOUBLE_EQ(controls.targetScale(), 20.0);
    controls.region.reset();
    EXPECT_EQ(controls.targetScale(), 1.0);
}

TEST(ZoomMotion, TheScreenUnderThePointerStaysInPlaceWhileTheZoomRuns) {
    ZoomMotion motion;
    const ZoomControls controls = zoomedTo(2.5, {0.8, 0.3});
    motion.step(controls, 0);
    double time = 0;
    int frames = 0;
    do {
        motion.step(controls, time += kFrame);
        if (motion.scale() == 2.5) {
            break;
        }
        EXPECT_NEAR((0.8 - origin(motion).x) * motion.scale(), 0.8, 1e-9);
        EXPECT_NEAR((0.3 - origin(motion).y) * motion.scale(), 0.3, 1e-9);
        EXPECT_EQ(motion.centerTarget(), motion.center());
    } while (++frames < 300);
    EXPECT_GT(frames, 10);
    EXPECT_LT(frames, 100);
}

TEST(ZoomMotion, AHeldZoomMovesStraightTowardsItsAnchor) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(4, {0.1, 0.1});
    controls.follow = false;
    controls.anchor = {0.7, 0.6};
    motion.step(controls, 0);
    // The new window begins at anchor - 1/8: the fixed point solves the two windows.
    ASSERT_TRUE(motion.zoomFixed());
    EXPECT_NEAR(motion.zoomFixed()->x, (0.7 - 0.125) / 0.75, 1e-12);
    EXPECT_NEAR(motion.zoomFixed()->y, (0.6 - 0.125) / 0.75, 1e-12);
    rest(motion, controls);
    EXPECT_NEAR(motion.center().x, 0.7, 1e-6);
    EXPECT_NEAR(motion.center().y, 0.6, 1e-6);
}

TEST(ZoomMotion, AnAnchorAtTheEdgeIsHeldOnTheScreen) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2);
    controls.follow = false;
    controls.anchor = {0.99, -3};
    rest(motion, controls);
    EXPECT_NEAR(motion.center().x, 0.75, 1e-12);
    EXPECT_NEAR(motion.center().y, 0.25, 1e-12);
}

TEST(ZoomMotion, ThePointerWandersInTheDeadZoneWithoutMovingTheWindow) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2);
    rest(motion, controls);
    const Point center = motion.center();
    const double margin = 0.55 * 0.25;
    controls.mouse = {center.x + margin * 0.999, center.y - margin * 0.999};
    rest(motion, controls);
    EXPECT_NEAR(motion.center().x, center.x, 1e-12);
    EXPECT_NEAR(motion.center().y, center.y, 1e-12);
}

TEST(ZoomMotion, ThePointerDragsTheWindowByTheEdgeOfTheDeadZone) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2);
    rest(motion, controls);
    const double margin = 0.55 * 0.25;
    controls.mouse = {0.7, 0.3};
    rest(motion, controls);
    EXPECT_NEAR(motion.center().x, 0.7 - margin, 1e-9);
    EXPECT_NEAR(motion.center().y, 0.3 + margin, 1e-9);
}

TEST(ZoomMotion, BelowAFactorOfOneHundredthOverOneTheCentreGoesStraightForThePointer) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.mouse = {0.51, 0.49}; // well inside any dead zone
    motion.setScale(1.0);
    motion.step(controls, 0);
    motion.step(controls, kFrame);
    EXPECT_EQ(motion.centerTarget(), controls.mouse);
    EXPECT_EQ(motion.center(), (Point{0.5, 0.5})); // the clamp holds the middle
}

TEST(ZoomMotion, WithZoomAndFollowingOffTheTargetIsTheAnchorAndTheClampHoldsTheMiddle) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.follow = false;
    controls.anchor = {0.8, 0.1};
    controls.mouse = {0.3, 0.3};
    rest(motion, controls);
    EXPECT_EQ(motion.centerTarget(), controls.anchor);
    EXPECT_EQ(motion.center(), (Point{0.5, 0.5}));
}

TEST(ZoomMotion, ZoomingOutOpensAboutOnePointAndLandsExactlyOnTheWholeScreen) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(4, {0.7, 0.35});
    rest(motion, controls);
    controls.enabled = false;
    motion.step(controls, *motion.lastStep() + kFrame);
    ASSERT_TRUE(motion.zoomFixed());
    const Point fixed = *motion.zoomFixed();
    const ZoomMotion::Window old = *motion.zoomFrom();
    EXPECT_NEAR(fixed.x, old.o.x / (1 - old.w), 1e-12);
    const double inFrame = (fixed.x - old.o.x) / old.w;
    while (motion.scale() > 1.002) {
        EXPECT_NEAR((fixed.x - origin(motion).x) * motion.scale(), inFrame, 1e-9);
        EXPECT_GE(origin(motion).x, -1e-12);
        EXPECT_LE(origin(motion).x + 1 / motion.scale(), 1 + 1e-12);
        motion.step(controls, *motion.lastStep() + kFrame);
    }
    rest(motion, controls, 2);
    EXPECT_EQ(motion.scale(), 1.0);
    EXPECT_EQ(motion.center(), (Point{0.5, 0.5}));
    EXPECT_FALSE(motion.zoomFixed());
}

TEST(ZoomMotion, ANearlyFinishedZoomOutAimsAtThePointer) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2, {0.7, 0.35});
    rest(motion, controls);
    controls.enabled = false;
    do {
        motion.step(controls, *motion.lastStep() + kFrame);
    } while (motion.scale() >= 1.01);
    ASSERT_NE(motion.scale(), 1.0);
    EXPECT_EQ(motion.centerTarget(), controls.mouse);
}

TEST(ZoomMotion, ANewTargetDuringAZoomStartsFromWhereTheWindowIs) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(4, {0.2, 0.2});
    for (int i = 0; i < 5; ++i) {
        motion.step(controls, i * kFrame);
    }
    const double width = 1 / motion.scale();
    const Point corner = origin(motion);
    controls.level = 2.2;
    motion.step(controls, 4 * kFrame); // no time passes: the retarget alone
    ASSERT_TRUE(motion.zoomFrom());
    EXPECT_DOUBLE_EQ(motion.zoomFrom()->w, width);
    EXPECT_DOUBLE_EQ(motion.zoomFrom()->o.x, corner.x);
    EXPECT_EQ(motion.zoomTarget(), 2.2);
    EXPECT_NEAR(origin(motion).x, corner.x, 1e-12); // and no jump
    EXPECT_NEAR(origin(motion).y, corner.y, 1e-12);
}

TEST(ZoomMotion, AChangeOfLevelTooSmallToMatterSettlesAtOnce) {
    ZoomMotion motion;
    rest(motion, zoomedTo(2));
    motion.step(zoomedTo(2.000001), *motion.lastStep() + kFrame);
    EXPECT_EQ(motion.zoomTarget(), 2.000001);
    EXPECT_FALSE(motion.zoomFixed());
    EXPECT_EQ(motion.scale(), 2.000001);
}

TEST(ZoomMotion, AZoomOutFromBelowTheWholeScreenHasNoFixedPoint) {
    ZoomMotion motion;
    motion.step(zoomedTo(2), 0);
    motion.setScale(0.9);
    motion.step({}, kFrame);
    EXPECT_NE(motion.scale(), 1.0);
    EXPECT_FALSE(motion.zoomFixed());
    EXPECT_EQ(motion.center(), (Point{0.5, 0.5}));
}

TEST(ZoomMotion, APointerOutsideTheWindowCountsAsOnItsEdgeForANewTarget) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2, {0, 0.5});
    rest(motion, controls);
    ASSERT_NEAR(motion.center().x, 0.25, 1e-9); // the window is from 0 to 0.5
    controls.mouse.x = 0.9;
    controls.level = 4;
    motion.step(controls, *motion.lastStep());
    // Held at 0.5, the right edge: the new window is from 0.25 to 0.5, and its right edge stays put.
    ASSERT_TRUE(motion.zoomFixed());
    EXPECT_NEAR(motion.zoomFixed()->x, 0.5, 1e-9);
}

TEST(ZoomMotion, WithZoomOffAScaleSetFromOutsideKeepsTheDeadZoneAboutTheAnchor) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.follow = false;
    controls.anchor = {0.55, 0.5}; // within the dead zone at a factor of 2
    motion.setScale(2);
    motion.step(controls, 0);
    EXPECT_EQ(motion.centerTarget(), (Point{0.5, 0.5}));
    controls.anchor.x = 0.7; // and beyond it
    motion.step(controls, 0);
    EXPECT_NEAR(motion.centerTarget().x, 0.7 - 0.55 * 0.25, 1e-12);
}

TEST(ZoomMotion, APointerOnAnotherDisplayKeepsTheWindowOnThisOne) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2, {2.5, -0.4});
    rest(motion, controls);
    EXPECT_NEAR(motion.center().x, 0.75, 1e-12);
    EXPECT_NEAR(motion.center().y, 0.25, 1e-12);
    EXPECT_EQ(motion.ringPos(), controls.mouse);
}

TEST(ZoomMotion, ARegionIsShownInItsMiddleWhateverThePointerDoes) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2, {0.9, 0.9});
    controls.region = Rect{0.1, 0.3, 0.4, 0.2};
    rest(motion, controls);
    EXPECT_EQ(motion.scale(), 2.5);
    EXPECT_NEAR(motion.center().x, 0.3, 1e-6);
    EXPECT_NEAR(motion.center().y, 0.4, 1e-6);
    controls.region = Rect{0.2, 0.3, 0.4, 0.2}; // the same factor: it pans
    motion.step(controls, *motion.lastStep() + 0.1);
    EXPECT_NEAR(motion.center().x, 0.35, 1e-6);
}

TEST(ZoomMotion, MotionCountsUntilEachQuantityIsNearEnough) {
    ZoomControls controls = zoomedTo(2);
    ZoomMotion motion;
    rest(motion, controls);
    EXPECT_FALSE(motion.isMoving(controls));
    motion.setScale(2 - 0.0041);
    EXPECT_TRUE(motion.isMoving(controls));
    motion.setScale(2 - 0.0039);
    EXPECT_FALSE(motion.isMoving(controls));
}

TEST(ZoomMotion, APanCountsAsMotionBeyondItsThreshold) {
    ZoomMotion motion;
    ZoomControls controls = zoomedTo(2);
    controls.follow = false;
    rest(motion, controls);
    controls.anchor.x = 0.5 + 0.0031; // half of it is left after 0.1 s
    motion.step(controls, *motion.lastStep() + 0.1);
    EXPECT_TRUE(motion.isMoving(controls));
    motion.step(controls, *motion.lastStep() + 0.1);
    EXPECT_FALSE(motion.isMoving(controls));
}

TEST(ZoomMotion, AFadingSpotlightCountsUntilAHundredthIsLeftAndLongerWhileItTravels) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.spotlight = true;
    rest(motion, controls);
    controls.spotlight = false;
    int faint = 0;
    for (int i = 0; i < 100 && motion.spotAlpha() > 0; ++i) {
        motion.step(controls, *motion.lastStep() + 0.01);
        EXPECT_EQ(motion.isMoving(controls), motion.spotAlpha() > 0.01);
        ZoomControls moved = controls;
        moved.mouse = {0.6, 0.6};
        EXPECT_EQ(motion.isMoving(moved), motion.spotAlpha() > 0);
        faint += motion.spotAlpha() > 0 && motion.spotAlpha() < 0.01 ? 1 : 0;
    }
    EXPECT_GT(faint, 5);
    EXPECT_EQ(motion.spotAlpha(), 0.0);
}

TEST(ZoomMotion, TheSpotlightCountsAsMotionWhileItTravelsOrFades) {
    ZoomMotion motion;
    ZoomControls controls;
    controls.spotlight = true;
    EXPECT_TRUE(motion.isMoving(controls)); // it has yet to appear
    rest(motion, controls);
    EXPECT_FALSE(motion.isMoving(controls));
    controls.mouse.x += 0.00081;
    EXPECT_TRUE(motion.isMoving(controls));
    controls.mouse.x -= 0.00002;
    EXPECT_FALSE(motion.isMoving(controls));
    controls.spotlight = false;
    EXPECT_TRUE(motion.isMoving(controls));
    rest(motion, controls);
    controls.mouse = {0.4, 0.4}; // nobody sees the spot any more
    EXPECT_FALSE(motion.isMoving(controls));
}

} // namespace
} // namespace velmo
