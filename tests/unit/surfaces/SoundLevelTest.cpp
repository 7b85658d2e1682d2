#include "surfaces/SoundLevel.h"

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

namespace velmo {
namespace {

std::vector<float> tone(double decibels) {
    return std::vector<float>(960, static_cast<float>(std::pow(10, decibels / 20)));
}

TEST(SoundLevel, RunsFromMinusFiftyToMinusEightDecibels) {
    EXPECT_EQ(soundLevel(tone(-8)), 1);
    EXPECT_EQ(soundLevel(tone(0)), 1);
    EXPECT_EQ(soundLevel(tone(-60)), 0);
    EXPECT_NEAR(soundLevel(tone(-29)), 0.5, 1e-3);
    EXPECT_NEAR(soundLevel(tone(-50)), 0, 1e-3);
    EXPECT_EQ(soundLevel(std::vector<float>(960, 0.0F)), 0);
    EXPECT_EQ(soundLevel({}), 0);
}

TEST(SoundLevel, HearsTheFirstChannelOnly) {
    std::vector<float> right(960, 0.0F);
    for (std::size_t i = 1; i < right.size(); i += 2) {
        right[i] = 1;
    }
    EXPECT_EQ(soundLevel(right), 0);
}

} // namespace
} // namespace velmo
