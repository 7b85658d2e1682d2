#include "compositor/ZoomProcessor.h"
#include "support/ManualClock.h"
#include "support/Pictures.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

namespace velmo {
namespace {

using ::testing::DoubleEq;
using ::testing::Optional;

constexpr double kFrame = 1.0 / 30;

class ZoomProcessorTest : public ::testing::Test {
protected:
    void moveMouse(double x, double y) { zoom_.update({x, y}, {}); }
    void stepFrames(int frames) {
        for (int i = 0; i < frames; ++i) {
            zoom_.stepTo(time_ += kFrame);
        }
    }
    FrameRef picture() const { return test::makePicture(PixelFormat::bgra, 4, 4, test::Content::flat); }

    test::ManualClock clock_{500};
    ZoomProcessor zoom_{clock_};
    double time_ = 500;
};

TEST_F(ZoomProcessorTest, BeginsWithNothingAskedFor) {
    const ZoomControls controls = zoom_.controls();
    EXPECT_FALSE(controls.enabled);
    EXPECT_EQ(controls.level, 2.0);
    EXPECT_EQ(controls.mouse, (Point{0.5, 0.5}));
    EXPECT_TRUE(controls.follow);
    EXPECT_EQ(controls.anchor, (Point{0.5, 0.5}));
    EXPECT_FALSE(controls.region);
    EXPECT_FALSE(zoom_.isPaused());
    EXPECT_FALSE(zoom_.isEnabled());
    EXPECT_EQ(zoom_.scale(), 1.0);
}

TEST_F(ZoomProcessorTest, AFreshOneNeitherProcessesNorAnimates) {
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
    stepFrames(3);
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
}

TEST_F(ZoomProcessorTest, TheLevelIsClampedByBothOfItsSetters) {
    zoom_.setLevel(0.5);
    EXPECT_EQ(zoom_.controls().level, 1.05);
    zoom_.setLevel(9);
    EXPECT_EQ(zoom_.controls().level, 6.0);
    zoom_.setLevel(3.3);
    EXPECT_EQ(zoom_.controls().level, 3.3);
    zoom_.focus({0.1, 0.2}, 0.5);
    EXPECT_EQ(zoom_.controls().level, 1.05);
    zoom_.focus({0.1, 0.2}, 9);
    EXPECT_EQ(zoom_.controls().level, 6.0);
}

TEST_F(ZoomProcessorTest, ThePointerIsStoredAcrossTheCapturedScreenWithoutClamping) {
    zoom_.configure({100, -200, 1600, 800});
    moveMouse(500, 400);
    EXPECT_EQ(zoom_.controls().mouse, (Point{0.25, 0.75}));
    moveMouse(-300, 1400);
    EXPECT_EQ(zoom_.controls().mouse, (Point{-0.25, 2.0}));
}

TEST_F(ZoomProcessorTest, AnEmptyScreenFrameLeavesThePointerWhereItWas) {
    moveMouse(0.25, 0.75);
    zoom_.configure({0, 0, 0, 800});
    moveMouse(500, 400);
    EXPECT_EQ(zoom_.controls().mouse, (Point{0.25, 0.75}));
}

TEST_F(ZoomProcessorTest, OnlySwitchingOnTakesThePointerAsAnchor) {
    moveMouse(0.2, 0.3);
    zoom_.setEnabled(false);
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.5, 0.5}));
    zoom_.setEnabled(true);
    EXPECT_TRUE(zoom_.isEnabled());
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.2, 0.3}));
    moveMouse(0.9, 0.9);
    zoom_.setEnabled(true);
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.2, 0.3}));
}

TEST_F(ZoomProcessorTest, OnlyLettingGoOfThePointerTakesItAsAnchor) {
    moveMouse(0.2, 0.3);
    zoom_.setFollow(true);
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.5, 0.5}));
    zoom_.setFollow(false);
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.2, 0.3}));
    moveMouse(0.9, 0.9);
    zoom_.setFollow(false);
    EXPECT_EQ(zoom_.controls().anchor, (Point{0.2, 0.3}));
}

