#include "platform/synthetic/SyntheticCameras.h"

#include "PictureLog.h"

#include <gmock/gmock.h>

#include <cmath>

namespace velmo::test {
namespace {

class SyntheticCamerasTest : public testing::TestWithParam<const char*> {
protected:
    static int counterIn(const PixelBuffer& picture) {
        int value = 0;
        for (int bit = 0; bit < 24; ++bit) {
            value = value << 1 | (picture.plane(0).row(8)[(bit + 2) * 16 + 8] > 125 ? 1 : 0);
        }
        return value;
    }

    PictureLog log;
};

TEST_P(SyntheticCamerasTest, DeliversNumberedPicturesOnTheClocksGrid) {
    SyntheticCameras cameras(HostClock::shared(), {});
    const auto opened = cameras.open(GetParam(), log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    ASSERT_TRUE(log.waitFor(12));
    int number = -1;
    for (const auto& entry : log.entries()) {
        EXPECT_EQ(entry.picture->width(), 1280);
        EXPECT_EQ(entry.picture->height(), 720);
        EXPECT_NEAR(entry.time * 30, std::round(entry.time * 30), 1e-3);
        EXPECT_GE(entry.come, entry.time);
        EXPECT_GT(counterIn(*entry.picture), number);
        number = counterIn(*entry.picture);
    }
}

INSTANTIATE_TEST_SUITE_P(Both, SyntheticCamerasTest,
                         testing::Values(SyntheticCameras::kTeacher, SyntheticCameras::kHands));

TEST(SyntheticCameras, CanBothRunAndEndAtAnyTime) {
    SyntheticCameras cameras(HostClock::shared(), {});
    PictureLog log;
    auto teacher = cameras.open(SyntheticCameras::kTeacher, log.queue(), log.handlers());
    auto hands = cameras.open(SyntheticCameras::kHands, log.queue(), log.handlers());
    ASSERT_TRUE(log.waitFor(4));
    teacher.value().reset();
    hands.value().reset();
    const std::size_t count = log.entries().size();
    log.queue().sync([] {});
    EXPECT_EQ(log.entries().size(), count);
    EXPECT_EQ(cameras.open("other", log.queue(), log.handlers()).error().code, CameraService::kErrorNoDevice);
}

} // namespace
} // namespace velmo::test
