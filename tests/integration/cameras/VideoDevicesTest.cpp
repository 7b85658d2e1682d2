#include "FakeVideoDevice.h"
#include "PictureLog.h"
#include "platform/ffmpeg/FfmpegCameras.h"
#include "session/QtTimers.h"
#include "support/FakeMicrophones.h"
#include "support/JpegPictures.h"
#include "support/TemporaryFolder.h"
#include "surfaces/CameraManager.h"

#include <gmock/gmock.h>

#include <atomic>
#include <optional>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

constexpr const char* kId = "v4l2:usb-Maker_Cam_17-video-index0";

class VideoDevicesTest : public testing::Test {
protected:
    VideoDevicesTest() {
        std::filesystem::create_directories(folder / "v4l/by-id");
        std::filesystem::create_symlink("../../video0", folder / "v4l/by-id" / "usb-Maker_Cam_17-video-index0");
        plug();
        cameras.emplace(HostClock::shared(), std::vector<FfmpegCameras::Source>(), folder);
    }
    ~VideoDevicesTest() override { stopFeeding(); }

    void plug(const std::string& node = "video0") { device.emplace(folder / node, "Maker Cam", "usb-0000:00:14.0-1"); }
    void unplug() {
        stopFeeding();
        device.reset();
    }
    /// Pictures of rising brightness, some milliseconds apart.
    void feed() {
        feeding_ = true;
        feeder_ = std::thread([this] {
            for (int level = 40; feeding_; level = level < 200 ? level + 1 : 40) {
                device->push(jpegPicture(320, 180, level));
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        });
    }
    void stopFeeding() {
        feeding_ = false;
        if (feeder_.joinable()) {
            feeder_.join();
        }
    }

    TemporaryFolder folder;
    std::optional<FakeVideoDevice> device;
    std::optional<FfmpegCameras> cameras;
    PictureLog log;

private:
    std::atomic<bool> feeding_{false};
    std::thread feeder_;
};

TEST_F(VideoDevicesTest, ACameraIsListedUnderItsLastingName) {
    EXPECT_TRUE(waitUntil([&] { return !cameras->cameras().empty(); }));
    EXPECT_THAT(cameras->cameras(), ElementsAre(CameraDevice{kId, "Maker Cam"}));
    EXPECT_EQ(cameras->defaultCamera()->uniqueID, kId);
}

TEST_F(VideoDevicesTest, PicturesCarryTheTimesOfTheDriver) {
    const auto opened = cameras->open(kId, log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok()) << opened.error().text;
    EXPECT_EQ(device->width(), 1280);
    device->push(jpegPicture(1280, 720, 120));
    ASSERT_TRUE(log.waitFor(1));
    const auto entry = log.entries().front();
    EXPECT_EQ(entry.picture->width(), 1280);
    EXPECT_NEAR(entry.picture->plane(0).row(300)[100], videoLuma(120), 2);
    EXPECT_NEAR(entry.time, device->lastStamp(), 1e-5);
}

TEST_F(VideoDevicesTest, DamagedBuffersAreLeftOut) {
    const auto opened = cameras->open(kId, log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    device->push(jpegPicture(320, 180, 80));
    ASSERT_TRUE(log.waitFor(1));
    device->push({});
    device->push(firstPart(jpegPicture(320, 180, 200), 0.4));
    device->push(Bytes(300, 7));
    device->push(jpegPicture(320, 180, 120));
    ASSERT_TRUE(log.waitFor(2));
    EXPECT_NEAR(log.entries()[1].picture->plane(0).row(100)[20], videoLuma(120), 2);
    EXPECT_THAT(log.ends(), IsEmpty());
}

TEST_F(VideoDevicesTest, ASilentCameraCanBeLetGoOf) {
    auto opened = cameras->open(kId, log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    opened.value().reset();
    EXPECT_THAT(log.entries(), IsEmpty());
}

TEST_F(VideoDevicesTest, ACameraThatIsPulledOutTellsOfItsEnd) {
    const auto opened = cameras->open(kId, log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    device->push(jpegPicture(320, 180, 80));
    ASSERT_TRUE(log.waitFor(1));
    unplug();
    EXPECT_TRUE(log.waitForEnd());
}

TEST_F(VideoDevicesTest, OneThatAnotherProgramHoldsIsBusyAndStillListed) {
    device->setBusy(true);
    const auto opened = cameras->open(kId, log.queue(), log.handlers());
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().code, CameraService::kErrorBusy);
    EXPECT_TRUE(waitUntil([&] { return !cameras->cameras().empty(); }));
}

TEST_F(VideoDevicesTest, ComingAndGoingIsHeardOf) {
    EXPECT_TRUE(waitUntil([&] { return !cameras->cameras().empty(); }));
    std::atomic<int> news{0};
    const auto watch = cameras->watchDevices([&news] { ++news; });
    unplug();
    EXPECT_TRUE(waitUntil([&] { return news == 1; }));
    EXPECT_THAT(cameras->cameras(), IsEmpty());
    plug();
    EXPECT_TRUE(waitUntil([&] { return news == 2; }));
    EXPECT_THAT(cameras->cameras(), ElementsAre(CameraDevice{kId, "Maker Cam"}));
}

class RunningCamera : public VideoDevicesTest {
protected:
    RunningCamera() {
        manager.emplace(CameraManager::Services{*cameras, microphones, HostClock::shared(), timers});
        manager->configure(std::string(kId), std::nullopt);
    }
    /// Pictures come that were not there yet.
    bool shows() {
        const FrameRef before = manager->feed().picture();
        return waitUntil([&] { return manager->feed().picture() && manager->feed().picture() != before; });
    }

    FakeMicrophones microphones;
    QtTimers timers;
    std::optional<CameraManager> manager;
};

TEST_F(RunningCamera, PulledOutAndPluggedBackComesBackByItselfAlsoWithAnotherNode) {
    feed();
    ASSERT_TRUE(shows());
    unplug();
    EXPECT_TRUE(waitUntil([&] { return cameras->cameras().empty(); }));
    const FrameRef last = manager->feed().picture();
    EXPECT_TRUE(last) << "its last picture stays";
    EXPECT_TRUE(manager->hasVideo());
    std::filesystem::remove(folder / "v4l/by-id/usb-Maker_Cam_17-video-index0");
    std::filesystem::create_symlink("../../video4", folder / "v4l/by-id" / "usb-Maker_Cam_17-video-index0");
    plug("video4");
    feed();
    EXPECT_TRUE(shows());
}

TEST_F(RunningCamera, ThatFallsSilentIsOpenedAgain) {
    feed();
    ASSERT_TRUE(shows());
    stopFeeding();
    EXPECT_TRUE(waitUntil([&] { return device->starts() >= 2; }));
    EXPECT_TRUE(manager->feed().picture());
    feed();
    EXPECT_TRUE(shows());
}

TEST_F(RunningCamera, ThatBecomesFreeIsShown) {
    device->setBusy(true);
    manager->stop();
    manager->configure(std::string(kId), std::nullopt);
    feed();
    pass(std::chrono::milliseconds(600));
    EXPECT_FALSE(manager->hasVideo());
    device->setBusy(false);
    EXPECT_TRUE(shows());
    EXPECT_TRUE(waitUntil([&] { return manager->hasVideo(); }));
}

} // namespace
} // namespace velmo::test
