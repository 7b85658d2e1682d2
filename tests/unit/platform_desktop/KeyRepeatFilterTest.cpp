#include "platform/desktop/KeyRepeatFilter.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr std::uint8_t kG = 42;
constexpr std::uint8_t kF = 41;

TEST(KeyRepeatFilter, AHeldKeyFiresOnceThoughEachRepeatBringsAReleaseOfTheSameTime) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    for (std::uint32_t time = 1600; time < 3000; time += 40) {
        filter.release(kG, time);
        EXPECT_FALSE(filter.isFirstPress(kG, time));
    }
}

TEST(KeyRepeatFilter, AHeldKeyFiresOnceThoughNoRepeatBringsARelease) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    for (std::uint32_t time = 1600; time < 6000; time += 40) {
        EXPECT_FALSE(filter.isFirstPress(kG, time));
    }
}

TEST(KeyRepeatFilter, ASecondPressAfterTheReleaseFiresAgain) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    filter.release(kG, 1080);
    EXPECT_TRUE(filter.isFirstPress(kG, 1081));
}

TEST(KeyRepeatFilter, OneKeysRepeatsDoNotHideAnotherKeysPress) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    filter.release(kG, 1600);
    EXPECT_TRUE(filter.isFirstPress(kF, 1600));
    EXPECT_FALSE(filter.isFirstPress(kG, 1600));
}

TEST(KeyRepeatFilter, AKeyWhoseReleaseWasLostFiresAgainAfterAWhile) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    EXPECT_TRUE(filter.isFirstPress(kG, 3001));
}

TEST(KeyRepeatFilter, AForgottenKeyFiresAtOnce) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 1000));
    filter.forget(kG);
    EXPECT_TRUE(filter.isFirstPress(kG, 1100));
}

TEST(KeyRepeatFilter, TheWrapOfTheServersClockIsNoRelease) {
    KeyRepeatFilter filter;
    EXPECT_TRUE(filter.isFirstPress(kG, 0xfffffff0U));
    EXPECT_FALSE(filter.isFirstPress(kG, 0x00000200U));
}

} // namespace
} // namespace velmo
