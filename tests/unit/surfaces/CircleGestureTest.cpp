#include "surfaces/CircleGesture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace velmo {
namespace {

constexpr double kHeight = 1000;
constexpr double kTurn = 2 * std::numbers::pi;

/// A mouse that goes round at one speed.
struct Round {
    double radius = 100;
    int steps = 31;      // a turn
    double period = 0.5; // seconds a turn
    double way = 1;      // or -1
    double from = 10;    // seconds

    Point at(int i) const {
        const double angle = way * kTurn * i / steps;
        return {500 + radius * std::cos(angle), 500 + radius * std::sin(angle)};
    }
    double time(int i) const { return from + period * i / steps; }
};

/// Index of the sample that closes a circle, or -1.
int firstHit(CircleGesture& gesture, const Round& round, int samples, int from = 0) {
    for (int i = from; i < samples; ++i) {
        if (gesture.add(round.at(i), round.time(i), kHeight)) {
            return i;
        }
    }
    return -1;
}

int firstHit(const Round& round, int samples) {
    CircleGesture gesture;
    return firstHit(gesture, round, samples);
}

TEST(CircleGesture, AQuickCircleFiresEitherWayRound) {
    // 2.2 pi are 34.1 turns of a 31st, and the first step has no turn.
    EXPECT_EQ(firstHit({}, 60), 36);
    EXPECT_EQ(firstHit({.way = -1}, 60), 36);
}

TEST(CircleGesture, ACircleOfExactlyOneTurnDoesNotFire) {
    EXPECT_EQ(firstHit({}, 33), -1); // 31 turns of a 31st
}

TEST(CircleGesture, ItTakesMoreThanATurnAndATenth) {
    EXPECT_EQ(firstHit({}, 36), -1); // 34 of 31
    EXPECT_EQ(firstHit({}, 37), 36);
}

TEST(CircleGesture, NineSamplesOfAPerfectCircleDoNotFireAndTheTenthCan) {
    const Round coarse{.radius = 150, .steps = 6, .period = 0.4}; // nine samples would be turn enough
    EXPECT_EQ(firstHit(coarse, 9), -1);
    EXPECT_EQ(firstHit(coarse, 10), 9);
}

TEST(CircleGesture, ACircleDrawnOverMoreThanASecondNeverFires) {
    // Fast and long enough, but old samples fall out before the turn is whole.
    EXPECT_EQ(firstHit({.radius = 400, .period = 1.0}, 300), -1);
    EXPECT_NE(firstHit({.radius = 400, .period = 0.8}, 300), -1);
}

TEST(CircleGesture, AMouseThatStandsStillAddsNoSamples) {
    CircleGesture gesture;
    const Round round{};
    ASSERT_EQ(firstHit(gesture, round, 36), -1);
    for (double at = 0; at < 0.1; at += 0.01) {
        EXPECT_FALSE(gesture.add({round.at(35).x + 0.3, round.at(35).y}, round.time(35) + at, kHeight));
    }
    EXPECT_TRUE(gesture.add(round.at(36), round.time(36) + 0.1, kHeight));
}

TEST(CircleGesture, AStepOfHalfAPointIsASample) {
    // Nine samples and one that is just far enough from the last.
    const Round coarse{.radius = 150, .steps = 6, .period = 0.4};
    for (const double step : {0.49, 0.5}) {
        CircleGesture gesture;
        ASSERT_EQ(firstHit(gesture, coarse, 9), -1);
        EXPECT_EQ(gesture.add({coarse.at(8).x + step, coarse.at(8).y}, coarse.time(9), kHeight), step >= 0.5);
    }
}

TEST(CircleGesture, ASmallCircleDoesNotFire) {
    // One and a tenth turns of it are shorter than 30 % of the height.
    EXPECT_EQ(firstHit({.radius = 40, .period = 0.1}, 37), -1);
    EXPECT_EQ(firstHit({.radius = 45, .period = 0.1}, 37), 36);
}

TEST(CircleGesture, ASlowCircleDoesNotFire) {
    // 0.9 heights a second are 2 pi of 100 in 0.698 s; the chords are a little shorter.
    EXPECT_EQ(firstHit({.period = 0.71}, 200), -1);
    EXPECT_NE(firstHit({.period = 0.68}, 200), -1);
}

TEST(CircleGesture, SpeedIsCountedOverAtLeastATwentiethOfASecond) {
    // Length 0.31 of the height in no time at all: 0.31 / 0.05 is fast enough.
    Round sudden{.radius = 45, .period = 0};
    EXPECT_EQ(firstHit(sudden, 37), 36);
}

TEST(CircleGesture, ShakingDoesNotFire) {
    CircleGesture gesture;
    for (int i = 0; i < 120; ++i) {
        EXPECT_FALSE(gesture.add({i % 2 == 0 ? 300.0 : 600.0, 500.0 + i}, i / 60.0, kHeight));
    }
}

TEST(CircleGesture, AnEightDoesNotFireSinceItsTurnsCancel) {
    CircleGesture gesture;
    for (int i = 0; i < 120; ++i) {
        const double t = kTurn * i / 30;
        EXPECT_FALSE(gesture.add({500 + 200 * std::sin(t), 500 + 100 * std::sin(2 * t)}, i / 60.0, kHeight));
    }
}

TEST(CircleGesture, StepsTooShortForADirectionAreLeftOutOfTheTurning) {
    // Between the samples of a circle the hand trembles sideways by less than 0.2 % of the height.
    CircleGesture gesture;
    const Round round{};
    int hit = -1;
    for (int i = 0; i < 40 && hit < 0; ++i) {
        const Point at = round.at(i);
        hit = gesture.add(at, round.time(i), kHeight) ||
                      gesture.add({at.x + (i % 2 == 0 ? 1.9 : -1.9), at.y}, round.time(i) + 0.001, kHeight)
                  ? i
                  : -1;
    }
    EXPECT_NEAR(hit, 36, 1);
}

TEST(CircleGesture, TwoCirclesWithinTheCooldownGiveOne) {
    CircleGesture gesture;
    Round round{.radius = 300, .steps = 12, .period = 0.25};
    const int first = firstHit(gesture, round, 40);
    ASSERT_EQ(first, 15);
    // 0.3 s later the second one is whole, but the gesture is deaf till 0.4 s after the first.
    const int second = firstHit(gesture, round, 80, first + 1);
    EXPECT_EQ(second, first + 20); // 0.417 s
}

TEST(CircleGesture, ResetForgetsSamplesAndCooldown) {
    CircleGesture gesture;
    const Round round{};
    ASSERT_EQ(firstHit(gesture, round, 37), 36);
    gesture.reset();
    EXPECT_EQ(firstHit(gesture, round, 37), 36); // at the same times again: nothing is deaf
    gesture.reset();
    ASSERT_EQ(firstHit(gesture, round, 36), -1);
    gesture.reset();
    EXPECT_FALSE(gesture.add(round.at(36), round.time(36), kHeight));
}

} // namespace
} // namespace velmo
