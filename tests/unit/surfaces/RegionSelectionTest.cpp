#include "surfaces/RegionSelection.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmo {
namespace {

constexpr Size kScreen{1600, 1000};

void expectNear(const Rect& a, const Rect& b) {
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
    EXPECT_NEAR(a.width, b.width, 1e-9);
    EXPECT_NEAR(a.height, b.height, 1e-9);
}

Rect dragged(Point from, Point to) {
    return RegionSelection::dragged(from, to, kScreen);
}

TEST(RegionSelection, TheLargerMovementRules) {
    expectNear(dragged({100, 100}, {420, 110}), {100, 100, 320, 200});
    expectNear(dragged({100, 100}, {110, 300}), {100, 100, 320, 200});
}

TEST(RegionSelection, ADragFromOneCornerToTheOtherAndBackGivesTheSameRectangle) {
    expectNear(dragged({420, 300}, {100, 100}), dragged({100, 100}, {420, 300}));
    expectNear(dragged({420, 100}, {100, 300}), dragged({100, 300}, {420, 100}));
    expectNear(dragged({420, 100}, {100, 300}), {100, 100, 320, 200});
}

TEST(RegionSelection, ADragPastAnEdgeSlidesTheSelectionAndDoesNotShrinkIt) {
    expectNear(dragged({1500, 500}, {1820, 500}), {1280, 500, 320, 200});
    expectNear(dragged({100, 500}, {-220, 500}), {0, 500, 320, 200});
    expectNear(dragged({500, 900}, {500, 1100}), {500, 800, 320, 200});
    expectNear(dragged({500, 100}, {500, -100}), {500, 0, 320, 200});
}

TEST(RegionSelection, IsNeverLargerThanTheScreen) {
    expectNear(dragged({10, 10}, {5000, 10}), {0, 0, 1600, 1000});
    expectNear(dragged({800, 500}, {800, -4000}), {0, 0, 1600, 1000});
}

TEST(RegionSelection, AlwaysHasTheShapeOfTheScreen) {
    for (double angle = 0; angle < 6.28; angle += 0.1) {
        for (const double far : {3.0, 130.0, 900.0, 3000.0}) {
            const Rect rect = dragged({700, 400}, {700 + far * std::cos(angle), 400 + far * std::sin(angle)});
            EXPECT_DOUBLE_EQ(rect.height, rect.width * (1000.0 / 1600));
            EXPECT_GE(rect.x, 0);
            EXPECT_GE(rect.y, 0);
            EXPECT_LE(rect.maxX(), 1600 + 1e-9);
            EXPECT_LE(rect.maxY(), 1000 + 1e-9);
        }
    }
}

TEST(RegionSelection, AClickWithoutAMovementIsAnEmptyOne) {
    expectNear(dragged({700, 400}, {700, 400}), {700, 400, 0, 0});
}

TEST(RegionSelection, IsUsableOnlyWhenWiderThanHundredAndTwentyPoints) {
    EXPECT_FALSE(RegionSelection::isUsable({0, 0, 120, 75}));
    EXPECT_TRUE(RegionSelection::isUsable({0, 0, 120.01, 75}));
}

TEST(RegionSelection, FractionsAndPointsAreEachOthersInverse) {
    const Rect fractions = RegionSelection::toFractions({400, 250, 800, 500}, kScreen);
    expectNear(fractions, {0.25, 0.25, 0.5, 0.5});
    expectNear(RegionSelection::fromFractions(fractions, kScreen), {400, 250, 800, 500});
}

} // namespace
} // namespace velmo
