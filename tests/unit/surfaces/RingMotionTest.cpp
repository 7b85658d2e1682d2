#include "surfaces/RingMotion.h"

#include "surfaces/LevelTransition.h"

#include <gmock/gmock.h>

#include <cmath>

namespace velmo {
namespace {

using testing::DoubleNear;

constexpr double kTiny = 1e-9;

BubbleLook lookOf(RingStyle style) {
    BubbleLook look;
    look.style = style;
    return look;
}

bool same(const Color& a, const Color& b) {
    return std::abs(a.red - b.red) < kTiny && std::abs(a.green - b.green) < kTiny && std::abs(a.blue - b.blue) < kTiny;
}

TEST(RingMotion, TheChameleonTurnsOnceInSixSeconds) {
    const BubbleLook look = lookOf(RingStyle::chameleon);
    EXPECT_THAT(RingMotion::at(look, 0, 0).turn, DoubleNear(0, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0, 1.5).turn, DoubleNear(0.25, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0, 604.5).turn, DoubleNear(0.75, kTiny));
}

TEST(RingMotion, TheColoursStandForOneStepAndThenRotateToTheLeft) {
    const BubbleLook look = lookOf(RingStyle::chameleon);
    const auto& colors = look.chameleonColors;
    const std::size_t n = colors.size();
    const double step = RingMotion::shiftSeconds / static_cast<double>(n);
    const auto stops = [&](double seconds) { return RingMotion::at(look, 0, seconds).stops; };
    for (std::size_t i = 0; i <= n; ++i) {
        EXPECT_TRUE(same(stops(0)[i], colors[i % n]));
        EXPECT_TRUE(same(stops(step)[i], colors[i % n])) << "the list, then the list rotated by none";
        EXPECT_TRUE(same(stops(step * 3)[i], colors[(i + 2) % n]));
    }
    const Color half = stops(step * 1.5)[0];
    EXPECT_NEAR(half.red, (colors[0].red + colors[1].red) / 2, 1e-6);
    EXPECT_NEAR(half.green, (colors[0].green + colors[1].green) / 2, 1e-6);
}

TEST(RingMotion, TheRingIsClosedAtEveryTime) {
    const BubbleLook look = lookOf(RingStyle::chameleon);
    for (double seconds = 0; seconds < 30; seconds += 0.37) {
        const RingState state = RingMotion::at(look, 0, seconds);
        ASSERT_EQ(state.stopCount, look.chameleonColors.size() + 1);
        EXPECT_TRUE(same(state.stops[0], state.stops[state.stopCount - 1])) << seconds;
    }
}

TEST(RingMotion, TheHaloPassesThroughThePaletteInFourteenSeconds) {
    const BubbleLook look = lookOf(RingStyle::chameleon);
    const std::size_t n = look.chameleonColors.size();
    for (std::size_t i = 0; i <= n; ++i) {
        const double seconds = 14.0 * static_cast<double>(i) / static_cast<double>(n) + 1e-7;
        const Color halo = RingMotion::at(look, 0, seconds).haloColor;
        EXPECT_NEAR(halo.red, look.chameleonColors[i % n].red, 1e-5);
        EXPECT_NEAR(halo.blue, look.chameleonColors[i % n].blue, 1e-5);
    }
}

TEST(RingMotion, AChameleonWithoutColoursHasItsHaloInTheRingsColourAndRests) {
    BubbleLook look = lookOf(RingStyle::chameleon);
    look.chameleonColors.clear();
    const RingState state = RingMotion::at(look, 0.5, 3);
    EXPECT_TRUE(same(state.haloColor, look.ringColor));
    EXPECT_GT(state.tint.opacity, 0);
    EXPECT_EQ(state.stopCount, 0u);
    EXPECT_EQ(state.ring.opacity, 0);
    EXPECT_FALSE(RingMotion::moves(look));
    EXPECT_EQ(look.accent(), look.ringColor);
}

TEST(RingMotion, APaletteOfManyColoursStaysWithinTheStops) {
    BubbleLook look = lookOf(RingStyle::chameleon);
    look.chameleonColors.assign(40, Color{0.5, 0.5, 0.5});
    EXPECT_LE(RingMotion::at(look, 1, 9).stopCount, RingState::kMostStops);
}

TEST(RingMotion, TheAuroraBreathesOutIn2Point4SecondsAndInAgain) {
    BubbleLook look = lookOf(RingStyle::aurora);
    look.weight = 1.8;
    const auto blur = [&](double seconds) { return RingMotion::at(look, 0, seconds).glow.blur / look.weight; };
    EXPECT_NEAR(blur(0), 6, 1e-3);
    EXPECT_NEAR(blur(1.2), 9.5, 1e-2);
    EXPECT_NEAR(blur(2.4), 13, 1e-3);
    EXPECT_NEAR(blur(3.6), 9.5, 1e-2);
    EXPECT_NEAR(blur(4.8), 6, 1e-3);
    EXPECT_LT(blur(0.3) - blur(0), blur(1.2) - blur(0.9)) << "it begins slowly";
    EXPECT_NEAR(blur(0.7), blur(4.1), 1e-6) << "and comes back the same way";
}

TEST(RingMotion, TheLevelSwellsEachStyleByItsOwnLaw) {
    BubbleLook look = lookOf(RingStyle::chameleon);
    look.weight = 0.55;
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).ring.width, DoubleNear((0.5 * 3.4 + 2.6) * 0.55, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).glow.opacity, DoubleNear(0.65, kTiny));
    look.style = RingStyle::fine;
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).ring.width, DoubleNear((0.5 * 1.4 + 1.6) * 0.55, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).ring.opacity, DoubleNear(0.95, kTiny));
    look.style = RingStyle::aurora;
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).glowLine.width, DoubleNear((0.5 * 1.5 + 1.5) * 0.55, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).glowLine.opacity, DoubleNear(0.875, kTiny));
    look.style = RingStyle::classic;
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).ring.width, DoubleNear((0.5 * 7 + 3.5) * 0.55, kTiny));
    EXPECT_THAT(RingMotion::at(look, 0.5, 0).ring.opacity, DoubleNear(0.9, kTiny));
    look.style = RingStyle::none;
    EXPECT_EQ(RingMotion::at(look, 1, 0).ring.width, 0);
    EXPECT_EQ(RingMotion::at(look, 1, 0).glow.opacity, 0);
}

