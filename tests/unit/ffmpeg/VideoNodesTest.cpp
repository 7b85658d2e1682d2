#include "platform/ffmpeg/internal/VideoNodes.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::internal {
namespace {

class VideoNodesTest : public testing::Test {
protected:
    void plug(const std::string& node, NodeFacts facts) {
        folder.write(node);
        facts_[node] = std::move(facts);
    }
    void name(const std::string& link, const std::string& node) {
        std::filesystem::create_directories(folder / "v4l/by-id");
        std::filesystem::create_symlink("../../" + node, folder / "v4l/by-id" / link);
    }
    std::vector<VideoNode> find() {
        return findVideoNodes(folder, [this](const std::filesystem::path& node) {
            const auto known = facts_.find(node.filename().string());
            return known == facts_.end() ? std::nullopt : std::optional(known->second);
        });
    }
    std::vector<CameraDevice> devices() {
        std::vector<CameraDevice> all;
        for (const VideoNode& node : find()) {
            all.push_back(node.device);
        }
        return all;
    }

    const std::vector<CameraMode> modes{{"mjpeg", 1280, 720, 30}};
    test::TemporaryFolder folder;

private:
    std::map<std::string, NodeFacts> facts_;
};

TEST_F(VideoNodesTest, ACameraIsKnownByTheNameThatLastsOverTheNodesNumber) {
    plug("video0", {"HD Cam", "usb-1", modes});
    name("usb-Maker_HD_Cam_17-video-index0", "video0");
    EXPECT_THAT(devices(), ElementsAre(CameraDevice{"v4l2:usb-Maker_HD_Cam_17-video-index0", "HD Cam"}));
}

TEST_F(VideoNodesTest, WithoutSuchANameBusAndModelTellItApart) {
    plug("video0", {"HD Cam", "usb-1", modes});
    plug("video2", {"HD Cam", "usb-2", modes});
    EXPECT_THAT(devices(),
                ElementsAre(CameraDevice{"v4l2:usb-1:HD Cam", "HD Cam"}, CameraDevice{"v4l2:usb-2:HD Cam", "HD Cam"}));
}

TEST_F(VideoNodesTest, TwoCamerasOfOneDeviceHaveTwoIds) {
    plug("video0", {"Twin", "usb-1", modes});
    plug("video1", {"Twin", "usb-1", modes});
    EXPECT_THAT(devices(),
                ElementsAre(CameraDevice{"v4l2:usb-1:Twin", "Twin"}, CameraDevice{"v4l2:usb-1:Twin:2", "Twin"}));
}

TEST_F(VideoNodesTest, NodesThatGiveNoPictureAreNoCameras) {
    plug("video0", {"HD Cam", "usb-1", modes});
    plug("video1", {"HD Cam: metadata", "usb-1", {}});
    folder.write("video2"); // does not answer
    folder.write("video");
    folder.write("video1x");
    folder.write("media0");
    ASSERT_THAT(find(), testing::SizeIs(1));
    EXPECT_EQ(find().front().path.filename(), "video0");
    EXPECT_EQ(find().front().mode, modes.front());
}

TEST_F(VideoNodesTest, TheyComeByTheNumbersOfTheirNodes) {
    plug("video10", {"Ten", "c", modes});
    plug("video2", {"Two", "b", modes});
    EXPECT_THAT(devices(), ElementsAre(CameraDevice{"v4l2:b:Two", "Two"}, CameraDevice{"v4l2:c:Ten", "Ten"}));
}

TEST_F(VideoNodesTest, AFolderThatIsNotThereHasNone) {
    EXPECT_THAT(findVideoNodes("/nowhere/at/all", &probeVideoNode), IsEmpty());
}

TEST_F(VideoNodesTest, AFileThatIsNoDeviceDoesNotAnswer) {
    folder.write("video0");
    EXPECT_THAT(findVideoNodes(folder, &probeVideoNode), IsEmpty());
}

} // namespace
} // namespace velmo::internal
