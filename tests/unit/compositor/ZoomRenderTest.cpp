#include "compositor/ZoomProcessor.h"
#include "support/ManualClock.h"
#include "support/Pictures.h"
#include "support/ReferenceRenderer.h"

#include <gmock/gmock.h>
#include <random>
#include <set>

namespace velmo {
namespace {

using test::Content;
using test::makePicture;
using test::picturesAgree;

struct PoolCalls {
    int made = 0;
    int failures = 0; ///< how many of the next ones fail
    int minimumCount = 0;
};
PoolCalls poolCalls;

std::unique_ptr<PixelBufferPool> countingPool(PixelFormat format, int width, int height, int minimumCount) {
    ++poolCalls.made;
    poolCalls.minimumCount = minimumCount;
    if (poolCalls.failures > 0) {
        --poolCalls.failures;
        return nullptr;
    }
    return PixelBufferPool::create(format, width, height, minimumCount);
}

class ZoomRender : public ::testing::Test {
protected:
    ZoomRender() { poolCalls = {}; }

    std::optional<Sample> render(const FrameRef& source) { return zoom_.render(source, kTime, kDuration); }

    const MediaTime kTime{123456789, 1'000'000'000};
    const MediaTime kDuration{1, 30};
    test::ManualClock clock_{500};
    ZoomProcessor zoom_{clock_, &countingPool};
    FrameRef picture_ = makePicture(PixelFormat::nv12, 64, 36, Content::noise);
};

TEST_F(ZoomRender, WithNoEffectLiveThereIsNoSampleAndNoPool) {
    EXPECT_FALSE(render(picture_));
    zoom_.setScale(1.002);
    EXPECT_FALSE(render(picture_));
    zoom_.setEnabled(true); // a wish alone is no picture yet
    zoom_.setSpotlight(true);
    zoom_.setColumn(true, true);
    EXPECT_FALSE(render(picture_));
    EXPECT_EQ(poolCalls.made, 0);
}

TEST_F(ZoomRender, WithoutASourceThereIsNoSample) {
    zoom_.setScale(2);
    EXPECT_FALSE(render(nullptr));
    EXPECT_FALSE(ZoomProcessor::sample(nullptr, kTime, kDuration));
}

TEST_F(ZoomRender, ASampleOfAnUntouchedPictureHoldsThatPicture) {
    const auto sample = ZoomProcessor::sample(picture_, kTime, kDuration);
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->image, picture_);
    EXPECT_EQ(sample->timing.presentation, kTime);
    EXPECT_EQ(sample->timing.duration, kDuration);
    EXPECT_FALSE(sample->timing.decode.isValid());
    EXPECT_TRUE(frameIsComplete(*sample));
}

TEST_F(ZoomRender, TheSampleHasTheGivenTimesAndTheTagsSizeAndFormatOfItsSource) {
    zoom_.setScale(2);
    for (const PixelFormat format : {PixelFormat::nv12, PixelFormat::bgra}) {
        const FrameRef source = makePicture(format, 31, 17, Content::noise);
        source->setColorTags({9, 16, 6});
        const auto sample = render(source);
        ASSERT_TRUE(sample);
        EXPECT_EQ(sample->timing.presentation, kTime);
        EXPECT_EQ(sample->timing.duration, kDuration);
        EXPECT_FALSE(sample->timing.decode.isValid());
        EXPECT_TRUE(frameIsComplete(*sample));
        EXPECT_NE(sample->image, source);
        EXPECT_EQ(sample->image->format(), format);
        EXPECT_EQ(sample->image->width(), 31);
        EXPECT_EQ(sample->image->height(), 17);
        EXPECT_EQ(sample->image->colorTags(), (ColorTags{9, 16, 6}));
    }
}

TEST_F(ZoomRender, WithOnlyAPointerBubbleLiveTheScreenIsTheWholeFrame) {
    zoom_.showBubble(500, {});
    const auto sample = render(picture_);
    ASSERT_TRUE(sample);
    EXPECT_TRUE(picturesAgree(*sample->image, *picture_, 0, "pointer-bubble-alone"));
}

TEST_F(ZoomRender, ThePointerBubbleIsInTheFrameForItsTimeAndNoLonger) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::flat);
    zoom_.configure({0, 0, 320, 180});
    zoom_.update({100, 60}, {});
    zoom_.stepTo(0);
    zoom_.showBubble(500, {{1, 0, 0, 1}});
    clock_.advance(1.5);
    const auto shown = render(source);
    ASSERT_TRUE(shown);
    test::ReferenceScene scene;
    scene.bubble = {{100 / 320.0, 60 / 180.0}, 1.5, {{1, 0, 0, 1}}};
    EXPECT_TRUE(picturesAgree(*shown->image, *test::referenceRender(*source, scene), 1, "bubble-of-the-clock"));
    EXPECT_FALSE(picturesAgree(*shown->image, *source, 30, "bubble-shown"));
    clock_.advance(1.95);
    EXPECT_FALSE(render(source));
    EXPECT_FALSE(zoom_.needsProcessing());
    zoom_.showBubble(600, {{1, 0, 0, 1}}); // a clock that ran back
    EXPECT_FALSE(render(source));
    EXPECT_FALSE(zoom_.needsProcessing());
}

