#include "surfaces/CameraManager.h"

#include "CameraWorld.h"

#include <optional>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

constexpr const char* kQueue = "velmo.camera";
constexpr const char* kFrames = "velmo.camera.cuadros";

class CameraManagerTest : public CameraWorld {
protected:
    CameraManagerTest() {
        manager.emplace(CameraManager::Services{cameras, microphones, clock, timers, queues.maker()});
        QObject::connect(&*manager, &CameraManager::hasVideoChanged, [this] { ++videoNews; });
        QObject::connect(&*manager, &CameraManager::levelChanged, [this] { levels.push_back(manager->level()); });
    }

    QCoro::Task<void> request(std::optional<std::string> camera, std::optional<std::string> microphone) {
        co_await manager->configure(std::move(camera), std::move(microphone));
        ++resumed;
    }
    void configure(std::optional<std::string> camera, std::optional<std::string> microphone = {}) {
        request(std::move(camera), std::move(microphone));
        settle();
    }
    void deliver(FrameRef frame) {
        cameras.deliver("a", std::move(frame));
        settle();
    }
    void hear(double decibels) {
        microphones.hear(decibels);
        settle();
    }

    std::optional<CameraManager> manager;
    int resumed = 0;
    int videoNews = 0;
    std::vector<double> levels;
};

TEST_F(CameraManagerTest, HasItsThreeQueues) {
    EXPECT_TRUE(queues.has(kQueue));
    EXPECT_TRUE(queues.has("velmo.camera.audio"));
    EXPECT_TRUE(queues.has(kFrames));
    EXPECT_EQ(queues.count(), 3U);
}

TEST_F(CameraManagerTest, ResumesWhenTheDevicesAreAsAskedForAndTellsOfTheVideo) {
    request("a", "m");
    EXPECT_EQ(resumed, 0);
    EXPECT_FALSE(manager->hasVideo());
    settle();
    EXPECT_EQ(resumed, 1);
    EXPECT_TRUE(manager->hasVideo());
    EXPECT_EQ(videoNews, 1);
    EXPECT_THAT(cameras.running(), ElementsAre("a"));
    EXPECT_THAT(microphones.running(), ElementsAre("m"));
}

TEST_F(CameraManagerTest, TheSameTwoDevicesDoNotInterruptTheSessionAndStillResumeTheCaller) {
    configure("a", "m");
    cameras.takenCalls();
    configure("a", "m");
    EXPECT_THAT(cameras.calls, IsEmpty());
    EXPECT_EQ(resumed, 2);
    EXPECT_TRUE(manager->hasVideo());
}

TEST_F(CameraManagerTest, NeitherDeviceStopsTheSessionAndTakesVideoAndLevelDown) {
    configure("a", "m");
    hear(-29);
    deliver(picture());
    EXPECT_GT(manager->level(), 0);
    configure({}, {});
    EXPECT_THAT(cameras.running(), IsEmpty());
    EXPECT_THAT(microphones.running(), IsEmpty());
    EXPECT_FALSE(manager->hasVideo());
    EXPECT_EQ(manager->level(), 0);
    EXPECT_FALSE(manager->feed().picture());
}

TEST_F(CameraManagerTest, AMicrophoneWithoutACameraRunsTheSession) {
    configure({}, "m");
    EXPECT_FALSE(manager->hasVideo());
    hear(-29);
    EXPECT_NEAR(manager->level(), 0.5, 1e-3);
}

TEST_F(CameraManagerTest, AChannelAtMinusEightGivesExactlyOneAndAtMinusFiftyExactlyZero) {
    configure({}, "m");
    hear(-7.99);
    EXPECT_EQ(manager->level(), 1);
    clock.advance(1);
    hear(-50.01);
    EXPECT_EQ(manager->level(), 0);
}

TEST_F(CameraManagerTest, AMicrophoneThatFallsSilentForGoodIsNotLoudAnyMore) {
    configure({}, "m");
    hear(-20);
    EXPECT_GT(manager->level(), 0.5);
    timers.advance(1.1); // unplugged: nothing more comes
    EXPECT_EQ(manager->level(), 0);
    hear(-20);
    EXPECT_GT(manager->level(), 0.5) << "plugged back";
}

TEST_F(CameraManagerTest, AtMostTwentyLevelsASecondReachTheMainThread) {
    configure({}, "m");
    for (int i = 0; i < 50; ++i) { // a second of 20 ms
        hear(-40 + i % 7);
        clock.advance(0.02);
    }
    EXPECT_LE(levels.size(), 20U);
    EXPECT_GE(levels.size(), 16U);
}

