#include "surfaces/PrompterScroll.h"

#include <gmock/gmock.h>

#include <limits>
#include <tuple>

namespace velmo {
namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();

MediaTime at(double seconds) {
    return MediaTime::fromSeconds(seconds);
}

using SpeedAndTick = std::tuple<double, double>;
class PrompterScrollAtASpeed : public testing::TestWithParam<SpeedAndTick> {};

TEST_P(PrompterScrollAtASpeed, StandsWithinAPixelOfTimeBySpeedAtEachTickOfTenMinutes) {
    const auto [speed, tick] = GetParam();
    PrompterScroll scroll;
    scroll.play(at(1000));
    for (int i = 1; i * tick < 600; ++i) {
        scroll.tick(at(1000 + i * tick), speed, kEndless);
        ASSERT_NEAR(scroll.position(), i * tick * speed, 0.01);
    }
}

INSTANTIATE_TEST_SUITE_P(All, PrompterScrollAtASpeed,
                         testing::Combine(testing::Values(8.0, 32.0, 140.0), testing::Values(1.0 / 60, 0.017, 0.4)));

TEST(PrompterScroll, TicksThatComeUnevenlyMakeNoDifference) {
    PrompterScroll scroll;
    scroll.play(at(5));
    for (const double time : {5.001, 5.3, 5.30001, 7.0, 7.016, 9.0}) {
        scroll.tick(at(time), 140, kEndless);
        EXPECT_NEAR(scroll.position(), (time - 5) * 140, 0.01);
    }
}

TEST(PrompterScroll, ALongPauseAndThenPlayDoesNotJump) {
    PrompterScroll scroll;
    scroll.play(at(0));
    scroll.tick(at(1), 32, kEndless);
    scroll.pause();
    scroll.tick(at(2), 32, kEndless);
    EXPECT_DOUBLE_EQ(scroll.position(), 32);
    scroll.play(at(3600));
    EXPECT_DOUBLE_EQ(scroll.position(), 32);
    scroll.tick(at(3600.5), 32, kEndless);
    EXPECT_NEAR(scroll.position(), 48, 1e-6);
}

TEST(PrompterScroll, StopsExactlyAtTheEnd) {
    PrompterScroll scroll;
    scroll.play(at(0));
    scroll.tick(at(3), 32, 90.5);
    EXPECT_DOUBLE_EQ(scroll.position(), 90.5);
    EXPECT_FALSE(scroll.playing());
}

TEST(PrompterScroll, ATextShorterThanItsWindowStopsAtTheFirstTick) {
    PrompterScroll scroll;
    scroll.play(at(0));
    EXPECT_TRUE(scroll.playing());
    scroll.tick(at(0.016), 8, 0);
    EXPECT_FALSE(scroll.playing());
    EXPECT_DOUBLE_EQ(scroll.position(), 0);
}

TEST(PrompterScroll, ANewSpeedCountsFromTheTickBeforeOn) {
    PrompterScroll scroll;
    scroll.play(at(0));
    scroll.tick(at(1), 8, kEndless);
    scroll.tick(at(2), 140, kEndless);
    EXPECT_NEAR(scroll.position(), 148, 1e-6);
}

} // namespace
} // namespace velmo
