#include "compositor/ZoomProcessor.h"
#include "support/ManualClock.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace velmo {
namespace {

constexpr double kRounding = 1e-9;

/// Everything that the user, the pointer and the clocks may do, in any order.
class RandomUse {
public:
    explicit RandomUse(std::uint32_t seed) : random_(seed) { zoom_.configure({-100, 50, 1920, 1080}); }

    const ZoomProcessor& zoom() const { return zoom_; }

    void act() {
        if (within(0, 1) < 0.15) {
            set(static_cast<int>(within(0, 10)));
        }
        if (within(0, 1) < 0.7) {
            mouse_ = {mouse_.x + within(-80, 80), mouse_.y + within(-80, 80)};
            zoom_.update(mouse_, {});
        }
        time_ += timeStep();
        zoom_.stepTo(time_);
    }

private:
    double within(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }
    bool coin() { return within(0, 1) < 0.5; }

    double timeStep() {
        const double kind = within(0, 1);
        return kind < 0.85 ? within(0, 0.05) : kind < 0.95 ? within(0, 8) : within(-3, 0);
    }

    void set(int which) {
        switch (which) {
        case 0:
        case 1:
            return zoom_.setEnabled(coin());
        case 2:
            return zoom_.setLevel(within(-2, 12));
        case 3:
            return zoom_.setFollow(coin());
        case 4:
            return zoom_.focus({within(-0.5, 1.5), within(-0.5, 1.5)}, within(0, 9));
        case 5:
            return zoom_.setRegion(Rect{within(-0.3, 1), within(-0.3, 1), within(0, 1), within(0, 1)});
        case 6:
            return zoom_.setRegion(std::nullopt);
        case 7:
            return zoom_.setSpotlight(coin());
        case 8:
            return zoom_.setColumn(coin(), coin());
        default:
            mouse_ = {within(-3000, 5000), within(-3000, 5000)};
        }
    }

    std::mt19937 random_;
    test::ManualClock clock_;
    ZoomProcessor zoom_{clock_};
    Point mouse_{960, 540};
    double time_ = 1000;
};

void expectLegal(const RandomUse& use) {
    const ZoomMotion& motion = use.zoom().motion();
    const double scale = motion.scale();
    const Point center = motion.center();
    ASSERT_TRUE(std::isfinite(scale) && std::isfinite(center.x) && std::isfinite(center.y));
    ASSERT_TRUE(std::isfinite(motion.centerTarget().x) && std::isfinite(motion.centerTarget().y));
    ASSERT_TRUE(std::isfinite(motion.spot().x) && std::isfinite(motion.spot().y));
    ASSERT_GE(scale, 1.0);
    ASSERT_LE(scale, 20.0 + kRounding);
    ASSERT_EQ(use.zoom().scale(), scale);
    // At rest by the clamp, under way by the geometry of the transition.
    const double half = 0.5 / scale;
    ASSERT_GE(center.x, half - kRounding);
    ASSERT_LE(center.x, 1 - half + kRounding);
    ASSERT_GE(center.y, half - kRounding);
    ASSERT_LE(center.y, 1 - half + kRounding);
    ASSERT_GE(motion.spotAlpha(), 0.0);
    ASSERT_LE(motion.spotAlpha(), 1.0);
    ASSERT_GE(motion.colT(), 0.0);
    ASSERT_LE(motion.colT(), 1.0);
    const double level = use.zoom().controls().level;
    ASSERT_GE(level, 1.05);
    ASSERT_LE(level, 6.0);
}

class ZoomMotionProperty : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(ZoomMotionProperty, NoSequenceOfSettersAndTimesLeavesTheLegalStates) {
    RandomUse use(GetParam());
    for (int i = 0; i < 4000; ++i) {
        use.act();
        ASSERT_NO_FATAL_FAILURE(expectLegal(use)) << "at step " << i;
    }
}

TEST_P(ZoomMotionProperty, TheFactorNeverOvershootsItsTarget) {
    RandomUse use(GetParam() + 1000);
    for (int i = 0; i < 4000; ++i) {
        const double before = use.zoom().scale();
        use.act();
        const double target = use.zoom().controls().targetScale();
        const double after = use.zoom().scale();
        ASSERT_LE(std::abs(target - after), std::abs(target - before) + kRounding) << "at step " << i;
        ASSERT_GE((target - before) * (target - after), 0.0) << "at step " << i;
    }
}

TEST_P(ZoomMotionProperty, ARegionWiderThanTheScreenStillLeavesTheCentreInTheMiddle) {
    std::mt19937 random(GetParam());
    ZoomProcessor zoom;
    zoom.setRegion(Rect{-0.5, -0.5, std::uniform_real_distribution(1.0, 4.0)(random), 2});
    for (int i = 0; i < 300; ++i) {
        zoom.stepTo(i / 30.0);
        ASSERT_GT(zoom.scale(), 0.0);
        ASSERT_EQ(zoom.motion().center(), (Point{0.5, 0.5}));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ZoomMotionProperty, ::testing::Range(1u, 9u));

} // namespace
} // namespace velmo
