#include "platform/x11/internal/GestureSum.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

namespace velmo::x11 {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kPad = 7;
constexpr int kWheel = 8;
constexpr double kEngagingPoints = 0.04 / 0.006; ///< a zoom begins above it
constexpr double kEngagingPinch = 0.04 / 1.4;

InputGesture points(double delta, std::uint32_t modifiers = kOptionModifier) {
    return {InputGesture::Type::scrollWheel, modifiers, 0, delta, true};
}
InputGesture clicks(double delta) {
    return {InputGesture::Type::scrollWheel, kOptionModifier, 0, delta, false};
}
InputGesture pinch(double magnification) {
    return {InputGesture::Type::magnify, kOptionModifier, magnification, 0, false};
}

class GestureSumTest : public testing::Test {
protected:
    void add(const InputGesture& gesture, int device = kPad) { sum_.add(device, gesture, now_, tell_); }
    void rest() { sum_.rest(now_, tell_); }
    std::vector<double> scrolls() const {
        std::vector<double> deltas;
        for (const InputGesture& each : told_) {
            deltas.push_back(each.scrollingDeltaY);
        }
        return deltas;
    }

    GestureSum sum_;
    double now_ = 1000;
    std::vector<InputGesture> told_;
    const GestureSum::Tell tell_ = [this](const InputGesture& gesture) { told_.push_back(gesture); };
};

TEST_F(GestureSumTest, EightEighthsOfAClickAreOneStepThatBeginsAZoom) {
    for (int i = 0; i < 8; ++i) {
        add(points(10.0 / 8), kWheel);
        now_ += 0.0125;
    }
    EXPECT_THAT(scrolls(), ElementsAre(DoubleEq(10)));
    EXPECT_GT(told_.front().scrollingDeltaY, kEngagingPoints);
    EXPECT_TRUE(told_.front().hasPreciseScrollingDeltas);
    EXPECT_EQ(told_.front().modifierFlags, kOptionModifier);
}

TEST_F(GestureSumTest, PartsThatAreNoBinaryFractionsAreAClickTooWhenAllHaveCome) {
    for (int i = 0; i < 15; ++i) {
        add(points(-10.0 / 15), kWheel);
    }
    EXPECT_THAT(told_, SizeIs(1));
}

TEST_F(GestureSumTest, AWholeClickIsHandedOnAtOnce) {
    add(clicks(1), kWheel);
    add(clicks(-1), kWheel);
    EXPECT_THAT(scrolls(), ElementsAre(1, -1));
    EXPECT_FALSE(told_.front().hasPreciseScrollingDeltas);
    EXPECT_EQ(sum_.restsAt(), std::nullopt);
}

TEST_F(GestureSumTest, ASlowScrollComesToAStepInItsTime) {
    for (int i = 0; i < 10; ++i) {
        add(points(1));
        now_ += 0.15;
    }
    EXPECT_THAT(scrolls(), ElementsAre(10));
}

TEST_F(GestureSumTest, AnOrdinaryPinchBeginsAZoom) {
    double all = 0;
    for (int i = 0; i < 60; ++i) {
        add(pinch(0.005));
        now_ += 0.008;
    }
    sum_.end(tell_);
    for (const InputGesture& each : told_) {
        EXPECT_EQ(each.type, InputGesture::Type::magnify);
        all += each.magnification;
    }
    EXPECT_GT(told_.front().magnification, kEngagingPinch);
    EXPECT_NEAR(all, 0.3, 1e-9) << "nothing is lost or told twice";
}

TEST_F(GestureSumTest, WhatIsLeftComesWhenTheMovementRests) {
    add(points(4));
    now_ += 0.19;
    rest();
    EXPECT_THAT(told_, IsEmpty());
    ASSERT_TRUE(sum_.restsAt());
    now_ = *sum_.restsAt();
    rest();
    EXPECT_THAT(scrolls(), ElementsAre(4));
    EXPECT_EQ(sum_.restsAt(), std::nullopt);
    rest();
    EXPECT_THAT(told_, SizeIs(1));
}

TEST_F(GestureSumTest, TwoSmallScrollsWithARestBetweenAreNotOne) {
    add(points(6));
    now_ += 0.5;
    add(points(6));
    EXPECT_THAT(scrolls(), ElementsAre(6)) << "the second may go on";
}

TEST_F(GestureSumTest, AMovementThatHasMadeAStepFlowsThirtyTimesASecond) {
    add(points(10));
    for (int i = 0; i < 100; ++i) {
        now_ += 0.01;
        add(points(0.5));
    }
    EXPECT_GE(told_.size(), 24u);
    EXPECT_LE(told_.size(), 31u);
    for (const double delta : scrolls()) {
        EXPECT_TRUE(delta == 10 || delta <= 2) << delta;
    }
}

TEST_F(GestureSumTest, AMovementThatTurnsBackBeginsWithAWholeStepAgain) {
    add(points(10));
    for (int i = 0; i < 9; ++i) {
        now_ += 0.1;
        add(points(-1));
    }
    EXPECT_THAT(scrolls(), ElementsAre(10));
    add(points(-1));
    EXPECT_THAT(scrolls(), ElementsAre(10, -10));
}

TEST_F(GestureSumTest, AMovementThatComesBackToWhereItBeganIsNone) {
    add(points(4));
    add(points(-4));
    sum_.end(tell_);
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(GestureSumTest, AnotherDeviceKindOrKeyEndsTheSum) {
    add(points(4), kPad);
    add(points(5), kWheel);
    EXPECT_THAT(scrolls(), ElementsAre(4));
    add(pinch(0.01), kWheel);
    EXPECT_THAT(scrolls(), ElementsAre(4, 5));
    add(points(6, 0), kWheel);
    EXPECT_THAT(told_, SizeIs(3));
    EXPECT_EQ(told_.back().magnification, 0.01);
    add(points(7), kWheel);
    EXPECT_EQ(told_.back().modifierFlags, 0U) << "what was scrolled without the key stays without";
    add(clicks(1), kWheel);
    EXPECT_THAT(scrolls(), ElementsAre(4, 5, 0, 6, 7, 1)) << "in their order";
}

} // namespace
} // namespace velmo::x11
