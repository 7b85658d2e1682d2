#include "surfaces/internal/BubblePlace.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using BubblePlace::Home;

const ScreenArea kMain{{0, 0, 1920, 1080}, {0, 50, 1920, 1000}};
const ScreenArea kSide{{1920, 0, 1280, 720}, {1920, 0, 1280, 700}};

TEST(BubblePlace, AnotherSizeKeepsTheMiddle) {
    const Rect result = BubblePlace::resized({500, 400, 264, 264}, {364, 364}, {kMain});
    EXPECT_EQ(result, (Rect{450, 350, 364, 364}));
}

TEST(BubblePlace, ABiggerSizeNearAnEdgeKeepsTheMiddleAndIsThenMovedInside) {
    EXPECT_EQ(BubblePlace::resized({0, 50, 264, 264}, {364, 364}, {kMain}), (Rect{0, 50, 364, 364}));
    EXPECT_EQ(BubblePlace::resized({1656, 786, 264, 264}, {364, 364}, {kMain}), (Rect{1556, 686, 364, 364}));
}

TEST(BubblePlace, TheFirstScreenThatTheBubbleTouchesHoldsIt) {
    const Rect between = BubblePlace::resized({1800, 300, 264, 264}, {264, 264}, {kMain, kSide});
    EXPECT_EQ(between.x, 1656);
    EXPECT_EQ(BubblePlace::resized({2400, 300, 264, 264}, {264, 264}, {kMain, kSide}).x, 2400);
}

TEST(BubblePlace, ABubbleOffAllScreensComesToTheMainOne) {
    EXPECT_EQ(BubblePlace::resized({9000, -900, 264, 264}, {264, 264}, {kMain, kSide}), (Rect{1656, 50, 264, 264}));
}

TEST(BubblePlace, WithoutScreensTheRectangleIsTakenAsItIs) {
    EXPECT_EQ(BubblePlace::resized({9000, 0, 100, 100}, {200, 200}, {}), (Rect{8950, -50, 200, 200}));
    EXPECT_EQ(BubblePlace::initial(Point{5, 5}, Home::left, {}, {264, 264}), (Point{0, 0}));
}

TEST(BubblePlace, ASavedPlaceOnAScreenIsTakenAndAnotherIsNot) {
    const std::vector<ScreenArea> screens{kMain, kSide};
    EXPECT_EQ(BubblePlace::initial(Point{2000, 600}, Home::left, screens, {264, 264}), (Point{2000, 600}));
    EXPECT_EQ(BubblePlace::initial(Point{2000, 800}, Home::left, screens, {264, 264}), (Point{40, 90}));
    EXPECT_EQ(BubblePlace::initial({}, Home::left, screens, {264, 264}), (Point{40, 90}));
    EXPECT_EQ(BubblePlace::initial({}, Home::right, screens, {344, 264}), (Point{1536, 90}));
}

TEST(BubblePlace, TheCameraAloneStandsInTheMiddleAndALittleHigher) {
    EXPECT_EQ(BubblePlace::cameraOnly(kMain), (Rect{480, 310, 960, 540}));
}

} // namespace
} // namespace velmo
