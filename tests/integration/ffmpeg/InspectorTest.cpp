#include "Material.h"
#include "Probe.h"

#include "platform/ffmpeg/FfmpegAssetInspector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sys/stat.h>

namespace velmo {
namespace {

using namespace test;

std::vector<std::uint8_t> greyOf(const FrameRef& picture) {
    const PlaneView plane = picture->plane(0);
    std::vector<std::uint8_t> grey;
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            grey.push_back(plane.row(y)[x * 4 + 1]);
        }
    }
    return grey;
}

unsigned numberIn(const FrameRef& picture) {
    return test::numberIn(greyOf(picture).data(), picture->width(), picture->height());
}

class Inspecting : public testing::Test {
protected:
    void write(const std::string& name, const std::string& bytes) {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }
    std::string bytesOf(const std::string& name) {
        std::ifstream stream(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// Neither question has an answer, and none takes long.
    void expectNothingIn(const std::string& name) {
        EXPECT_FALSE(inspector_.duration(folder_ / name)) << name;
        const auto image = inspector_.image(folder_ / name, 0, 720);
        ASSERT_FALSE(image) << name;
        EXPECT_FALSE(image.error().text.empty());
    }

    TemporaryFolder folder_;
    FfmpegAssetInspector inspector_;
};

TEST_F(Inspecting, TellsHowLongARecordingLasts) {
    writeRecording(folder_ / "a.mp4", 3, {{1}});
    const auto duration = inspector_.duration(folder_ / "a.mp4");
    ASSERT_TRUE(duration);
    EXPECT_NEAR(duration.value(), 3, 0.03);
}

TEST_F(Inspecting, ShowsThePictureOfEachMoment) {
    writeRecording(folder_ / "a.mp4", 6, {{1}});
    for (const int frame : {0, 1, 29, 30, 59, 60, 61, 100, 150, 179}) {
        for (const double part : {0.1, 0.9}) {
            const auto image = inspector_.image(folder_ / "a.mp4", (frame + part) / 30, 720);
            ASSERT_TRUE(image) << frame;
            EXPECT_EQ(numberIn(image.value()), static_cast<unsigned>(frame));
            EXPECT_EQ(image.value()->format(), PixelFormat::bgra);
            EXPECT_EQ(image.value()->width(), 320);
            EXPECT_EQ(image.value()->height(), 180);
        }
    }
}

TEST_F(Inspecting, HasNoPictureOutsideTheVideo) {
    writeRecording(folder_ / "a.mp4", 0.5, {});
    EXPECT_TRUE(inspector_.image(folder_ / "a.mp4", 0, 720));
    for (const double time : {0.6, 1.0, 1e12, -1.0, std::nan("")}) {
        EXPECT_FALSE(inspector_.image(folder_ / "a.mp4", time, 720)) << time;
    }
}

TEST_F(Inspecting, ScalesDownToTheSideThatIsAskedFor) {
    writeRecording(folder_ / "a.mp4", 0.5, {});
    const auto image = inspector_.image(folder_ / "a.mp4", 0, 160);
    ASSERT_TRUE(image);
    EXPECT_EQ(image.value()->width(), 160);
    EXPECT_EQ(image.value()->height(), 90);
}

TEST_F(Inspecting, ColoursAreThoseOfRec709) {
    run("ffmpeg -v error -f lavfi -i color=0xC03010:size=320x180:rate=5:duration=1 -vf "
        "scale=out_color_matrix=bt709:out_range=tv,format=yuv420p -colorspace bt709 -color_primaries bt709 -color_trc "
        "bt709 "
        "-color_range tv -c:v libx264 -qp 4 " +
        quoted(folder_ / "red.mp4"));
    const auto image = inspector_.image(folder_ / "red.mp4", 0, 720);
    ASSERT_TRUE(image);
    const std::uint8_t* pixel = image.value()->plane(0).row(90) + 160 * 4;
    EXPECT_NEAR(pixel[0], 0x10, 4);
    EXPECT_NEAR(pixel[1], 0x30, 4);
    EXPECT_NEAR(pixel[2], 0xC0, 4);
    EXPECT_EQ(pixel[3], 255);
}

TEST_F(Inspecting, TurnsPicturesAsTheirTrackSays) {
    writeRecording(folder_ / "a.mp4", 0.5, {});
    const auto upright = inspector_.image(folder_ / "a.mp4", 8.5 / 30, 720);
    ASSERT_TRUE(upright);
    const auto source = greyOf(upright.value());
    for (const int degrees : {90, 180, 270}) {
        const auto path = folder_ / (std::to_string(degrees) + ".mp4");
        run("ffmpeg -v error -i " + quoted(folder_ / "a.mp4") +
            " -c copy -metadata:s:v:0 rotate=" + std::to_string(degrees) + " " + quoted(path));
        // What another decoder shows for it.
        const std::string shown =
            run("ffmpeg -v error -ss 0.26 -i " + quoted(path) + " -frames:v 1 -pix_fmt gray -f rawvideo -");
        const auto image = inspector_.image(path, 8.5 / 30, 720);
        ASSERT_TRUE(image);
        const int width = degrees == 180 ? 320 : 180;
        ASSERT_EQ(image.value()->width(), width);
        ASSERT_EQ(image.value()->height(), 320 * 180 / width);
        const auto grey = greyOf(image.value());
        ASSERT_EQ(grey.size(), shown.size());
        int different = 0;
        for (std::size_t i = 0; i < grey.size(); ++i) {
            // Their grey is video range, ours is full.
            const double expected = (static_cast<std::uint8_t>(shown[i]) - 16) * 255.0 / 219;
            different +=
                std::abs(grey[i] - expected) > 20 && std::abs(grey[i] - static_cast<std::uint8_t>(shown[i])) > 20;
        }
        EXPECT_LT(different, 100) << degrees;
    }
}

TEST_F(Inspecting, WhatIsNoVideoGivesAnError) {
    write("empty.mp4", "");
    write("text.mp4", "This is no video at all.\n");
    write("zeros.mp4", std::string(1 << 20, '\0'));
    std::string noise(1 << 20, '\0');
    unsigned state = 1;
    for (char& byte : noise) {
        byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    }
    write("noise.mp4", noise);
    std::filesystem::create_directory(folder_ / "folder.mp4");
    ASSERT_EQ(mkfifo((folder_ / "pipe.mp4").c_str(), 0600), 0);
    for (const char* name :
         {"absent.mp4", "empty.mp4", "text.mp4", "zeros.mp4", "noise.mp4", "folder.mp4", "pipe.mp4"}) {
        expectNothingIn(name);
    }
}

TEST_F(Inspecting, SoundWithoutPictureIsNoVideo) {
    run("ffmpeg -v error -f lavfi -i sine=duration=1 -c:a aac " + quoted(folder_ / "sound.mp4"));
    expectNothingIn("sound.mp4");
}

TEST_F(Inspecting, AFileCutShortBeforeItsIndexGivesAnError) {
    writeRecording(folder_ / "a.mp4", 1, {{0.5}});
    const std::string whole = bytesOf("a.mp4");
    const std::size_t index = whole.find("moov");
    ASSERT_NE(index, std::string::npos);
    for (std::size_t part = 1; part <= 20; ++part) {
        write("cut.mp4", whole.substr(0, index * part / 20));
        expectNothingIn("cut.mp4");
    }
}

TEST_F(Inspecting, ADamagedFileIsAnsweredOneWayOrTheOther) {
    writeRecording(folder_ / "a.mp4", 1, {{0.5}});
    const std::string whole = bytesOf("a.mp4");
    unsigned state = 7;
    for (int round = 0; round < 60; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 20; ++i) {
            state = state * 1664525 + 1013904223;
            damaged[state % damaged.size()] = static_cast<char>(state >> 16);
        }
        write("damaged.mp4", damaged);
        const auto duration = inspector_.duration(folder_ / "damaged.mp4");
        const auto image = inspector_.image(folder_ / "damaged.mp4", 0.5, 720);
        EXPECT_TRUE(duration.ok() || !duration.error().text.empty());
        EXPECT_TRUE(image.ok() ? image.value()->width() > 0 : !image.error().text.empty());
    }
}

} // namespace
} // namespace velmo