TEST_F(CameraManagerTest, ALevelThatComesAfterTheStopIsNotPublished) {
    configure("a", "m");
    microphones.hear(-10);
    queues.runAll(); // measured, not told yet
    manager->stop();
    EXPECT_FALSE(manager->hasVideo()) << "at once";
    settle();
    EXPECT_EQ(manager->level(), 0);
    EXPECT_THAT(cameras.running(), IsEmpty());
    EXPECT_THAT(microphones.running(), IsEmpty());
}

TEST_F(CameraManagerTest, AStopDuringARequestResumesTheCallerWithoutVideo) {
    request("a", "m");
    manager->stop();
    settle();
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(manager->hasVideo());
    EXPECT_THAT(cameras.running(), IsEmpty());
}

TEST_F(CameraManagerTest, OfTwoRequestsAtOnceTheLaterOneHolds) {
    request("a", {});
    request("b", {});
    settle();
    EXPECT_EQ(resumed, 2);
    EXPECT_THAT(cameras.running(), ElementsAre("b"));
    EXPECT_TRUE(manager->hasVideo());
}

TEST_F(CameraManagerTest, AMicrophoneThatCannotBeOpenedIsLeftOutWithoutAWord) {
    microphones.refuses = true;
    configure("a", "m");
    EXPECT_EQ(resumed, 1);
    EXPECT_TRUE(manager->hasVideo());
    EXPECT_EQ(manager->level(), 0);
}

TEST_F(CameraManagerTest, APictureIsHandedOnWithoutACopy) {
    configure("a");
    std::vector<FrameRef> taken;
    manager->startFrames(false, [&taken](FrameRef frame) { taken.push_back(std::move(frame)); });
    settle();
    const FrameRef frame = picture();
    deliver(frame);
    EXPECT_THAT(taken, ElementsAre(frame));
    EXPECT_EQ(manager->feed().picture(), frame);
}

TEST_F(CameraManagerTest, MirroredFramesHaveLeftAndRightExchangedAndThePreviewDoesNot) {
    configure("a");
    FrameRef taken;
    manager->startFrames(true, [&taken](FrameRef frame) { taken = std::move(frame); });
    settle();
    const FrameRef frame = picture();
    for (int x = 0; x < 64; ++x) {
        frame->plane(0).row(3)[x] = static_cast<std::uint8_t>(x);
    }
    deliver(frame);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->plane(0).row(3)[0], 63);
    EXPECT_EQ(taken->plane(0).row(3)[63], 0);
    EXPECT_EQ(manager->feed().picture(), frame);
}

TEST_F(CameraManagerTest, ASecondStartOfFramesKeepsOneOutputAndReplacesTheCustomer) {
    configure("a");
    int first = 0;
    int second = 0;
    manager->startFrames(false, [&first](FrameRef) { ++first; });
    settle();
    deliver(picture());
    manager->startFrames(false, [&second](FrameRef) { ++second; });
    settle();
    deliver(picture());
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    EXPECT_THAT(cameras.running(), ElementsAre("a"));
}

TEST_F(CameraManagerTest, NoFrameReachesTheCustomerAfterTheStopHasTakenEffect) {
    configure("a");
    int frames = 0;
    manager->startFrames(false, [&frames](FrameRef) { ++frames; });
    settle();
    manager->stopFrames();
    queues[kQueue].run();
    deliver(picture());
    EXPECT_EQ(frames, 0);
    EXPECT_TRUE(manager->feed().picture()) << "the preview goes on";
}

TEST_F(CameraManagerTest, AnotherCameraTakesTheOutputOfFramesAway) {
    configure("a");
    int frames = 0;
    manager->startFrames(false, [&frames](FrameRef) { ++frames; });
    configure("b");
    cameras.deliver("b", picture());
    settle();
    EXPECT_EQ(frames, 0);
}

TEST_F(CameraManagerTest, ACameraThatEndsIsOpenedAgainAfterThreeTenthsOfASecond) {
    configure("a");
    deliver(picture());
    const FrameRef last = manager->feed().picture();
    cameras.takenCalls();
    cameras.end("a");
    settle();
    EXPECT_THAT(cameras.takenCalls(), ElementsAre("close a"));
    EXPECT_EQ(queues[kQueue].timerInterval(), 0.3);
    EXPECT_EQ(manager->feed().picture(), last);
    EXPECT_TRUE(manager->hasVideo());
    advance(kQueue, 0.3, 0.3);
    EXPECT_THAT(cameras.takenCalls(), ElementsAre("open a"));
}

TEST_F(CameraManagerTest, AfterAStopNothingIsOpenedAgain) {
    configure("a");
    cameras.end("a");
    settle();
    manager->stop();
    settle();
    cameras.takenCalls();
    advance(kQueue, 10, 0.5);
    cameras.plug();
    settle();
    advance(kQueue, 10, 0.5);
    EXPECT_THAT(cameras.calls, IsEmpty());
}