TEST_F(ZoomProcessorTest, FocusHoldsItsPointAndLeavesTheRegionAlone) {
    const Rect region{0.1, 0.1, 0.5, 0.5};
    zoom_.setRegion(region);
    moveMouse(0.9, 0.9);
    zoom_.focus({0.3, 0.4}, 3);
    const ZoomControls controls = zoom_.controls();
    EXPECT_EQ(controls.anchor, (Point{0.3, 0.4}));
    EXPECT_FALSE(controls.follow);
    EXPECT_TRUE(controls.enabled);
    EXPECT_EQ(controls.level, 3.0);
    EXPECT_THAT(controls.region, Optional(region));
}

TEST_F(ZoomProcessorTest, NoSetterMovesAnything) {
    zoom_.focus({0.9, 0.9}, 4);
    zoom_.setSpotlight(true);
    zoom_.setColumn(true, true);
    zoom_.setRegion(Rect{0, 0, 0.01, 0.01});
    moveMouse(0.1, 0.1);
    EXPECT_EQ(zoom_.scale(), 1.0);
    EXPECT_EQ(zoom_.motion().center(), (Point{0.5, 0.5}));
    EXPECT_EQ(zoom_.motion().spotAlpha(), 0.0);
    EXPECT_EQ(zoom_.motion().colT(), 0.0);
    EXPECT_EQ(zoom_.motion().zoomTarget(), 1.0);
    zoom_.stepTo(0);
    EXPECT_THAT(zoom_.motion().zoomTarget(), DoubleEq(20.0));
}

TEST_F(ZoomProcessorTest, RemembersThatTheRecordingIsPaused) {
    zoom_.setPaused(true);
    EXPECT_TRUE(zoom_.isPaused());
    zoom_.setPaused(false);
    EXPECT_FALSE(zoom_.isPaused());
}

TEST_F(ZoomProcessorTest, EachWishOpensTheGateBeforeAnythingHasMoved) {
    zoom_.setEnabled(true);
    EXPECT_TRUE(zoom_.needsProcessing());
    zoom_.setEnabled(false);
    zoom_.setRegion(Rect{0, 0, 1, 1});
    EXPECT_TRUE(zoom_.needsProcessing());
    zoom_.setRegion(std::nullopt);
    zoom_.setSpotlight(true);
    EXPECT_TRUE(zoom_.needsProcessing());
    zoom_.setSpotlight(false);
    zoom_.setColumn(true, false);
    EXPECT_TRUE(zoom_.needsProcessing());
    EXPECT_TRUE(zoom_.isAnimating()); // the camera in it keeps moving
    zoom_.setColumn(false, false);
    EXPECT_FALSE(zoom_.needsProcessing());
}

TEST_F(ZoomProcessorTest, TheGateStaysOpenUntilTheResidueIsInvisible) {
    zoom_.setScale(1.0021);
    EXPECT_TRUE(zoom_.needsProcessing());
    zoom_.setScale(1.002);
    EXPECT_FALSE(zoom_.needsProcessing());
}

TEST_F(ZoomProcessorTest, TheGateStaysOpenWhileTheSpotlightAndTheColumnLeave) {
    zoom_.setSpotlight(true);
    zoom_.setColumn(true, true);
    stepFrames(300);
    zoom_.setSpotlight(false);
    zoom_.setColumn(false, true);
    EXPECT_TRUE(zoom_.needsProcessing());
    while (zoom_.motion().spotAlpha() > 0 || zoom_.motion().colT() > 0) {
        EXPECT_TRUE(zoom_.needsProcessing());
        EXPECT_EQ(zoom_.isAnimating(), zoom_.motion().colT() > 0.001 || zoom_.motion().spotAlpha() > 0.01);
        stepFrames(1);
    }
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
}

TEST_F(ZoomProcessorTest, APointerBubbleHoldsBothQuestionsOpenForItsLife) {
    clock_.set(0.0);
    zoom_.showBubble(0, {});
    EXPECT_TRUE(zoom_.needsProcessing());
    EXPECT_TRUE(zoom_.isAnimating());
    clock_.set(3.399);
    EXPECT_TRUE(zoom_.needsProcessing());
    EXPECT_TRUE(zoom_.isAnimating());
    clock_.set(3.4);
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
    zoom_.showBubble(3, {});
    EXPECT_TRUE(zoom_.needsProcessing());
    clock_.set(2.9); // a clock that ran back
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
}

