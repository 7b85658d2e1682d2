#include "platform/x11/internal/Region.h"

#include <gtest/gtest.h>

#include <random>

namespace velmo::x11 {
namespace {

TEST(Region, SubtractingTheMiddleLeavesTheRim) {
    Region region(PixelRect{0, 0, 30, 30});
    region.subtract(Region(PixelRect{10, 10, 10, 10}));
    EXPECT_EQ(region.area(), 800);
    EXPECT_EQ(region.rectCount(), 4);
    EXPECT_EQ(region.extents(), (PixelRect{0, 0, 30, 30}));
}

TEST(Region, EmptyRectanglesAddNothing) {
    Region region(PixelRect{5, 5, 0, 10});
    region.add(PixelRect{1, 1, 10, -3});
    EXPECT_TRUE(region.isEmpty());
    region.add(PixelRect{1, 1, 4, 4});
    region.intersect(PixelRect{});
    EXPECT_TRUE(region.isEmpty());
}

TEST(Region, AMovedFromRegionCanBeUsedAgain) {
    Region first(PixelRect{0, 0, 5, 5});
    first.add(PixelRect{10, 10, 5, 5});
    const Region second = std::move(first);
    first = Region(PixelRect{1, 1, 1, 1});
    EXPECT_EQ(second.area(), 50);
    EXPECT_EQ(first.area(), 1);
}

TEST(CoverWithFewRects, NeighboursAreJoinedAndFarOnesAreNot) {
    Region region(PixelRect{0, 0, 10, 10});
    region.add(PixelRect{12, 3, 10, 10});
    region.add(PixelRect{1000, 1000, 10, 10});
    std::vector<PixelRect> rects;
    coverWithFewRects(region, 200, rects);
    ASSERT_EQ(rects.size(), 2u);
    EXPECT_EQ(rects[0].area() + rects[1].area(), 22 * 13 + 100);
}

TEST(CoverWithFewRects, EveryPixelIsCovered) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Region region;
        for (unsigned i = random() % 90; i > 0; --i) {
            region.add(PixelRect{static_cast<int>(random() % 900), static_cast<int>(random() % 900),
                                 static_cast<int>(random() % 60), static_cast<int>(random() % 60)});
        }
        std::vector<PixelRect> rects;
        coverWithFewRects(region, static_cast<std::int64_t>(random() % 20000), rects);
        Region left = region;
        for (const PixelRect& rect : rects) {
            left.subtract(Region(rect));
            EXPECT_EQ(rect.intersected(region.extents()), rect);
        }
        EXPECT_TRUE(left.isEmpty());
    }
}

} // namespace
} // namespace velmo::x11
