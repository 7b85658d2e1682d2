#include "platform/pulse/CaptureClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>
#include <vector>

namespace velmo {
namespace {

constexpr int kRate = 48000;
constexpr int kFragment = 960;

/// A source whose clock runs `ppm` off, read with a jitter that is `jitter` seconds at most either way.
class Source {
public:
    Source(double ppm, double jitter) : period_((1 + ppm * 1e-6) / kRate), jitter_(-jitter, jitter) {}

    /// The source stands still, and what would have been heard is lost.
    void loses(double seconds) { start_ += seconds; }
    double trueTime(std::int64_t frame) const { return start_ + static_cast<double>(frame) * period_; }
    MediaTime measured(std::int64_t frame) { return MediaTime::fromSeconds(trueTime(frame) + jitter_(random_)); }

private:
    double start_ = 1000;
    double period_;
    std::uniform_real_distribution<double> jitter_;
    std::mt19937 random_{7};
};

struct Timed {
    double trueTime;
    std::optional<double> given;
};

/// Reads on and times what can be timed.
class Reader {
public:
    Reader(CaptureClock& clock, Source& source) : clock_(clock), source_(source) {}

    std::vector<Timed> read(int fragments) {
        std::vector<Timed> timed;
        for (int i = 0; i < fragments; ++i) {
            kept_.push_back(source_.trueTime(frame_));
            clock_.observe(source_.measured(frame_));
            clock_.add(kFragment);
            frame_ += kFragment;
            if (clock_.settled()) {
                take(timed);
            }
        }
        return timed;
    }

private:
    void take(std::vector<Timed>& timed) {
        for (double trueTime : kept_) {
            const std::optional<MediaTime> time = clock_.next(kFragment);
            timed.push_back({trueTime, time ? std::optional(time->seconds()) : std::nullopt});
        }
        kept_.clear();
    }

    CaptureClock& clock_;
    Source& source_;
    std::int64_t frame_ = 0;
    std::vector<double> kept_;
};

double worstError(const std::vector<Timed>& timed) {
    double worst = 0;
    for (const Timed& one : timed) {
        worst = std::max(worst, one.given ? std::abs(*one.given - one.trueTime) : 0.0);
    }
    return worst;
}

TEST(CaptureClock, WithholdsTheFirstReadsUntilItIsAnchoredAndThenTimesThemAll) {
    CaptureClock clock(kRate);
    Source source(0, 0);
    Reader reader(clock, source);
    EXPECT_TRUE(reader.read(CaptureClock::kAnchorCount - 1).empty());
    const auto timed = reader.read(1);
    ASSERT_EQ(timed.size(), static_cast<std::size_t>(CaptureClock::kAnchorCount));
    EXPECT_LT(worstError(timed), 1e-6);
}

TEST(CaptureClock, StaysWithinAFewMillisecondsOfASourceThatDriftsUnderJitter) {
    for (const double ppm : {-500.0, 0.0, 500.0}) {
        CaptureClock clock(kRate);
        Source source(ppm, 0.006);
        Reader reader(clock, source);
        EXPECT_LT(worstError(reader.read(200)), 0.006) << ppm;
        // Ten minutes, in which 500 ppm are 300 ms.
        EXPECT_LT(worstError(reader.read(30000)), 0.004) << ppm;
    }
}

TEST(CaptureClock, GivesTimesThatFollowEachOtherSmoothly) {
    CaptureClock clock(kRate);
    Source source(500, 0.006);
    Reader reader(clock, source);
    const auto timed = reader.read(5000);
    for (std::size_t i = 1; i < timed.size(); ++i) {
        ASSERT_TRUE(timed[i].given);
        const double step = *timed[i].given - *timed[i - 1].given;
        ASSERT_NEAR(step, static_cast<double>(kFragment) / kRate, 101e-6) << i;
    }
}

TEST(CaptureClock, AnchorsAnewAfterARealGap) {
    CaptureClock clock(kRate);
    Source source(0, 0.004);
    Reader reader(clock, source);
    reader.read(500);
    source.loses(0.3);
    // What was read before the gap was certain is timed by the new line.
    const auto after = reader.read(100);
    ASSERT_EQ(after.size(), 100u);
    EXPECT_TRUE(after.front().given);
    EXPECT_LT(worstError(after), 0.008);
}

TEST(CaptureClock, FollowsALossTooSmallToBeAGapWithinASecond) {
    CaptureClock clock(kRate);
    Source source(0, 0.004);
    Reader reader(clock, source);
    reader.read(500);
    source.loses(0.020);
    reader.read(40);
    EXPECT_LT(worstError(reader.read(100)), 0.004);
}

TEST(CaptureClock, DoesNotMoveForASingleMeasurementThatIsFarOff) {
    CaptureClock clock(kRate);
    for (int i = 0; i < 100; ++i) {
        clock.observe(MediaTime::fromSeconds(10 + i * 0.02));
        clock.add(kFragment);
    }
    clock.next(100 * kFragment);
    clock.observe(MediaTime::fromSeconds(12.5));
    clock.add(kFragment);
    EXPECT_FALSE(clock.settled());
    clock.observe(MediaTime::fromSeconds(12.02));
    clock.add(kFragment);
    ASSERT_TRUE(clock.settled());
    EXPECT_NEAR(clock.next(kFragment)->seconds(), 12.0, 1e-6);
    EXPECT_NEAR(clock.next(kFragment)->seconds(), 12.02, 1e-6);
}

TEST(CaptureClock, NeverGoesBackBehindWhatItHasTimed) {
    CaptureClock clock(kRate);
    Source source(0, 0);
    Reader reader(clock, source);
    const double last = *reader.read(100).back().given;
    source.loses(-0.2);
    double previous = last;
    int dropped = 0;
    for (const Timed& one : reader.read(100)) {
        dropped += one.given ? 0 : 1;
        if (one.given) {
            ASSERT_GE(*one.given, previous + 0.0199);
            previous = *one.given;
        }
    }
    EXPECT_EQ(dropped, 10); // 200 ms were heard twice
}

TEST(CaptureClock, NeverGoesBackWhenTheSourceIsOpenedAgain) {
    CaptureClock clock(kRate);
    Source source(0, 0);
    const double last = *Reader(clock, source).read(100).back().given;
    clock.restart();
    source.loses(1.0);
    const auto timed = Reader(clock, source).read(100);
    for (const Timed& one : timed) {
        EXPECT_TRUE(!one.given || *one.given > last);
    }
    EXPECT_TRUE(timed.back().given);
}

TEST(CaptureClock, CountsFramesOnBetweenMeasurements) {
    CaptureClock clock(kRate);
    Source source(0, 0);
    Reader(clock, source).read(50);
    for (int i = 0; i < 10; ++i) {
        clock.add(kFragment);
        ASSERT_TRUE(clock.settled());
        EXPECT_NEAR(clock.next(kFragment)->seconds(), 1001 + i * 0.02, 1e-6);
    }
}

} // namespace
} // namespace velmo