TEST(RingMotion, TheHaloIsThereWithASoftShadowAndARingOnly) {
    BubbleLook look = lookOf(RingStyle::fine);
    EXPECT_THAT(RingMotion::at(look, 0, 0).tint.opacity, DoubleNear(0.38, kTiny));
    EXPECT_EQ(RingMotion::at(look, 0, 0).shadow, (RingState::Shadow{0.32, 13, 6}));
    look.softShadow = false;
    EXPECT_EQ(RingMotion::at(look, 0, 0).tint.opacity, 0);
    EXPECT_EQ(RingMotion::at(look, 0, 0).shadow, (RingState::Shadow{0.22, 5, 2}));
    look = lookOf(RingStyle::none);
    EXPECT_EQ(RingMotion::at(look, 0, 0).tint.opacity, 0);
}

TEST(LevelTransition, TakesTwelveHundredthsOfASecondFromWhereItIs) {
    LevelTransition level;
    level.moveTo(1, 10);
    EXPECT_NEAR(level.at(10.06), 0.5, kTiny);
    level.moveTo(0, 10.06);
    EXPECT_NEAR(level.at(10.06), 0.5, kTiny) << "without a jump";
    EXPECT_TRUE(level.runs(10.17));
    EXPECT_FALSE(level.runs(10.19));
    EXPECT_NEAR(level.at(10.19), 0, kTiny);
}

} // namespace
} // namespace velmo