TEST_F(CameraManagerTest, TheEndOfAnEarlierStreamDoesNotCloseTheNextOne) {
    configure("a");
    cameras.end("a");
    queues[kFrames].run(); // told to the queue, not heard yet
    manager->stop();
    request("a", {});
    settle();
    EXPECT_THAT(cameras.running(), ElementsAre("a"));
}

TEST_F(CameraManagerTest, ACameraWithoutAPictureForTwoSecondsIsOpenedAgainAndItsLastPictureStays) {
    configure("a");
    deliver(picture());
    const FrameRef last = manager->feed().picture();
    cameras.takenCalls();
    advance(kQueue, 1.5, 0.5);
    EXPECT_THAT(cameras.calls, IsEmpty());
    advance(kQueue, 0.5, 0.5);
    EXPECT_THAT(cameras.takenCalls(), ElementsAre("close a", "open a"));
    EXPECT_EQ(manager->feed().picture(), last);
    cameras.refusing = {"a"};
    advance(kQueue, 60, 0.5);
    EXPECT_THAT(cameras.calls, testing::Contains("open a").Times(testing::Ge(5)));
    EXPECT_EQ(manager->feed().picture(), last);
    cameras.refusing.clear();
    advance(kQueue, 10, 0.5);
    EXPECT_THAT(cameras.running(), ElementsAre("a"));
    const FrameRef next = picture();
    deliver(next);
    EXPECT_EQ(manager->feed().picture(), next);
}

TEST_F(CameraManagerTest, ACameraOfFivePicturesASecondIsLeftAlone) {
    configure("a");
    for (int i = 0; i < 50; ++i) {
        deliver(picture());
        advance(kQueue, 0.2, 0.1);
    }
    EXPECT_THAT(cameras.calls, ElementsAre("open a"));
}

TEST_F(CameraManagerTest, ACameraThatTakesFourSecondsToItsFirstPictureIsLeftAlone) {
    configure("a");
    advance(kQueue, 4, 0.5);
    deliver(picture());
    advance(kQueue, 1, 0.5);
    EXPECT_THAT(cameras.calls, ElementsAre("open a"));
}

TEST_F(CameraManagerTest, ACameraHeldByAnotherProgramIsNoVideoAndIsTriedAgainUntilItIsFree) {
    cameras.refusing = {"a"};
    configure("a");
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(manager->hasVideo());
    advance(kQueue, 5, 0.5);
    EXPECT_FALSE(manager->hasVideo());
    cameras.refusing.clear();
    advance(kQueue, 10, 0.5);
    EXPECT_TRUE(manager->hasVideo());
    EXPECT_EQ(videoNews, 1);
}

TEST_F(CameraManagerTest, ACameraPulledOutAndPluggedBackComesBackByItself) {
    configure("a");
    deliver(picture());
    cameras.refusing = {"a"};
    cameras.end("a");
    settle();
    advance(kQueue, 30, 0.5);
    EXPECT_THAT(cameras.running(), IsEmpty());
    cameras.refusing.clear();
    cameras.plug();
    settle();
    EXPECT_EQ(queues[kQueue].timerInterval(), 0.3) << "at once, not at the next attempt";
    advance(kQueue, 0.3, 0.3);
    EXPECT_THAT(cameras.running(), ElementsAre("a"));
}

TEST_F(CameraManagerTest, AnotherCameraPluggedInDoesNotDisturbARunningOne) {
    configure("a");
    deliver(picture());
    cameras.takenCalls();
    cameras.plug();
    settle();
    deliver(picture());
    advance(kQueue, 1, 0.5);
    EXPECT_THAT(cameras.calls, IsEmpty());
}

TEST_F(CameraManagerTest, PicturesOfAnotherSizeGoOnBothMirroredAndNot) {
    configure("a");
    std::vector<int> widths;
    manager->startFrames(true, [&widths](FrameRef frame) { widths.push_back(frame->width()); });
    settle();
    deliver(picture(64, 36));
    deliver(picture(160, 120));
    EXPECT_THAT(widths, ElementsAre(64, 160));
    EXPECT_EQ(manager->feed().picture()->width(), 160);
}

TEST_F(CameraManagerTest, EndsInTheMiddleOfARequest) {
    request("a", "m");
    manager.reset();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(resumed, 1);
    EXPECT_THAT(cameras.running(), IsEmpty());
    EXPECT_THAT(microphones.running(), IsEmpty());
}

} // namespace
} // namespace velmo::test
