#include "base/TimingCurve.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {
namespace {

TEST(TimingCurve, BeginsAtNothingAndEndsAtAllAndStaysThere) {
    constexpr TimingCurve curve(0.22, 0.36, 1, 1);
    EXPECT_EQ(curve.at(0), 0);
    EXPECT_EQ(curve.at(1), 1);
    EXPECT_EQ(curve.at(-3), 0);
    EXPECT_EQ(curve.at(7), 1);
    EXPECT_EQ(curve.at(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(TimingCurve, WithControlPointsOnTheDiagonalIsTime) {
    constexpr TimingCurve curve(0.25, 0.25, 0.75, 0.75);
    for (double time = 0; time <= 1; time += 0.05) {
        EXPECT_NEAR(curve.at(time), time, 1e-9);
    }
}

TEST(TimingCurve, PassesThroughThePointsOfItsBezier) {
    constexpr TimingCurve curve(0.22, 0.36, 1, 1);
    // At the parameter s both coordinates follow at once.
    for (const double s : {0.1, 0.25, 0.5, 0.75, 0.9}) {
        const double a = 3 * (1 - s) * (1 - s) * s;
        const double rest = 3 * (1 - s) * s * s + s * s * s;
        EXPECT_NEAR(curve.at(a * 0.22 + rest), a * 0.36 + rest, 1e-9);
    }
}

TEST(TimingCurve, HoldsWhereTheCurveIsSteep) {
    constexpr TimingCurve curve(0, 1, 0, 1);
    double before = 0;
    for (double time = 0.001; time < 1; time += 0.001) {
        const double way = curve.at(time);
        ASSERT_GE(way, before);
        before = way;
    }
}

} // namespace
} // namespace velmo