TEST_F(ZoomProcessorTest, AnOverlayCountsOnlyWhileItsBubbleIsListed) {
    zoom_.setOverlay(2, picture());
    EXPECT_FALSE(zoom_.needsProcessing());
    BubbleInfo bubble;
    bubble.key = 0;
    zoom_.update({0.5, 0.5}, {bubble});
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
    BubbleInfo phone;
    phone.key = 2;
    zoom_.update({0.5, 0.5}, {bubble, phone});
    EXPECT_TRUE(zoom_.needsProcessing());
    EXPECT_TRUE(zoom_.isAnimating());
    zoom_.update({0.5, 0.5}, {});
    EXPECT_FALSE(zoom_.needsProcessing());
}

TEST_F(ZoomProcessorTest, AnimationLetsGoBeforeProcessingWhileAZoomOutFinishes) {
    zoom_.setEnabled(true);
    stepFrames(200);
    EXPECT_FALSE(zoom_.isAnimating()); // at rest, though zoomed
    EXPECT_TRUE(zoom_.needsProcessing());
    zoom_.setEnabled(false);
    int framesOfProcessingAlone = 0;
    for (int i = 0; i < 200 && zoom_.needsProcessing(); ++i) {
        stepFrames(1);
        framesOfProcessingAlone += zoom_.needsProcessing() && !zoom_.isAnimating() ? 1 : 0;
        EXPECT_FALSE(zoom_.isAnimating() && !zoom_.needsProcessing());
    }
    EXPECT_GT(framesOfProcessingAlone, 0);
    EXPECT_FALSE(zoom_.needsProcessing());
    EXPECT_FALSE(zoom_.isAnimating());
}

TEST_F(ZoomProcessorTest, AtRestAPointerAwayFromTheMiddleCountsAsMotion) {
    moveMouse(0.5 + 0.0014, 0.5);
    stepFrames(1);
    EXPECT_FALSE(zoom_.isAnimating());
    moveMouse(0.5 + 0.0016, 0.5); // the target of the centre is the pointer, and the clamp keeps the centre off it
    stepFrames(1);
    EXPECT_TRUE(zoom_.isAnimating());
    EXPECT_FALSE(zoom_.needsProcessing());
}

TEST_F(ZoomProcessorTest, ASetterThatReplacesAFrameReleasesTheOldOne) {
    const auto pool = PixelBufferPool::create(PixelFormat::bgra, 4, 4, 1);
    FrameRef frame = pool->take();
    const PixelBuffer* address = frame.get();
    zoom_.setOverlay(0, std::move(frame));
    zoom_.setOverlay(0, picture());
    frame = pool->take();
    EXPECT_EQ(frame.get(), address);
    zoom_.setCameraFrame(std::move(frame));
    zoom_.setCameraFrame(nullptr);
    EXPECT_EQ(pool->take().get(), address);
}

TEST_F(ZoomProcessorTest, SettersMayRunWhileTheVideoQueueWorks) {
    const FrameRef source = test::makePicture(PixelFormat::nv12, 64, 36, test::Content::noise);
    std::atomic<bool> done = false;
    std::atomic<int> rounds = 0;
    std::thread setters([&] {
        for (int i = 0; !done; ++i) {
            zoom_.update({i % 7 / 7.0, i % 5 / 5.0}, {BubbleInfo{}});
            zoom_.setOverlay(i % 3, source);
            zoom_.setCameraFrame(source);
            zoom_.setNameTag(ZoomProcessor::NameTagText{"Ana", "Profesora de matemáticas aplicadas"});
            zoom_.showBubble(500, {Color{}, Color{}});
            zoom_.focus({0.4, 0.4}, 1 + i % 5);
            zoom_.setPaused(i % 2 == 0);
            EXPECT_GE(zoom_.scale(), 1.0);
            ++rounds;
        }
    });
    for (int i = 0; i < 300 || rounds < 300 || zoom_.scale() == 1.0; ++i) {
        zoom_.stepTo(time_ += kFrame);
        zoom_.isAnimating();
        if (zoom_.needsProcessing()) {
            zoom_.render(source, MediaTime::fromSeconds(time_), MediaTime(1, 30));
        }
    }
    done = true;
    setters.join();
    EXPECT_GT(zoom_.scale(), 1.0);
}

} // namespace
} // namespace velmo
