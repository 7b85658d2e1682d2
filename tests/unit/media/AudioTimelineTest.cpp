#include "media/AudioTimeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace velmo {
namespace {

constexpr int kRate = 48000;
constexpr double kTolerance = 0.010; // seconds

/// A timeline and what came out of it, left channel only.
class Stream {
public:
    Stream() : timeline_(kRate, [this](std::span<const float> frames) { take(frames); }) {}

    AudioTimeline& timeline() { return timeline_; }
    const std::vector<float>& left() const { return left_; }

    /// Seconds between where the loudest sample near `time` lies and `time`; NaN when there is none.
    double errorAt(double time) const {
        const auto clamped = [this](double seconds) {
            return std::clamp<std::ptrdiff_t>(std::llround(seconds * kRate), 0,
                                              static_cast<std::ptrdiff_t>(left_.size()));
        };
        const auto begin = left_.begin() + clamped(time - 0.1);
        const auto end = left_.begin() + clamped(time + 0.1);
        const auto loudest = std::max_element(begin, end, [](float a, float b) { return std::abs(a) < std::abs(b); });
        if (loudest == end || std::abs(*loudest) < 0.3F) {
            return std::nan("");
        }
        return static_cast<double>(loudest - left_.begin()) / kRate - time;
    }

private:
    void take(std::span<const float> frames) {
        for (std::size_t i = 0; i < frames.size(); i += 2) {
            left_.push_back(frames[i]);
        }
    }

    std::vector<float> left_;
    AudioTimeline timeline_;
};

/// A microphone whose clock is off by `ppm`. Its sound is silence with a click in the middle of every 25th buffer.
class Source {
public:
    explicit Source(Stream& stream, double ppm = 0) : stream_(stream), rate_(kRate * (1 + ppm * 1e-6)) {}

    /// Buffers of 20 ms until `seconds` have passed; the stamps are off by up to `jitter` seconds either way.
    void runUntil(double seconds, double jitter = 0) {
        std::uniform_real_distribution<double> noise(-jitter, jitter);
        while (time_ < seconds) {
            const AudioRef sound = AudioBuffer::create({}, kFrames);
            if (++buffers_ % 25 == 0) {
                sound->floats()[kFrames / 2 * 2] = 1;
                clicks_.push_back(time_ + kFrames / 2 / rate_);
            }
            stream_.timeline().push(MediaTime::fromSeconds(std::max(0.0, time_ + noise(random_))), sound);
            time_ += kFrames / rate_;
        }
    }
    /// Nothing is recorded for this long; negative when the stamps go back.
    void jump(double seconds) { time_ += seconds; }

    double time() const { return time_; }
    /// When the clicks were heard, by the stamps.
    const std::vector<double>& clicks() const { return clicks_; }

    /// The greatest distance of a click from its stamp. A click that is missing makes it infinite.
    double worstError() const {
        double worst = 0;
        for (const double click : clicks_) {
            const double error = std::abs(stream_.errorAt(click));
            worst = std::max(worst, std::isnan(error) ? INFINITY : error);
        }
        return worst;
    }

private:
    static constexpr int kFrames = 960;

