#include "platform/ffmpeg/FfmpegCameras.h"

#include "PictureLog.h"
#include "support/JpegPictures.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <set>

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace velmo::test {
namespace {

FfmpegCameras::Source graph(const std::string& text) {
    return {{"graph", "Graph"}, "lavfi", text};
}

class FfmpegCamerasTest : public testing::Test {
protected:
    FfmpegCameras::Source file(const std::string& name, const std::vector<Bytes>& pictures) {
        std::string all;
        for (const Bytes& picture : pictures) {
            all.append(picture.begin(), picture.end());
        }
        return {{"file", "File"}, "mjpeg", "file:" + folder.write(name, all).string()};
    }
    /// Even brightness of the left half of each picture, in the order in which they came.
    std::vector<int> levels() const {
        std::vector<int> all;
        for (const auto& entry : log.entries()) {
            all.push_back(entry.picture->plane(0).row(5)[9]);
        }
        return all;
    }

    TemporaryFolder folder;
    PictureLog log;
};

TEST_F(FfmpegCamerasTest, AFilterGraphPlaysInRealTimeOnTheHostClock) {
    FfmpegCameras cameras(HostClock::shared(), {graph("testsrc2=size=640x360:rate=30")}, folder);
    const auto opened = cameras.open("graph", log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    ASSERT_TRUE(log.waitFor(15));
    double before = 0;
    for (const auto& entry : log.entries()) {
        EXPECT_EQ(entry.picture->format(), PixelFormat::nv12);
        EXPECT_EQ(entry.picture->width(), 640);
        EXPECT_EQ(entry.picture->height(), 360);
        EXPECT_GE(entry.come, entry.time) << "not before its time";
        if (before > 0) {
            const double pictures = (entry.time - before) * 30;
            EXPECT_NEAR(pictures, std::round(pictures), 0.01);
            EXPECT_GT(pictures, 0.5);
        }
        before = entry.time;
    }
}

TEST_F(FfmpegCamerasTest, NothingComesAfterTheStreamIsLetGo) {
    FfmpegCameras cameras(HostClock::shared(), {graph("testsrc2=size=320x180:rate=200")}, folder);
    auto opened = cameras.open("graph", log.queue(), log.handlers());
    ASSERT_TRUE(log.waitFor(3));
    opened.value().reset();
    const std::size_t count = log.entries().size();
    log.queue().sync([] {});
    EXPECT_THAT(log.entries(), SizeIs(count));
}

TEST_F(FfmpegCamerasTest, AFileThatIsOverTellsOfItsEndAfterItsLastPicture) {
    FfmpegCameras cameras(HostClock::shared(), {file("a.mjpeg", {jpegPicture(64, 48, 50), jpegPicture(64, 48, 90)})},
                          folder);
    const auto opened = cameras.open("file", log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    ASSERT_TRUE(log.waitForEnd());
    EXPECT_THAT(log.ends(), SizeIs(1));
    EXPECT_EQ(log.ends().front().code, CameraService::kErrorEnded);
    EXPECT_THAT(levels(),
                testing::Contains(testing::AllOf(testing::Ge(videoLuma(90) - 2), testing::Le(videoLuma(90) + 2))));
}

TEST_F(FfmpegCamerasTest, OfACorruptFileOnlyWholePicturesAreSeen) {
    std::vector<Bytes> pictures;
    for (int i = 0; i < 30; ++i) {
        const Bytes good = jpegPicture(320, 240, i % 3 == 1 ? 200 : 100);
        pictures.push_back(i % 3 == 1 ? firstPart(good, 0.2 + 0.02 * i) : good);
    }
    FfmpegCameras cameras(HostClock::shared(), {file("corrupt.mjpeg", pictures)}, folder);
    const auto opened = cameras.open("file", log.queue(), log.handlers());
    ASSERT_TRUE(opened.ok());
    ASSERT_TRUE(log.waitForEnd());
    EXPECT_GE(levels().size(), 5U);
    EXPECT_THAT(levels(), Each(testing::AllOf(testing::Ge(videoLuma(100) - 2), testing::Le(videoLuma(100) + 2))));
    for (const auto& entry : log.entries()) { // also below the cut
        EXPECT_NEAR(entry.picture->plane(0).row(235)[9], videoLuma(100), 2);
    }
}

TEST_F(FfmpegCamerasTest, ACameraMayChangeItsSize) {
    std::vector<Bytes> pictures;
    for (int i = 0; i < 24; ++i) {
        pictures.push_back(i / 8 == 1 ? jpegPicture(320, 240, 80) : jpegPicture(640, 360, 80));
    }
    FfmpegCameras cameras(HostClock::shared(), {file("sizes.mjpeg", pictures)}, folder);
    const auto opened = cameras.open("file", log.queue(), log.handlers());
    ASSERT_TRUE(log.waitForEnd());
    std::vector<int> widths;
    for (const auto& entry : log.entries()) {
        if (widths.empty() || widths.back() != entry.picture->width()) {
            widths.push_back(entry.picture->width());
        }
    }
    EXPECT_THAT(widths, ElementsAre(640, 320, 640));
}

TEST_F(FfmpegCamerasTest, WhatIsNoVideoIsAnErrorAndSoIsAnUnknownId) {
    const std::string text = folder.write("notes.txt", "no picture in here").string();
    FfmpegCameras cameras(HostClock::shared(),
                          {{{"text", "Text"}, "", text}, {{"gone", "Gone"}, "", folder / "no.mp4"}}, folder);
    EXPECT_EQ(cameras.open("text", log.queue(), log.handlers()).error().code, CameraService::kErrorNoPicture);
    EXPECT_EQ(cameras.open("gone", log.queue(), log.handlers()).error().code, CameraService::kErrorNoDevice);
    EXPECT_EQ(cameras.open("unknown", log.queue(), log.handlers()).error().code, CameraService::kErrorNoDevice);
}

TEST_F(FfmpegCamerasTest, SourcesAreListedBehindTheDevices) {
    const FfmpegCameras cameras(HostClock::shared(), {graph("nullsrc")}, folder);
    EXPECT_THAT(cameras.cameras(), ElementsAre(CameraDevice{"graph", "Graph"}));
    EXPECT_EQ(cameras.defaultCamera()->uniqueID, "graph");
}

} // namespace
} // namespace velmo::test