TEST_F(ZoomRender, ANewBubbleReplacesTheRunningOne) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::flat);
    zoom_.showBubble(497, {{1, 0, 0, 1}});
    zoom_.showBubble(499, {{0, 1, 0, 1}, {0, 0, 1, 1}});
    test::ReferenceScene scene;
    scene.bubble = {{0.5, 0.5}, 1, {{0, 1, 0, 1}, {0, 0, 1, 1}}};
    EXPECT_TRUE(picturesAgree(*render(source)->image, *test::referenceRender(*source, scene), 1, "new-bubble"));
}

TEST_F(ZoomRender, FramesOfARunningSpotlightAgreeWithTheReference) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    zoom_.configure({0, 0, 320, 180});
    zoom_.setSpotlight(true);
    zoom_.setEnabled(true);
    int rendered = 0;
    for (int i = 0; i < 90; ++i) {
        zoom_.update({i * 4.0, 180 - i * 2.5}, {});
        zoom_.setSpotlight(i < 45);
        zoom_.setEnabled(i % 40 < 20);
        zoom_.stepTo(i / 30.0);
        const auto sample = render(source);
        if (!sample) {
            continue;
        }
        ++rendered;
        const ZoomMotion& motion = zoom_.motion();
        const test::ReferenceScene scene{motion.center(), motion.scale(), motion.spot(), motion.spotAlpha(), {}};
        ASSERT_TRUE(picturesAgree(*sample->image, *test::referenceRender(*source, scene), 1, "running-spotlight"))
            << "frame " << i;
    }
    EXPECT_GT(rendered, 80);
}

TEST_F(ZoomRender, EachLiveEffectMakesAFrame) {
    zoom_.setSpotlight(true);
    zoom_.stepTo(0);
    zoom_.stepTo(0.01);
    EXPECT_TRUE(render(picture_));
    zoom_.setSpotlight(false);
    for (int i = 1; i < 9; ++i) {
        zoom_.stepTo(i);
    }
    EXPECT_FALSE(render(picture_));
    zoom_.setColumn(true, true);
    zoom_.stepTo(9);
    EXPECT_TRUE(render(picture_));
    zoom_.setColumn(false, true);
    for (int i = 10; i < 20; ++i) {
        zoom_.stepTo(i);
    }
    EXPECT_FALSE(render(picture_));
    zoom_.setOverlay(1, picture_);
    BubbleInfo second;
    second.key = 1;
    zoom_.update({0.5, 0.5}, {second});
    EXPECT_TRUE(render(picture_));
}

BubbleInfo windowOf(int key, const Rect& window) {
    BubbleInfo info;
    info.key = key;
    info.window = window;
    return info;
}

TEST_F(ZoomRender, AWindowStandsWhereItIsOnTheScreenWhileThePictureIsZoomed) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    const FrameRef picture = makePicture(PixelFormat::bgra, 60, 40, Content::flat, 9);
    zoom_.configure({100, 50, 320, 180});
    zoom_.setEnabled(true);
    zoom_.setOverlay(1, picture);
    const BubbleInfo info = windowOf(1, {150, 70, 60, 40});
    for (int i = 0; i < 60; ++i) {
        zoom_.update({250, 140}, {info});
        zoom_.stepTo(i / 30.0);
        const auto sample = render(source);
        ASSERT_TRUE(sample);
        test::ReferenceScene scene{zoom_.motion().center(), zoom_.motion().scale(), {}, 0, {}};
        scene.screen = {100, 50, 320, 180};
        scene.surfaces = {{info, picture}};
        ASSERT_TRUE(picturesAgree(*sample->image, *test::referenceRender(*source, scene), 1, "window-while-zooming"))
            << "frame " << i;
    }
    EXPECT_GT(zoom_.scale(), 1.9);
}

