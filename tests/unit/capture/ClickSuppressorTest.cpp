#include "capture/ClickSuppressor.h"

#include "capture/internal/ClickDuck.h"
#include "support/Samples.h"

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo {
namespace {

using internal::clickGain;
using internal::duckClicks;
using test::sound;

constexpr double kRate = 48000;

TEST(ClickGain, IsLowestFromTheBeginningToTheEndOfTheDuck) {
    const std::array clicks{10.0};
    EXPECT_DOUBLE_EQ(clickGain(10.0 - 0.012, clicks), 0.08);
    EXPECT_DOUBLE_EQ(clickGain(10.0, clicks), 0.08);
    EXPECT_DOUBLE_EQ(clickGain(10.0 + 0.085, clicks), 0.08);
}

TEST(ClickGain, IsHalfWayInTheMiddleOfTheFades) {
    const std::array clicks{10.0};
    EXPECT_NEAR(clickGain(10.0 - 0.012 - 0.003, clicks), 0.54, 1e-9);
    EXPECT_NEAR(clickGain(10.0 + 0.085 + 0.003, clicks), 0.54, 1e-9);
}

TEST(ClickGain, IsOneWhereTheFadesEndAndBeyond) {
    const std::array clicks{0.0};
    EXPECT_DOUBLE_EQ(clickGain(-0.012 - 0.006, clicks), 1.0);
    EXPECT_DOUBLE_EQ(clickGain(0.085 + 0.006, clicks), 1.0);
    EXPECT_DOUBLE_EQ(clickGain(-1.0, clicks), 1.0);
    EXPECT_DOUBLE_EQ(clickGain(1.0, clicks), 1.0);
}

TEST(ClickGain, OfOverlappingDucksIsTheLowerOne) {
    const std::array clicks{10.0, 10.05};
    for (double time = 10.0 - 0.012; time <= 10.05 + 0.085; time += 0.0005) {
        EXPECT_DOUBLE_EQ(clickGain(time, clicks), 0.08) << time;
    }
    EXPECT_NEAR(clickGain(10.05 + 0.085 + 0.003, clicks), 0.54, 1e-9);
}

TEST(DuckClicks, GoesNoFurtherThanThePlaneHolds) {
    std::array<float, 7> samples;
    samples.fill(1.0f);
    duckClicks(samples, 2, 100, kRate, 10.0, std::array{10.0});
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_FLOAT_EQ(samples[i], 0.08f);
    }
    EXPECT_FLOAT_EQ(samples[6], 1.0f) << "half a frame is no frame";
}

TEST(DuckClicks, GoesNoFurtherThanTheFramesOfTheSample) {
    std::array<float, 8> samples;
    samples.fill(1.0f);
    duckClicks(samples, 2, 3, kRate, 10.0, std::array{10.0});
    EXPECT_FLOAT_EQ(samples[5], 0.08f);
    EXPECT_FLOAT_EQ(samples[6], 1.0f);
}

TEST(DuckClicks, TouchesOnlyFramesNearTheEvent) {
    std::vector<float> samples(48000, 1.0f);
    duckClicks(samples, 1, 48000, kRate, 0.0, std::array{0.5});
    for (int i = 0; i < 48000; ++i) {
        const double time = i / kRate;
        const float value = samples[static_cast<std::size_t>(i)];
        if (time < 0.5 - 0.018 || time > 0.5 + 0.091) {
            ASSERT_EQ(value, 1.0f) << time;
        } else if (time > 0.5 - 0.0119 && time < 0.5 + 0.0849) {
            ASSERT_FLOAT_EQ(value, 0.08f) << time;
        }
    }
}

class ClickSuppressorTest : public testing::Test {
protected:
    ClickSuppressor clicks;
};

TEST_F(ClickSuppressorTest, SoundAwayFromAnyEventIsTheSameSample) {
    clicks.note(5.0);
    const Sample sample = sound(10.0);
    EXPECT_EQ(clicks.process(sample).audio, sample.audio);
}

TEST_F(ClickSuppressorTest, SoundNearAnEventIsAQuietCopyWithTheSameTiming) {
    clicks.note(10.005);
    const Sample sample = sound(10.0);
    const Sample quiet = clicks.process(sample);

    ASSERT_NE(quiet.audio, sample.audio);
    EXPECT_EQ(quiet.presentation(), sample.presentation());
    EXPECT_EQ(quiet.timing.duration, sample.timing.duration);
    EXPECT_EQ(quiet.audio->format(), sample.audio->format());
    EXPECT_EQ(quiet.audio->frames(), sample.audio->frames());
    for (const float value : quiet.audio->floats()) {
        ASSERT_FLOAT_EQ(value, 0.04f);
    }
    for (const float value : sample.audio->floats()) {
        ASSERT_FLOAT_EQ(value, 0.5f) << "the buffer that capture gave is never written";
    }
}

TEST_F(ClickSuppressorTest, AnEventExactlyAtTheEdgeOfThePickIsLeftAlone) {
    const Sample sample = sound(10.0);
    const double edge = 10.0 - 0.085 - 0.02;
    clicks.note(edge);
    EXPECT_EQ(clicks.process(sample).audio, sample.audio);
    clicks.note(std::nextafter(edge, 11.0));
    EXPECT_NE(clicks.process(sample).audio, sample.audio);
}

TEST_F(ClickSuppressorTest, AnEventExactlyAtTheLateEdgeOfThePickIsLeftAlone) {
    const Sample sample = sound(10.0, 480);
    const double edge = 10.0 + 480 / kRate + 0.012 + 0.02;
    clicks.note(edge);
    EXPECT_EQ(clicks.process(sample).audio, sample.audio);
    clicks.note(std::nextafter(edge, 9.0));
    EXPECT_NE(clicks.process(sample).audio, sample.audio);
}

TEST_F(ClickSuppressorTest, DoesNothingWhenItIsOff) {
    EXPECT_TRUE(clicks.enabled());
    clicks.setEnabled(false);
    clicks.note(10.0);
    const Sample sample = sound(10.0);
    EXPECT_EQ(clicks.process(sample).audio, sample.audio);
}

TEST_F(ClickSuppressorTest, SoundOfAnotherFormatPassesThrough) {
    clicks.note(10.0);
    AudioFormat whole;
    whole.sample = AudioFormat::Sample::int16;
    const Sample integers = sound(10.0, 480, 0, whole);
    EXPECT_EQ(clicks.process(integers).audio, integers.audio);

    AudioFormat timeless;
    timeless.sampleRate = 0;
    const Sample unclocked = sound(10.0, 480, 0.5f, timeless);
    EXPECT_EQ(clicks.process(unclocked).audio, unclocked.audio);
}

TEST_F(ClickSuppressorTest, EmptySoundAndPicturesPassThrough) {
    clicks.note(10.0);
    const Sample nothing = sound(10.0, 0);
    EXPECT_EQ(clicks.process(nothing).audio, nothing.audio);
    const Sample frame = test::frame(10.0);
    EXPECT_EQ(clicks.process(frame).image, frame.image);
}

TEST_F(ClickSuppressorTest, SeparateChannelsAreDuckedAlikeEachByItsOwnTime) {
    AudioFormat format;
    format.interleaved = false;
    clicks.note(10.1);
    const Sample quiet = clicks.process(sound(10.0, 9600, 1.0f, format));

    const auto samples = quiet.audio->floats();
    ASSERT_EQ(samples.size(), 2u * 9600u);
    const auto left = samples.first(9600);
    const auto right = samples.last(9600);
    EXPECT_TRUE(std::ranges::equal(left, right));
    EXPECT_FLOAT_EQ(left[0], 1.0f);
    EXPECT_FLOAT_EQ(left[4800], 0.08f);
    EXPECT_FLOAT_EQ(left[9599], 1.0f);
}

TEST_F(ClickSuppressorTest, BothChannelsOfAFrameGetTheSameGain) {
    clicks.note(10.1);
    const Sample quiet = clicks.process(sound(10.0, 9600, 1.0f));
    const auto samples = quiet.audio->floats();
    for (std::size_t i = 0; i < 9600; ++i) {
        ASSERT_EQ(samples[2 * i], samples[2 * i + 1]);
    }
    EXPECT_FLOAT_EQ(samples[2 * 4800], 0.08f);
}

TEST_F(ClickSuppressorTest, OldEventsAreForgottenOnlyWhenANewOneComes) {
    clicks.note(10.0);
    clicks.note(15.0); // exactly 5 s later: kept
    const Sample sample = sound(10.0);
    EXPECT_NE(clicks.process(sample).audio, sample.audio);
    clicks.note(15.1);
    EXPECT_EQ(clicks.process(sample).audio, sample.audio);
}

} // namespace
} // namespace velmo
