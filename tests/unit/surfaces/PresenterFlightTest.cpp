#include "surfaces/PresenterFlight.h"

#include "base/TimingCurve.h"
#include "surfaces/PresenterTag.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmo {
namespace {

using Way = PresenterFlight::Way;

constexpr Size kFullHD{1920, 1080};

BubbleInfo bubble(const Rect& rect, bool circle, double corner = 0) {
    BubbleInfo info;
    info.rect = rect;
    info.circle = circle;
    info.corner = corner;
    return info;
}

bool isWhole(const Rect& rect) {
    return rect.x == std::floor(rect.x) && rect.y == std::floor(rect.y) && rect.width == std::floor(rect.width) &&
           rect.height == std::floor(rect.height);
}

TEST(PresenterLayout, ARoundBubbleStartsAsACircleInItsPlaceInTheWindow) {
    const auto frame = PresenterLayout::atBubble(bubble({2000, 340, 220, 220}, true), {1920, 300});
    EXPECT_EQ(frame.stage, (Rect{80, 40, 220, 220}));
    EXPECT_EQ(frame.corner, 110);
    EXPECT_EQ(frame.border, 1);
    EXPECT_EQ(frame.shadow, 0);
    EXPECT_EQ(frame.backdrop, 0);
}

TEST(PresenterLayout, ACardStartsWithItsCornerAndFourPointsMore) {
    EXPECT_EQ(PresenterLayout::atBubble(bubble({0, 0, 293, 220}, false, 0.2), {}).corner, 48);
    EXPECT_EQ(PresenterLayout::atBubble(bubble({0, 0, 172, 286}, false, 0.2), {}).corner, 172 * 0.2 + 4);
}

TEST(PresenterLayout, ACardsCornerIsNeverMoreThanHalfItsShorterSide) {
    EXPECT_EQ(PresenterLayout::atBubble(bubble({0, 0, 293, 220}, false, 0.5), {}).corner, 110);
}

TEST(PresenterLayout, TheSideStageStandsAtTheRightOrAtTheLeft) {
    // 806.4 by 928.8, 67.2 from the edge, grown to whole points.
    const auto right = PresenterLayout::onStage(PresenterStyle::sideRight, kFullHD);
    EXPECT_EQ(right.stage, (Rect{1046, 75, 807, 930}));
    EXPECT_DOUBLE_EQ(right.corner, 807 * 0.05);
    const auto left = PresenterLayout::onStage(PresenterStyle::sideLeft, kFullHD);
    EXPECT_EQ(left.stage, (Rect{67, 75, 807, 930}));
    EXPECT_EQ(left.shadow, 0.55);
    EXPECT_EQ(left.border, 1);
    EXPECT_EQ(left.backdrop, 1);
}

TEST(PresenterLayout, ANarrowSideStageTakesItsCornerFromItsWidthAndAWideOneFromItsHeight) {
    EXPECT_DOUBLE_EQ(PresenterLayout::onStage(PresenterStyle::sideLeft, {1000, 1000}).corner, 420 * 0.05);
    EXPECT_DOUBLE_EQ(PresenterLayout::onStage(PresenterStyle::sideLeft, {5000, 1000}).corner, 860 * 0.05);
}

TEST(PresenterLayout, AFramedStageOnA4To3DisplayIsBoundByTheWidth) {
    const auto frame = PresenterLayout::onStage(PresenterStyle::framed, {1600, 1200});
    EXPECT_EQ(frame.stage, (Rect{128, 222, 1344, 756})); // 16:9 to the point
    EXPECT_DOUBLE_EQ(frame.corner, 756 * 0.045);
}

TEST(PresenterLayout, AFramedStageOnAnUltraWideDisplayIsBoundByTheHeight) {
    const auto frame = PresenterLayout::onStage(PresenterStyle::framed, {3000, 1125});
    EXPECT_EQ(frame.stage, (Rect{660, 90, 1680, 945})); // 16:9 to the point
}

TEST(PresenterLayout, AFramedStageIs16To9InsideItsShareOfAnyDisplayButForWholePoints) {
    for (const Size window : {kFullHD, Size{1024, 768}, Size{2560, 1080}, Size{3440, 1440}, Size{1080, 1920},
                              Size{1366, 768}, Size{5120, 1440}}) {
        const Rect stage = PresenterLayout::onStage(PresenterStyle::framed, window).stage;
        EXPECT_TRUE(isWhole(stage));
        EXPECT_NEAR(stage.width, stage.height * 16 / 9, 4) << window.width;
        EXPECT_LE(stage.width, window.width * 0.84 + 2);
        EXPECT_LE(stage.height, window.height * 0.84 + 2);
        EXPECT_TRUE(stage.width >= window.width * 0.84 - 1 || stage.height >= window.height * 0.84 - 1);
        EXPECT_NEAR(stage.midX(), window.width / 2, 1);
        EXPECT_NEAR(stage.midY(), window.height / 2, 1);
    }
}

TEST(PresenterLayout, AFullStageHasNoBackdropNoBorderAndNoShadow) {
    const auto frame = PresenterLayout::onStage(PresenterStyle::full, kFullHD);
    EXPECT_EQ(frame, (PresenterFrame{{0, 0, 1920, 1080}, 0, 0, 0, 0}));
}

struct Flight {
    PresenterFrame home = PresenterLayout::atBubble(bubble({100, 60, 220, 220}, true), {});
    PresenterFrame stage = PresenterLayout::onStage(PresenterStyle::framed, kFullHD);
    PresenterFlight in{home, stage, Way::in};
    PresenterFlight out{stage, home, Way::out};
};

TEST(PresenterFlight, BeginsAndEndsExactlyAtItsEnds) {
    const Flight flight;
    EXPECT_EQ(flight.in.at(-1), flight.home);
    EXPECT_EQ(flight.in.at(0), flight.home);
    EXPECT_EQ(flight.in.at(0.75), flight.stage);
    EXPECT_EQ(flight.in.at(9), flight.stage);
    EXPECT_EQ(flight.out.at(0), flight.stage);
    EXPECT_EQ(flight.out.at(0.75), flight.home);
    EXPECT_FALSE(flight.in.isOver(0.749));
    EXPECT_TRUE(flight.in.isOver(0.75));
}

TEST(PresenterFlight, MovesEverythingByTheSameShareOfItsWay) {
    const Flight flight;
    constexpr TimingCurve curve(0.22, 0.36, 1, 1);
    for (const double time : {0.1, 0.225, 0.375, 0.525, 0.7}) {
        const double way = curve.at(time / 0.75);
        const PresenterFrame now = flight.in.at(time);
        EXPECT_NEAR(now.stage.x, 100 + (flight.stage.stage.x - 100) * way, 1e-9);
        EXPECT_NEAR(now.stage.width, 220 + (flight.stage.stage.width - 220) * way, 1e-9);
        EXPECT_NEAR(now.corner, 110 + (flight.stage.corner - 110) * way, 1e-9);
        EXPECT_NEAR(now.shadow, 0.55 * way, 1e-9);
        EXPECT_NEAR(now.backdrop, way, 1e-9);
        EXPECT_EQ(now.border, 1);
    }
}

TEST(PresenterFlight, IsAtTheseSharesOfItsWayAtTheseTimes) {
    const PresenterFrame nothing{};
    const PresenterFrame all{{1, 1, 1, 1}, 1, 1, 1, 1};
    const PresenterFlight flight(nothing, all, Way::in);
    // Of the cubic curve with the control points (0.22, 0.36) and (1, 1), worked out by hand at the parameters 1/4,
    // 1/2, 3/4.
    EXPECT_NEAR(flight.at(0.75 * 0.249063).corner, 0.308125, 1e-5);
    EXPECT_NEAR(flight.at(0.75 * 0.5825).corner, 0.635, 1e-9);
    EXPECT_NEAR(flight.at(0.75 * 0.874688).corner, 0.894375, 1e-5);
}

TEST(PresenterFlight, TheBackdropIsGoneSixTenthsOfASecondAfterTheWayOutBegan) {
    const Flight flight;
    EXPECT_GT(flight.out.at(0.59).backdrop, 0);
    EXPECT_EQ(flight.out.at(0.6).backdrop, 0);
    EXPECT_GT(flight.out.at(0.6).stage.width, 220);
    EXPECT_LT(flight.out.at(0.3).backdrop, 1 - flight.in.at(0.3).backdrop);
}

TEST(PresenterFlight, AFullStageLosesItsBorderOnTheWayInAndGetsItOnTheWayOutWithoutABackdrop) {
    const auto home = PresenterLayout::atBubble(bubble({100, 60, 220, 220}, true), {});
    const auto stage = PresenterLayout::onStage(PresenterStyle::full, kFullHD);
    const PresenterFlight in(home, stage, Way::in);
    const PresenterFlight out(stage, home, Way::out);
    for (double time = 0; time <= 0.76; time += 0.05) {
        EXPECT_EQ(in.at(time).backdrop, 0);
        EXPECT_EQ(in.at(time).shadow, 0);
        EXPECT_EQ(out.at(time).backdrop, 0);
        EXPECT_NEAR(in.at(time).border + out.at(time).border, 1, 1e-9);
    }
    EXPECT_EQ(in.at(0.75).border, 0);
}

TEST(PresenterTag, ComesUpWhenMostOfTheFlightIsDone) {
    const auto tag = PresenterTag::make({QStringLiteral("Ana"), {}}, {100, 100, 1000, 500}, 20, 1080, 1, 50);
    ASSERT_TRUE(tag);
    EXPECT_EQ(tag->opacity(50), 0);
    EXPECT_EQ(tag->opacity(50.524), 0);
    EXPECT_NEAR(tag->opacity(50.7), 0.5, 1e-9);
    EXPECT_FALSE(tag->isStill(50.87));
    EXPECT_NEAR(tag->opacity(50.875), 1, 1e-9);
    EXPECT_TRUE(tag->isStill(50.876));
}

TEST(PresenterTag, GoesInAFifthOfASecondFromWhereItIs) {
    auto tag = PresenterTag::make({QStringLiteral("Ana"), {}}, {100, 100, 1000, 500}, 20, 1080, 1, 0);
    ASSERT_TRUE(tag);
    tag->leave(0.7);
    EXPECT_NEAR(tag->opacity(0.7), 0.5, 1e-9);
    EXPECT_NEAR(tag->opacity(0.8), 0.25, 1e-9);
    EXPECT_FALSE(tag->isStill(0.8));
    tag->leave(0.8); // a second time changes nothing
    EXPECT_NEAR(tag->opacity(0.9), 0, 1e-9);
    EXPECT_TRUE(tag->isStill(0.91));
}

TEST(PresenterTag, StandsInTheLowerLeftCornerOfTheStage) {
    const NameTag::Text ana{QStringLiteral("Ana"), QStringLiteral("Física")};
    const Rect stage{100, 200, 1000, 500};
    const auto byHeight = PresenterTag::make(ana, stage, 20, 1000, 1, 0);
    ASSERT_TRUE(byHeight);
    EXPECT_EQ(byHeight->place().origin(), (Point{140, 240}));
    EXPECT_EQ(byHeight->place().width, byHeight->image().size.width());
    const auto byCorner = PresenterTag::make(ana, stage, 60, 1000, 1, 0);
    ASSERT_TRUE(byCorner);
    EXPECT_EQ(byCorner->place().origin(), (Point{160, 260}));
}

TEST(PresenterTag, IsMadeInTheSizeOfTheWindowBetween14And30) {
    const NameTag::Text ana{QStringLiteral("Ana"), QStringLiteral("Física")};
    const Rect stage{0, 0, 1500, 500};
    const auto heightOf = [&](double window) {
        return PresenterTag::make(ana, stage, 0, window, 1, 0)->place().height;
    };
    const auto lawOf = [&](double size) { return NameTag::image(ana.name, ana.role, size, 900, 1)->size.height(); };
    EXPECT_EQ(heightOf(1080), lawOf(30));
    EXPECT_EQ(heightOf(4000), lawOf(30));
    EXPECT_EQ(heightOf(768), lawOf(27)); // 26.88
    EXPECT_EQ(heightOf(200), lawOf(14));
    EXPECT_EQ(heightOf(857), lawOf(30)); // 29.995
}

TEST(PresenterTag, ALongNameStaysOnTheStage) {
    const auto tag = PresenterTag::make({QString(300, QLatin1Char('W')), {}}, {0, 0, 800, 900}, 40, 1080, 2, 0);
    ASSERT_TRUE(tag);
    EXPECT_LE(tag->place().width, 480);
    EXPECT_EQ(tag->image().pixels.width(), std::lround(tag->place().width * 2));
}

} // namespace
} // namespace velmo
