#include "compositor/ZoomProcessor.h"
#include "support/AllocationCount.h"
#include "support/ManualClock.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>
#include <utility>

namespace velmo {
namespace {

TEST(FramePath, TheCountSeesAnAllocation) {
    const std::size_t before = test::allocationCount();
    const std::vector<int> one(1);
    EXPECT_EQ(test::allocationCount(), before + 1);
}

class FramePathAllocations : public ::testing::TestWithParam<PixelFormat> {};

TEST_P(FramePathAllocations, AreNoneOnceTheFirstFrameIsThrough) {
    test::ManualClock clock(10);
    ZoomProcessor zoom(clock);
    zoom.configure({0, 0, 1920, 1080});
    zoom.setEnabled(true);
    zoom.setSpotlight(true);
    const FrameRef source = test::makePicture(GetParam(), 320, 180, test::Content::noise);
    const FrameRef overlay = test::makePicture(PixelFormat::bgra, 16, 16, test::Content::noise);
    std::vector<std::vector<BubbleInfo>> lists(300, std::vector<BubbleInfo>(3)); // the caller's own
    zoom.setLevel(3);
    zoom.stepTo(0);
    zoom.stepTo(0.1);
    ASSERT_TRUE(zoom.render(source, MediaTime::zero(), MediaTime(1, 30)));

    const std::size_t before = test::allocationCount();
    int rendered = 0;
    for (int i = 0; i < 300; ++i) {
        zoom.update({i * 5.0, i * 3.0}, std::move(lists[static_cast<std::size_t>(i)]));
        zoom.setLevel(1.5 + i % 100 / 40.0);
        zoom.setSpotlight(i % 50 < 30);
        zoom.setOverlay(i % 3, overlay);
        zoom.stepTo(0.1 + i / 30.0);
        rendered += zoom.needsProcessing() && zoom.isAnimating() ? 1 : 0;
        rendered += zoom.render(source, MediaTime(i, 30), MediaTime(1, 30)) ? 1 : 0;
    }
    EXPECT_EQ(test::allocationCount(), before);
    EXPECT_GT(rendered, 300);
}

/// A window that is dragged about in every frame, a bubble that is uncovered where it stands, the column with camera
/// and name tag coming and going, each frame with new pictures.
TEST_P(FramePathAllocations, AreNoneForBubblesAndColumnOnceMasksAndNameTagAreDrawn) {
    test::ManualClock clock(10);
    ZoomProcessor zoom(clock);
    zoom.configure({0, 0, 320, 180});
    zoom.setEnabled(true);
    zoom.setNameTag(ZoomProcessor::NameTagText{"Ana Guadalupe Martínez de la Concepción", "Profesora de Matemáticas"});
    const FrameRef source = test::makePicture(GetParam(), 320, 180, test::Content::noise);
    const FrameRef overlays[] = {test::makePicture(PixelFormat::bgra, 100, 80, test::Content::noise),
                                 test::makePicture(PixelFormat::bgra, 100, 80, test::Content::flat)};
    const FrameRef cameras[] = {test::makePicture(GetParam(), 160, 90, test::Content::noise),
                                test::makePicture(GetParam(), 160, 90, test::Content::flat)};
    BubbleInfo window;
    window.key = 1;
    window.window = {0, 20, 100, 80};
    BubbleInfo uncovered;
    uncovered.key = 2;
    uncovered.rect = {200.5, 60, 80, 80};
    uncovered.circle = true;
    uncovered.label = Rect{190, 40, 100, 20};
    constexpr int kFrames = 300;
    std::vector<std::vector<BubbleInfo>> lists; // the caller's own
    for (int i = 0; i < kFrames; ++i) {
        window.window.x = (i * 3) % 220 + i * 0.01;
        lists.push_back({window, uncovered});
    }
    double time = 0;
    const auto frame = [&](int i) {
        zoom.update({i * 5.0, i * 3.0}, std::move(lists[static_cast<std::size_t>(i)]));
        zoom.setOverlay(1, overlays[i % 2]);
        zoom.setCameraFrame(cameras[i % 2]);
        zoom.setColumn(i % 100 < 60, i < 150);
        zoom.stepTo(time += 1 / 30.0);
        return zoom.needsProcessing() && zoom.render(source, MediaTime(i, 30), MediaTime(1, 30));
    };
    for (int i = 0; i < 80; ++i) { // both the column and its going are through once
        ASSERT_TRUE(frame(i));
    }
    const std::size_t before = test::allocationCount();
    int rendered = 0;
    for (int i = 80; i < kFrames; ++i) {
        rendered += frame(i) ? 1 : 0;
    }
    EXPECT_EQ(test::allocationCount(), before);
    EXPECT_EQ(rendered, kFrames - 80);
}

INSTANTIATE_TEST_SUITE_P(Formats, FramePathAllocations, ::testing::Values(PixelFormat::nv12, PixelFormat::bgra));

} // namespace
} // namespace velmo
