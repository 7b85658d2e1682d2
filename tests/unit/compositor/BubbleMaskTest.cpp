#include "compositor/internal/MaskCache.h"

#include "Composition.h"

namespace velmo::internal {
namespace {

using Shape = BubbleMask::Shape;

/// How much of black is white through the mask, at a pixel counted from the upper left.
int levelAt(const BubbleMask& mask, int x, int y) {
    const FrameRef white = test::plainPicture(PixelFormat::bgra, 256, 256, 255);
    const FrameRef black = test::plainPicture(PixelFormat::bgra, 256, 256, 0);
    mask.uncover(*white, {0, y, black->plane(0).row(y), 256, 4});
    return black->plane(0).row(y)[4 * x];
}

TEST(BubbleMask, ACornerOfAHalfMakesAPill) {
    const Shape shape{10, 20, 100, 60, false, 0.5};
    EXPECT_EQ(BubbleMask::cornerRadius(shape), 30);
    const auto mask = BubbleMask::make(shape, PixelFormat::bgra);
    ASSERT_TRUE(mask);
    EXPECT_EQ(levelAt(*mask, 40, 20), 255); // where the round end begins
    EXPECT_EQ(levelAt(*mask, 11, 50), 255); // the tip of the round end
    EXPECT_LT(levelAt(*mask, 18, 28), 60);  // 30 * (1 - 1 / sqrt 2) is 8.8
    EXPECT_EQ(levelAt(*mask, 20, 30), 255);
    EXPECT_EQ(levelAt(*mask, 9, 50), 0);
    EXPECT_EQ(levelAt(*mask, 110, 50), 0);
}

TEST(BubbleMask, FourPixelsRoundOffEvenACornerOfNothing) {
    EXPECT_EQ((BubbleMask::cornerRadius({0, 0, 100, 60, false, 0})), 4);
    EXPECT_EQ((BubbleMask::cornerRadius({0, 0, 100, 60, false, 0.25})), 19);
    EXPECT_EQ((BubbleMask::cornerRadius({0, 0, 5, 60, false, 0})), 2.5);
    const auto mask = BubbleMask::make({8, 8, 100, 60, false, 0}, PixelFormat::bgra);
    EXPECT_LT(levelAt(*mask, 8, 8), 60);
    EXPECT_EQ(levelAt(*mask, 12, 8), 255);
    EXPECT_EQ(levelAt(*mask, 10, 10), 255);
}

TEST(BubbleMask, ACircleFillsItsRectangle) {
    const auto mask = BubbleMask::make({3, 5, 80, 60, true, 0.5}, PixelFormat::bgra);
    ASSERT_TRUE(mask);
    EXPECT_EQ(levelAt(*mask, 43, 35), 255);
    EXPECT_EQ(levelAt(*mask, 4, 35), 255);
    EXPECT_EQ(levelAt(*mask, 43, 6), 255);
    EXPECT_EQ(levelAt(*mask, 10, 10), 0);
}

TEST(BubbleMask, AMaskWithoutASizeOrOfAnImpossibleOneIsAbsent) {
    EXPECT_FALSE(BubbleMask::make({0, 0, 0, 50, true, 0}, PixelFormat::nv12));
    EXPECT_FALSE(BubbleMask::make({0, 0, 50, -1, true, 0}, PixelFormat::nv12));
    EXPECT_FALSE(BubbleMask::make({0, 0, BubbleMask::kLargestSide + 1, 50, true, 0}, PixelFormat::nv12));
    MaskCache cache;
    EXPECT_FALSE(cache.find({0, 0, 0, 50, true, 0}, PixelFormat::nv12));
    EXPECT_EQ(cache.size(), 0u);
}

TEST(MaskCache, TheTenthDistinctMaskEmptiesItAndStaysAlone) {
    MaskCache cache;
    for (int i = 0; i < 9; ++i) {
        EXPECT_TRUE(cache.find({i, 0, 20, 20, true, 0}, PixelFormat::nv12));
        EXPECT_EQ(cache.size(), static_cast<std::size_t>(i + 1));
    }
    EXPECT_TRUE(cache.find({9, 0, 20, 20, true, 0}, PixelFormat::nv12));
    EXPECT_EQ(cache.size(), 1u);
}

TEST(MaskCache, ABubbleThatDoesNotMoveFindsTheSameMask) {
    MaskCache cache;
    const Shape shape{7, 9, 30, 20, false, 0.16};
    const auto first = cache.find(shape, PixelFormat::nv12);
    EXPECT_EQ(cache.find(shape, PixelFormat::nv12), first);
    EXPECT_EQ(cache.size(), 1u);
    EXPECT_NE(cache.find({8, 9, 30, 20, false, 0.16}, PixelFormat::nv12), first);
    EXPECT_NE(cache.find({7, 9, 30, 20, true, 0.16}, PixelFormat::nv12), first);
    EXPECT_NE(cache.find({7, 9, 30, 20, false, 0.17}, PixelFormat::nv12), first);
    EXPECT_NE(cache.find(shape, PixelFormat::bgra), first);
    EXPECT_EQ(cache.size(), 5u);
}

TEST(MaskCache, AMaskInUseOutlivesTheEmptying) {
    MaskCache cache;
    const auto held = cache.find({0, 0, 20, 20, true, 0}, PixelFormat::bgra);
    for (int i = 1; i < 12; ++i) {
        cache.find({i, 0, 20, 20, true, 0}, PixelFormat::bgra);
    }
    EXPECT_EQ(levelAt(*held, 10, 10), 255);
}

} // namespace
} // namespace velmo::internal
