#include "surfaces/SecondCameraManager.h"

#include "CameraWorld.h"

#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

constexpr const char* kQueue = "velmo.camera2";

class SecondCameraManagerTest : public CameraWorld {
protected:
    SecondCameraManagerTest() { manager.emplace(SecondCameraManager::Services{cameras, clock, queues.maker()}); }

    QCoro::Task<void> request(std::optional<std::string> camera) {
        co_await manager->configure(std::move(camera));
        ++resumed;
    }
    void configure(std::optional<std::string> camera) {
        request(std::move(camera));
        settle();
    }

    std::optional<SecondCameraManager> manager;
    int resumed = 0;
};

TEST_F(SecondCameraManagerTest, HasOneQueueAndShowsItsCamera) {
    EXPECT_TRUE(queues.has(kQueue));
    EXPECT_EQ(queues.count(), 1U);
    configure("b");
    EXPECT_EQ(resumed, 1);
    const FrameRef frame = picture();
    cameras.deliver("b", frame);
    settle();
    EXPECT_EQ(manager->feed().picture(), frame);
}

TEST_F(SecondCameraManagerTest, TheSameCameraAgainChangesNothingAndResumesTheCaller) {
    configure("b");
    configure("b");
    EXPECT_THAT(cameras.calls, ElementsAre("open b"));
    EXPECT_EQ(resumed, 2);
}

TEST_F(SecondCameraManagerTest, NoCameraAndAStopCloseIt) {
    configure("b");
    configure({});
    EXPECT_THAT(cameras.running(), IsEmpty());
    configure("b");
    manager->stop();
    settle();
    EXPECT_THAT(cameras.running(), IsEmpty());
    configure("b");
    EXPECT_THAT(cameras.running(), ElementsAre("b")) << "the id is forgotten";
}

TEST_F(SecondCameraManagerTest, IsOpenedAgainWhenItStopsToDeliver) {
    configure("b");
    cameras.deliver("b", picture());
    settle();
    advance(kQueue, 2, 0.5);
    EXPECT_THAT(cameras.calls, ElementsAre("open b", "close b", "open b"));
    EXPECT_TRUE(manager->feed().picture());
}

} // namespace
} // namespace velmo::test
