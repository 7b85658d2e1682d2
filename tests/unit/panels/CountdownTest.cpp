#include "panels/Countdown.h"

#include "unit/session/ManualTimers.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

struct Counting {
    test::ManualClock clock{0};
    test::ManualTimers timers{clock};
    int changes = 0;
    int ends = 0;
    Countdown countdown{timers, [this] { ++changes; }, [this] { ++ends; }};
};

TEST(Countdown, ShowsThreeTwoOneForASecondEach) {
    Counting it;
    EXPECT_EQ(it.countdown.n(), 3);
    it.timers.advance(1);
    EXPECT_EQ(it.countdown.n(), 2);
    it.timers.advance(1);
    EXPECT_EQ(it.countdown.n(), 1);
    EXPECT_EQ(it.ends, 0);
    it.timers.advance(0.9);
    EXPECT_EQ(it.ends, 0);
    it.timers.advance(0.1);
    EXPECT_EQ(it.ends, 1);
    EXPECT_EQ(it.changes, 2);
}

TEST(Countdown, AClickEndsItAtOnceAndNoTickFollows) {
    Counting it;
    it.timers.advance(0.5);
    it.countdown.skip();
    EXPECT_EQ(it.ends, 1);
    it.timers.advance(5);
    it.countdown.skip();
    EXPECT_EQ(it.ends, 1);
    EXPECT_EQ(it.changes, 0);
}

} // namespace
} // namespace velmo
