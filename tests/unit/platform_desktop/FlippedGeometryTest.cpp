#include "platform/FlippedGeometry.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr FlippedGeometry kFlipped{1080};

TEST(FlippedGeometry, ThePrimaryDisplayStaysWhereItIs) {
    EXPECT_EQ(kFlipped.flip(Rect{0, 0, 1920, 1080}), (Rect{0, 0, 1920, 1080}));
}

TEST(FlippedGeometry, AWindowAtTheTopHasItsLowerEdgeJustUnderTheTop) {
    EXPECT_EQ(kFlipped.flip(Rect{100, 0, 300, 200}), (Rect{100, 880, 300, 200}));
}

TEST(FlippedGeometry, ADisplayBelowThePrimaryOneIsNegative) {
    EXPECT_EQ(kFlipped.flip(Rect{0, 1080, 1280, 720}), (Rect{0, -720, 1280, 720}));
}

TEST(FlippedGeometry, TwiceIsOnce) {
    const Rect r{-300, 17.5, 640, 480};
    EXPECT_EQ(kFlipped.flip(kFlipped.flip(r)), r);
    const Point p{3, 1077};
    EXPECT_EQ(kFlipped.flip(kFlipped.flip(p)), p);
}

} // namespace
} // namespace velmo
