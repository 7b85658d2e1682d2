#include "base/MediaTime.h"

#include <gtest/gtest.h>
#include <limits>

namespace velmo {
namespace {

TEST(MediaTime, EqualInstantsAtDifferentTimescalesAreEqual) {
    EXPECT_EQ(MediaTime(1, 2), MediaTime(2, 4));
    EXPECT_LT(MediaTime(1, 30), MediaTime(1, 25));
}

TEST(MediaTime, SumsOfMixedTimescalesAreExact) {
    const MediaTime sum = MediaTime(1, 30) + MediaTime(1, 48000);
    EXPECT_EQ(sum, MediaTime(1601, 48000));
}

TEST(MediaTime, ManyFrameDurationsAddUpWithoutDrift) {
    MediaTime time = MediaTime::zero();
    for (int i = 0; i < 108'000; ++i) {
        time += MediaTime(1, 30);
    }
    EXPECT_EQ(time, MediaTime(3600, 1));
}

TEST(MediaTime, AnInvalidTimeSpoilsSumsAndComparesWithNothing) {
    EXPECT_FALSE((MediaTime::invalid() + MediaTime(1, 2)).isValid());
    EXPECT_FALSE(MediaTime::invalid() == MediaTime::invalid());
    EXPECT_FALSE(MediaTime::invalid() < MediaTime(1, 2));
    EXPECT_FALSE(MediaTime::invalid() >= MediaTime(1, 2));
}

TEST(MediaTime, RoundsHalfAwayFromZeroWhenConverted) {
    EXPECT_EQ(MediaTime(1, 2).convertedTo(1), 1);
    EXPECT_EQ(MediaTime(-1, 2).convertedTo(1), -1);
    EXPECT_EQ(MediaTime::fromNanoseconds(33'333'333).convertedTo(90'000), 3000);
}

TEST(MediaTime, SecondsThatAreNoNumberGiveAnInvalidTime) {
    EXPECT_FALSE(MediaTime::fromSeconds(std::numeric_limits<double>::quiet_NaN()).isValid());
    EXPECT_FALSE(MediaTime::fromSeconds(std::numeric_limits<double>::infinity()).isValid());
    EXPECT_DOUBLE_EQ(MediaTime::fromSeconds(99.9).seconds(), 99.9);
}

TEST(MediaTime, HostTimesOfYearsKeepNanoseconds) {
    const MediaTime late = MediaTime::fromNanoseconds(300'000'000'000'000'001);
    EXPECT_EQ(late - MediaTime::fromNanoseconds(300'000'000'000'000'000), MediaTime::fromNanoseconds(1));
}

} // namespace
} // namespace velmo
