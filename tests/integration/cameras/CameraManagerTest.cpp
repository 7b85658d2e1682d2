#include "surfaces/CameraManager.h"

#include "platform/ffmpeg/FfmpegCameras.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "session/QtTimers.h"
#include "support/FakeMicrophones.h"
#include "support/JpegPictures.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "surfaces/SecondCameraManager.h"

#include <gmock/gmock.h>

#include <atomic>

namespace velmo::test {
namespace {

class CameraManagersTest : public testing::Test {
protected:
    QCoro::Task<void> request(CameraPort& manager, std::string camera) {
        co_await manager.configure(std::move(camera), "m");
        ++resumed;
    }
    bool configure(CameraPort& manager, std::string camera) {
        const int before = resumed;
        request(manager, std::move(camera));
        return waitUntil([&] { return resumed > before; });
    }

    FakeMicrophones microphones;
    QtTimers timers;
    int resumed = 0;
};

TEST_F(CameraManagersTest, ShowACameraAndHandItsFramesOnOnRealThreads) {
    SyntheticCameras cameras(HostClock::shared(), {});
    CameraManager manager({cameras, microphones, HostClock::shared(), timers});
    SecondCameraManager second({cameras, HostClock::shared()});
    ASSERT_TRUE(configure(manager, SyntheticCameras::kTeacher));
    EXPECT_TRUE(manager.hasVideo());
    second.configure(std::string(SyntheticCameras::kHands));
    int shown = 0;
    QObject::connect(&manager.feed(), &CameraFeed::pictureChanged, [&shown] { ++shown; });
    EXPECT_TRUE(waitUntil([&] { return shown >= 3 && second.feed().picture(); }));
    std::atomic<int> frames{0};
    manager.startFrames(true, [&frames](FrameRef) { ++frames; });
    EXPECT_TRUE(waitUntil([&] { return frames >= 3; }));
    manager.stopFrames();
    microphones.hear(-20);
    EXPECT_TRUE(waitUntil([&] { return manager.level() > 0.5; }));
    manager.stop();
    second.stop();
    EXPECT_FALSE(manager.hasVideo());
    EXPECT_TRUE(waitUntil([&] { return !manager.feed().picture() && !second.feed().picture(); }));
}

TEST_F(CameraManagersTest, OpenACameraThatEndedAgainAndAgain) {
    const TemporaryFolder folder;
    const Bytes picture = jpegPicture(64, 48, 90);
    const auto file = folder.write("a.mjpeg", std::string(picture.begin(), picture.end()));
    FfmpegCameras cameras(HostClock::shared(), {{{"file", "File"}, "mjpeg", "file:" + file.string()}}, folder);
    CameraManager manager({cameras, microphones, HostClock::shared(), timers});
    std::atomic<int> pictures{0};
    ASSERT_TRUE(configure(manager, "file"));
    manager.startFrames(false, [&pictures](FrameRef) { ++pictures; });
    EXPECT_TRUE(waitUntil([&] { return pictures >= 3; })) << "one for each time that it was opened";
    EXPECT_TRUE(manager.hasVideo());
    EXPECT_TRUE(manager.feed().picture());
}

TEST_F(CameraManagersTest, GoFromCameraToCameraWithoutWaitingForAnybody) {
    SyntheticCameras cameras(HostClock::shared(), {});
    for (int round = 0; round < 5; ++round) {
        CameraManager manager({cameras, microphones, HostClock::shared(), timers});
        for (int i = 0; i < 10; ++i) {
            manager.configure(std::string(i % 2 == 0 ? SyntheticCameras::kTeacher : SyntheticCameras::kHands), "m");
            manager.startFrames(i % 3 == 0, [](FrameRef) {});
            if (i == 4) {
                manager.stop();
            }
        }
        ASSERT_TRUE(configure(manager, SyntheticCameras::kHands));
        EXPECT_TRUE(manager.hasVideo());
    }
}

} // namespace
} // namespace velmo::test
