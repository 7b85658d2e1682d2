#include "platform/JoinedCameras.h"

#include "support/FakeCameraService.h"
#include "support/ManualQueue.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace velmo::test {
namespace {

class JoinedCamerasTest : public testing::Test {
protected:
    JoinedCamerasTest() {
        real.list = {{"a", "A"}};
        other.list = {{"b", "B"}};
    }

    FakeCameraService real;
    FakeCameraService other;
    JoinedCameras joined{{&real, &other}};
    ManualQueue queue;
};

TEST_F(JoinedCamerasTest, ThoseOfTheFirstServiceComeFirst) {
    EXPECT_THAT(joined.cameras(), ElementsAre(CameraDevice{"a", "A"}, CameraDevice{"b", "B"}));
    EXPECT_EQ(joined.defaultCamera()->uniqueID, "a");
    real.list.clear();
    EXPECT_EQ(joined.defaultCamera()->uniqueID, "b");
    other.list.clear();
    EXPECT_FALSE(joined.defaultCamera());
}

TEST_F(JoinedCamerasTest, ChangesOfAllAreHeardUntilTheWatchIsLetGo) {
    int news = 0;
    std::shared_ptr<void> watch = joined.watchDevices([&news] { ++news; });
    real.plug();
    other.plug();
    EXPECT_EQ(news, 2);
    watch.reset();
    real.plug();
    EXPECT_EQ(news, 2);
}

TEST_F(JoinedCamerasTest, TellsWhyTheServiceThatHasTheCameraRefusesIt) {
    real.refusing = {"a"};
    other.refusing = {"a"};
    const auto opened = joined.open("a", queue, {});
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().code, CameraService::kErrorBusy);
}

TEST(JoinedNothing, HasNoCameraAndOpensNone) {
    JoinedCameras none({});
    ManualQueue queue;
    EXPECT_TRUE(none.cameras().empty());
    EXPECT_EQ(none.open("a", queue, {}).error().code, CameraService::kErrorNoDevice);
}

} // namespace
} // namespace velmo::test