    Stream& stream_;
    double rate_;
    double time_ = 0;
    int buffers_ = 0;
    std::vector<double> clicks_;
    std::mt19937 random_{7};
};

TEST(AudioTimeline, SoundThatKeepsTimeComesOutAsItWentIn) {
    Stream stream;
    std::vector<float> input;
    for (int buffer = 0; buffer < 50; ++buffer) {
        const AudioRef sound = AudioBuffer::create({}, 960);
        for (int i = 0; i < 960; ++i) {
            const double phase = 2 * std::numbers::pi * 440 * (buffer * 960 + i) / kRate;
            input.push_back(static_cast<float>(0.5 * std::sin(phase)));
            sound->floats()[static_cast<std::size_t>(i) * 2] = input.back();
        }
        stream.timeline().push(MediaTime(buffer * 960, kRate), sound);
    }
    stream.timeline().finish();
    ASSERT_EQ(stream.left().size(), input.size());
    for (std::size_t i = 200; i + 200 < input.size(); ++i) {
        ASSERT_NEAR(stream.left()[i], input[i], 1e-5) << i;
    }
}

TEST(AudioTimeline, AFirstBufferThatComesLateIsLedByExactSilence) {
    Stream stream;
    Source source(stream);
    source.jump(1.2345);
    source.runUntil(3);
    stream.timeline().finish();
    EXPECT_LT(source.worstError(), 0.0001);
    EXPECT_TRUE(std::all_of(stream.left().begin(), stream.left().begin() + 59256, [](float x) { return x == 0; }));
}

class AudioTimelineDrift : public testing::TestWithParam<double> {};

TEST_P(AudioTimelineDrift, IsResampledAwayForMinutes) {
    Stream stream;
    Source source(stream, GetParam());
    source.runUntil(300);
    stream.timeline().finish();
    EXPECT_GT(source.clicks().size(), 590U);
    EXPECT_LT(source.worstError(), 0.0045);
    EXPECT_EQ(stream.timeline().gaps(), 0);
    EXPECT_EQ(stream.timeline().cuts(), 0);
    EXPECT_NEAR(static_cast<double>(stream.left().size()) / kRate, source.time(), 0.0045);
}

INSTANTIATE_TEST_SUITE_P(Ppm, AudioTimelineDrift, testing::Values(-1000.0, -500.0, -50.0, 0.0, 50.0, 500.0, 1000.0));

TEST(AudioTimeline, AStallOf300MillisecondsBecomesSilenceOfThatLength) {
    Stream stream;
    Source source(stream);
    source.runUntil(10.25);
    const double stallBegins = source.time();
    source.jump(0.3);
    source.runUntil(20);
    stream.timeline().finish();
    EXPECT_LT(source.worstError(), 0.0001);
    EXPECT_EQ(stream.timeline().gaps(), 1);
    const auto begin = stream.left().begin() + std::llround(stallBegins * kRate);
    EXPECT_TRUE(std::all_of(begin, begin + 14400, [](float x) { return x == 0; }));
}

TEST(AudioTimeline, AGapEndsAndBeginsWithoutAClick) {
    Stream stream;
    const AudioRef loud = AudioBuffer::create({}, 960);
    std::fill(loud->floats().begin(), loud->floats().end(), 0.8F);
    for (int buffer = 0; buffer < 40; ++buffer) {
        stream.timeline().push(MediaTime(buffer * 960 + (buffer < 20 ? 0 : 14400), kRate), loud);
    }
    stream.timeline().finish();
    float steepest = 0;
    for (std::size_t i = 1; i < stream.left().size(); ++i) {
        steepest = std::max(steepest, std::abs(stream.left()[i] - stream.left()[i - 1]));
    }
    EXPECT_LT(steepest, 0.02F);
}

TEST(AudioTimeline, DriftStallsAndJumpsTogetherStayWithinTenMilliseconds) {
    for (const double ppm : {-500.0, 500.0}) {
        Stream stream;
        Source source(stream, ppm);
        double end = 0;
        for (const double gap : {0.3, 0.012, 0.005, 1.5, 0.3, 0.009, 0.02, 5.0}) {
            source.runUntil(end += 20.33, 0.001);
            source.jump(gap);
            end += gap;
        }
        source.runUntil(end + 20, 0.001);
        stream.timeline().finish();
        EXPECT_LT(source.worstError(), kTolerance) << ppm;
    }
}

TEST(AudioTimeline, StampsThatJumpBackCutWhatIsAlreadyCovered) {
    Stream stream;
    Source source(stream);
    source.runUntil(5);
    Source again(stream);
    again.jump(4.5);
    again.runUntil(10);
    stream.timeline().finish();
    EXPECT_GE(stream.timeline().cuts(), 1);
    for (const double click : again.clicks()) {
        if (click > 5.1) {
            EXPECT_LT(std::abs(stream.errorAt(click)), kTolerance) << click;
        }
    }
    EXPECT_NEAR(static_cast<double>(stream.left().size()) / kRate, 10.0, 0.021);
}

TEST(AudioTimeline, SmallStepsBackAndForthStayWithinTenMilliseconds) {
    Stream stream;
    Source source(stream);
    double end = 0;
    for (const double step : {0.05, -0.015, 0.03, -0.019, 0.011, -0.011, -0.006, 0.006}) {
        source.runUntil(end += 10.13);
        source.jump(step);
        end += step;
    }
    source.runUntil(end + 10);
    stream.timeline().finish();
    EXPECT_LT(source.worstError(), kTolerance);
}

TEST(AudioTimeline, JitteredStampsAreAveragedAndNothingIsCut) {
    Stream stream;
    Source source(stream, 100);
    source.runUntil(120, 0.005);
    stream.timeline().finish();
    EXPECT_LT(source.worstError(), kTolerance);
    EXPECT_EQ(stream.timeline().gaps(), 0);
    EXPECT_EQ(stream.timeline().cuts(), 0);
}

TEST(AudioTimeline, ASingleStampOutOfLineIsNoise) {
    Stream stream;
    const auto push = [&](int buffer, double off) {
        stream.timeline().push(MediaTime::fromSeconds(buffer * 0.02 + off), AudioBuffer::create({}, 960));
    };
    for (int buffer = 0; buffer < 100; ++buffer) {
        push(buffer, buffer == 50 ? 0.15 : 0);
    }
    stream.timeline().finish();
    EXPECT_EQ(stream.timeline().gaps(), 0);
    EXPECT_EQ(stream.timeline().cuts(), 0);
    EXPECT_EQ(stream.left().size(), 96000U);
}

TEST(AudioTimeline, ASourceThatFellSilentIsKeptUpWithSilence) {
    Stream stream;
    Source source(stream);
    source.runUntil(2);
    stream.timeline().advanceTo(MediaTime(9, 1));
    EXPECT_EQ(stream.left().size(), 9U * kRate);
    source.jump(10);
    source.runUntil(20);
    stream.timeline().finish();
    EXPECT_LT(source.worstError(), 0.0001);
}

TEST(AudioTimeline, ASourceThatNeverSpoke) {
    Stream stream;
    stream.timeline().advanceTo(MediaTime(100, 1));
    stream.timeline().finish();
    EXPECT_TRUE(stream.left().empty());
}

TEST(AudioTimeline, BuffersOfAnotherKindOrWithoutATimeAreIgnored) {
    Stream stream;
    AudioFormat mono;
    mono.channels = 1;
    stream.timeline().push(MediaTime::zero(), AudioBuffer::create(mono, 960));
    stream.timeline().push(MediaTime::zero(), nullptr);
    stream.timeline().push(MediaTime::zero(), AudioBuffer::create({}, 0));
    stream.timeline().push(MediaTime::invalid(), AudioBuffer::create({}, 960));
    stream.timeline().finish();
    EXPECT_TRUE(stream.left().empty());
}

TEST(AudioTimeline, AResampledToneStaysClean) {
    Stream stream;
    constexpr double kTone = 1000;
    const double rate = kRate * (1 + 500e-6);
    for (int buffer = 0; buffer < 1000; ++buffer) {
        const AudioRef sound = AudioBuffer::create({}, 960);
        for (int i = 0; i < 960; ++i) {
            sound->floats()[static_cast<std::size_t>(i) * 2] =
                static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * kTone * (buffer * 960 + i) / rate));
        }
        stream.timeline().push(MediaTime::fromSeconds(buffer * 960 / rate), sound);
    }
    stream.timeline().finish();
    // A pure tone obeys x[i+1] + x[i-1] = 2 cos(w) x[i]: what is left over is distortion.
    const double twoCos = 2 * std::cos(2 * std::numbers::pi * kTone / kRate);
    double residue = 0;
    for (std::size_t i = 480000; i < 528000; ++i) {
        const auto& x = stream.left();
        residue += std::pow(x[i + 1] + x[i - 1] - twoCos * x[i], 2);
    }
    EXPECT_LT(std::sqrt(residue / 48000), 0.5 * 1e-3);
}

} // namespace
} // namespace velmo