TEST_F(ZoomRender, AWindowThatIsResizedWhileItIsRecordedIsWholeInEveryFrame) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    zoom_.configure({0, 0, 320, 180});
    FrameRef picture = makePicture(PixelFormat::bgra, 60, 40, Content::noise, 9);
    for (int i = 0; i < 24; ++i) {
        const BubbleInfo info = windowOf(0, {20.0 + i, 30, 60.0 + 4 * i, 40.0 + 3 * i});
        if (i % 3 == 2) { // the stream comes after the window
            picture = makePicture(PixelFormat::bgra, 60 + 4 * i, 40 + 3 * i, Content::noise, 9);
        }
        zoom_.setOverlay(0, picture);
        zoom_.update({160, 90}, {info});
        zoom_.stepTo(i / 30.0);
        const auto sample = render(source);
        ASSERT_TRUE(sample);
        test::ReferenceScene scene;
        scene.screen = {0, 0, 320, 180};
        scene.surfaces = {{info, picture}};
        ASSERT_TRUE(picturesAgree(*sample->image, *test::referenceRender(*source, scene), 1, "window-resized"))
            << "frame " << i;
    }
}

TEST_F(ZoomRender, ThePictureOfAClosedWindowStaysAndIsShownOnlyWithItsBubble) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    const FrameRef picture = makePicture(PixelFormat::bgra, 60, 40, Content::flat, 9);
    zoom_.configure({0, 0, 320, 180});
    zoom_.setOverlay(2, picture);
    zoom_.update({160, 90}, {windowOf(2, {20, 20, 60, 40})});
    const auto shown = render(source);
    ASSERT_TRUE(shown);
    zoom_.update({160, 90}, {windowOf(1, {20, 20, 60, 40})});
    EXPECT_FALSE(render(source));
    zoom_.update({160, 90}, {});
    EXPECT_FALSE(render(source));
    zoom_.update({160, 90}, {windowOf(2, {20, 20, 60, 40})});
    EXPECT_TRUE(picturesAgree(*render(source)->image, *shown->image, 0, "shown-again"));
}

TEST_F(ZoomRender, NoPictureOfAWindowOrACameraIsHeldLongerThanAFrame) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    const FrameRef picture = makePicture(PixelFormat::bgra, 60, 40, Content::flat, 9);
    const FrameRef camera = makePicture(PixelFormat::nv12, 60, 40, Content::flat, 9);
    zoom_.configure({0, 0, 320, 180});
    zoom_.setOverlay(0, picture);
    zoom_.setCameraFrame(camera);
    zoom_.setColumn(true, true);
    zoom_.update({160, 90}, {windowOf(0, {20, 20, 60, 40})});
    zoom_.stepTo(0);
    zoom_.stepTo(0.1);
    ASSERT_TRUE(render(source));
    zoom_.setOverlay(0, nullptr);
    zoom_.setCameraFrame(nullptr);
    EXPECT_FALSE(picture->isShared());
    EXPECT_FALSE(camera->isShared());
}

TEST_F(ZoomRender, OnlySoManyBubblesAreShown) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    zoom_.configure({0, 0, 320, 180});
    zoom_.setOverlay(0, makePicture(PixelFormat::bgra, 10, 10, Content::flat, 9));
    std::vector<BubbleInfo> many(ZoomProcessor::kMostBubbles, windowOf(0, {20, 20, 10, 10}));
    zoom_.update({160, 90}, many);
    const auto most = render(source);
    many.push_back(windowOf(0, {200, 100, 10, 10}));
    zoom_.update({160, 90}, many);
    EXPECT_TRUE(picturesAgree(*render(source)->image, *most->image, 0, "too-many-bubbles"));
}

TEST_F(ZoomRender, TheColumnSlidesInAndOutWithCameraAndNameTag) {
    const FrameRef source = makePicture(PixelFormat::nv12, 640, 360, Content::noise);
    const FrameRef camera = makePicture(PixelFormat::nv12, 320, 240, Content::noise, 5);
    const ZoomProcessor::NameTagText tag{"Ana Soto", "Física"};
    zoom_.configure({0, 0, 640, 360});
    zoom_.update({320, 180}, {});
    zoom_.setCameraFrame(camera);
    zoom_.setNameTag(tag);
    int rendered = 0;
    for (int i = 0; i < 90; ++i) {
        zoom_.setColumn(i < 45, i >= 20);
        zoom_.stepTo(i / 30.0);
        const auto sample = render(source);
        if (!sample) {
            continue;
        }
        ++rendered;
        test::ReferenceScene scene;
        scene.column = {zoom_.motion().colT(), i >= 20, camera, tag};
        ASSERT_TRUE(picturesAgree(*sample->image, *test::referenceRender(*source, scene), 1, "sliding-column"))
            << "frame " << i;
    }
    EXPECT_GT(rendered, 60);
    EXPECT_LT(rendered, 90);
}

