#include "platform/x11/internal/ServerClock.h"

#include <gmock/gmock.h>

namespace velmo::x11 {
namespace {

constexpr double kHost = 5'000'000.25; // seconds; over 2^32 ms, so that stamps have wrapped round
constexpr std::uint32_t kStamp = 5'000'000'250U - (1ULL << 32); // of the same clock

TEST(ServerClock, AStampOfTheHostClockIsItsMillisecond) {
    const ServerClock clock;
    EXPECT_NEAR(clock.hostTime(kStamp, kHost + 0.02), kHost, 0.001);
}

TEST(ServerClock, AStampOfThisVeryMillisecondIsNotInTheFuture) {
    const ServerClock clock;
    EXPECT_LE(clock.hostTime(kStamp, kHost), kHost);
}

TEST(ServerClock, AStampFromBeforeTheStampsWrappedRoundIsStillTheRecentOne) {
    const ServerClock clock;
    const double wrap = 4'294'967.296;
    EXPECT_NEAR(clock.hostTime(0xffffff9c, wrap + 0.05), wrap - 0.1, 0.001);
}

TEST(ServerClock, AMeasurementThatAgreesWithTheHostClockLeavesTheStampsAlone) {
    ServerClock clock;
    clock.observe(kHost - 0.004, kStamp, kHost + 0.009);
    EXPECT_EQ(clock.offset(), 0);
}

TEST(ServerClock, AnotherClockIsFollowedToWithinTheExchange) {
    ServerClock clock;
    clock.observe(kHost + 1000.000, kStamp, kHost + 1000.004);
    EXPECT_NEAR(clock.hostTime(kStamp + 500, kHost + 1001), kHost + 1000.502, 0.0035);
}

TEST(ServerClock, TheNarrowestOfSeveralExchangesCounts) {
    ServerClock clock;
    clock.observe(kHost + 1000.000, kStamp, kHost + 1000.400);
    clock.observe(kHost + 1000.199, kStamp, kHost + 1000.200);
    clock.observe(kHost + 1000.050, kStamp, kHost + 1000.300);
    EXPECT_NEAR(clock.hostTime(kStamp, kHost + 1001), kHost + 1000.2, 0.0015);
}

TEST(ServerClock, AClockThatHasDriftedIsMeasuredAnew) {
    ServerClock clock;
    clock.observe(kHost, kStamp, kHost + 0.001);
    clock.observe(kHost + 10.020, kStamp + 10'000, kHost + 10.021);
    EXPECT_NEAR(clock.hostTime(kStamp + 10'000, kHost + 11), kHost + 10.0205, 0.002);
    clock.observe(kHost + 20, kStamp + 20'000, kHost + 20.001);
    EXPECT_EQ(clock.offset(), 0);
}

} // namespace
} // namespace velmo::x11