TEST_F(ZoomRender, WithoutTheColumnThereIsNoNameTag) {
    zoom_.setNameTag(ZoomProcessor::NameTagText{"Ana Soto", "Física"});
    zoom_.setCameraFrame(picture_);
    zoom_.setScale(2);
    const auto with = render(picture_);
    zoom_.setNameTag(std::nullopt);
    EXPECT_TRUE(picturesAgree(*with->image, *render(picture_)->image, 0, "no-column"));
}

TEST_F(ZoomRender, ThePoolOfFourIsKeptAcrossFrames) {
    zoom_.setScale(2);
    std::set<const PixelBuffer*> seen;
    for (int i = 0; i < 20; ++i) {
        seen.insert(render(picture_)->image.get());
    }
    EXPECT_EQ(poolCalls.made, 1);
    EXPECT_EQ(poolCalls.minimumCount, 4);
    EXPECT_LE(seen.size(), 4u);
}

TEST_F(ZoomRender, AChangeOfSizeOrFormatMakesANewPoolAndLeavesOldFramesValid) {
    zoom_.setScale(3);
    const auto first = render(picture_);
    const FrameRef expected = test::referenceRender(*picture_, {0.5, 0.5}, 3);
    const auto second = render(makePicture(PixelFormat::nv12, 64, 38, Content::noise));
    EXPECT_EQ(poolCalls.made, 2);
    const auto third = render(makePicture(PixelFormat::bgra, 64, 38, Content::noise));
    EXPECT_EQ(poolCalls.made, 3);
    EXPECT_EQ(second->image->height(), 38);
    EXPECT_EQ(third->image->format(), PixelFormat::bgra);
    EXPECT_TRUE(picturesAgree(*first->image, *expected, 1, "frame-of-a-dropped-pool"));
}

TEST_F(ZoomRender, APoolThatCouldNotBeMadeIsTriedAgainForTheNextFrame) {
    zoom_.setScale(2);
    poolCalls.failures = 2;
    EXPECT_FALSE(render(picture_));
    EXPECT_FALSE(render(picture_));
    EXPECT_TRUE(render(picture_));
    EXPECT_EQ(poolCalls.made, 3);
}

TEST_F(ZoomRender, APoolThatFailsAfterAChangeOfSizeLeavesNoOldPoolBehind) {
    zoom_.setScale(2);
    EXPECT_TRUE(render(picture_));
    poolCalls.failures = 1;
    EXPECT_FALSE(render(makePicture(PixelFormat::nv12, 32, 36, Content::noise)));
    EXPECT_TRUE(render(picture_));
    EXPECT_EQ(poolCalls.made, 3);
}

TEST_F(ZoomRender, AHighCentreShowsTheUpperRows) {
    const FrameRef source = makePicture(PixelFormat::nv12, 64, 64, Content::flat);
    for (int y = 0; y < 64; ++y) {
        std::fill_n(source->plane(0).row(y), 64, static_cast<std::uint8_t>(y < 32 ? 200 : 20));
        std::fill_n(source->plane(0).row(y), 32, static_cast<std::uint8_t>(y < 32 ? 100 : 50));
    }
    zoom_.focus({0.75, 0.75}, 2); // upper right, since y is up
    for (int i = 0; i < 300; ++i) {
        zoom_.stepTo(i / 30.0);
    }
    const auto sample = render(source);
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->image->plane(0).row(0)[63], 200);
    EXPECT_EQ(sample->image->plane(0).row(60)[63], 200);
    EXPECT_EQ(sample->image->plane(0).row(30)[32], 200);
}

TEST_F(ZoomRender, TheSourceStaysAsItWas) {
    const FrameRef copy = makePicture(PixelFormat::nv12, 64, 36, Content::noise);
    zoom_.setScale(2.7);
    render(picture_);
    EXPECT_TRUE(picturesAgree(*picture_, *copy, 0, "untouched-source"));
}

TEST_F(ZoomRender, FramesOfARunningZoomAgreeWithTheReference) {
    zoom_.configure({0, 0, 64, 36});
    std::mt19937 random(4);
    double time = 0;
    for (int i = 0; i < 200; ++i) {
        if (i % 20 == 0) {
            zoom_.setLevel(std::uniform_real_distribution(1.0, 6.0)(random));
            zoom_.setEnabled(i % 60 != 40);
            zoom_.update({std::uniform_real_distribution(-20.0, 90.0)(random),
                          std::uniform_real_distribution(-20.0, 60.0)(random)},
                         {});
        }
        zoom_.stepTo(time += 1.0 / 30);
        if (const auto sample = render(picture_)) {
            const FrameRef expected = test::referenceRender(*picture_, zoom_.motion().center(), zoom_.scale());
            ASSERT_TRUE(picturesAgree(*sample->image, *expected, 1, "running-zoom")) << "frame " << i;
        }
    }
    EXPECT_EQ(poolCalls.made, 1);
}

} // namespace
} // namespace velmo
