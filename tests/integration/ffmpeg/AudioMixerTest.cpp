#include "Material.h"
#include "Probe.h"

#include "capture/AudioMixer.h"
#include "platform/ffmpeg/FfmpegAssetReaderFactory.h"
#include "platform/ffmpeg/FfmpegPassthroughWriterFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sys/stat.h>

namespace velmo {
namespace {

using namespace test;

class Mixing : public testing::Test {
protected:
    void mix(const std::filesystem::path& file) {
        const AudioMixer mixer(readers_, writers_, [this](const std::string& line) { log_.push_back(line); });
        mixer.mixIfNeeded(file);
    }
    ino_t identity(const std::filesystem::path& file) const {
        struct stat status {};
        stat(file.c_str(), &status);
        return status.st_ino;
    }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

    TemporaryFolder folder_;
    FfmpegAssetReaderFactory readers_;
    FfmpegPassthroughWriterFactory writers_;
    std::vector<std::string> log_;
};

std::vector<std::string> hashes(const std::filesystem::path& file) {
    std::vector<std::string> all;
    for (const Entry& packet : packets(file, "v:0")) {
        all.push_back(packet.at("pts") + " " + packet.at("duration") + " " + packet.at("flags") + " " +
                      packet.at("data_hash"));
    }
    return all;
}

TEST_F(Mixing, TwoTracksBecomeOneAndTheVideoStaysTheSame) {
    const auto file = folder_ / "a.mp4";
    writeRecording(file, 12, {{1, 4.25, 9}, {2, 6.5, 11}});
    const auto before = hashes(file);
    const double duration = std::stod(format(file).at("duration"));
    mix(file);
    EXPECT_TRUE(log_.empty());
    EXPECT_EQ(filesInFolder(), 1U);
    const auto found = streams(file);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].at("profile"), "High");
    EXPECT_EQ(found[0].at("color_space"), "bt709");
    EXPECT_EQ(found[0].at("time_base"), "1/90000");
    EXPECT_EQ(found[1].at("codec_name"), "aac");
    EXPECT_EQ(found[1].at("sample_rate"), "48000");
    EXPECT_EQ(found[1].at("channels"), "2");
    EXPECT_EQ(hashes(file), before);
    EXPECT_NEAR(std::stod(format(file).at("duration")), duration, 0.03);
    EXPECT_EQ(complaints(file), "");

    const auto heard = onsets(decodeSound(file, 0));
    const double expected[] = {1, 2, 4.25, 6.5, 9, 11};
    ASSERT_EQ(heard.size(), std::size(expected));
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_NEAR(heard[i], expected[i], 0.003);
    }
}

TEST_F(Mixing, BothTracksAreSummedAtUnitGainAndSaturate) {
    for (const auto& [amplitude, loudest] : {std::pair{0.3F, 0.6F}, {0.9F, 1.0F}}) {
        const auto file = folder_ / "a.mp4";
        writeRecording(file, 2, {{1}, {1}}, amplitude);
        mix(file);
        const auto sound = decodeSound(file, 0);
        const float peak = *std::max_element(sound.begin(), sound.end());
        EXPECT_NEAR(peak, loudest, 0.12) << amplitude;
        const float alone = 2 * amplitude * 0.9F;
        EXPECT_GT(peak, std::min(alone, 0.95F));
    }
}

TEST_F(Mixing, TheMixHasTheHigherBitRate) {
    const auto file = folder_ / "a.mp4";
    std::vector<double> always;
    for (int i = 0; i < 400; ++i) {
        always.push_back(i * 0.02);
    }
    writeRecording(file, 8, {always, {}});
    mix(file);
    EXPECT_NEAR(std::stod(streams(file)[1].at("bit_rate")), 192000, 40000);
}

TEST_F(Mixing, MixingAgainDoesNothing) {
    const auto file = folder_ / "a.mp4";
    writeRecording(file, 2, {{1}, {1}});
    const ino_t original = identity(file);
    mix(file);
    const ino_t mixed = identity(file);
    EXPECT_NE(mixed, original);
    mix(file);
    EXPECT_EQ(identity(file), mixed);
    EXPECT_TRUE(log_.empty());
}

TEST_F(Mixing, OneTrackOrNoneIsLeftAsItIs) {
    for (const auto& tracks : {std::vector<std::vector<double>>{}, {{0.5}}}) {
        const auto file = folder_ / "a.mp4";
        writeRecording(file, 1, tracks);
        const ino_t before = identity(file);
        mix(file);
        EXPECT_EQ(identity(file), before);
        EXPECT_TRUE(log_.empty());
        EXPECT_EQ(filesInFolder(), 1U);
    }
}

TEST_F(Mixing, SoundWithoutVideoIsLeftAsItIs) {
    const auto file = folder_ / "a.mp4";
    run("ffmpeg -v error -f lavfi -i sine=duration=1 -f lavfi -i sine=duration=1 -map 0 -map 1 -c:a aac " +
        quoted(file));
    const ino_t before = identity(file);
    mix(file);
    EXPECT_EQ(identity(file), before);
    EXPECT_TRUE(log_.empty());
}

TEST_F(Mixing, TracksOfDifferentLengthAndRateAreMixedInPlace) {
    const auto file = folder_ / "a.mp4";
    run("ffmpeg -v error -f lavfi -i testsrc2=size=320x180:rate=25:duration=4 -f lavfi -i "
        "'sine=frequency=500:sample_rate=44100:duration=1' -f lavfi -i "
        "'aevalsrc=0.5*sin(2*PI*900*t)*between(t\\,3\\,3.1)|0:s=48000:d=3.5' -map 0 -map 1 -map 2 -c:v libx264 -bf 2 "
        "-c:a aac " +
        quoted(file));
    const auto before = hashes(file);
    mix(file);
    EXPECT_EQ(hashes(file), before);
    ASSERT_EQ(streams(file).size(), 2U);
    const auto sound = decodeSound(file, 0);
    EXPECT_NEAR(static_cast<double>(sound.size()) / 48000, 3.5, 0.03);
    // The first tone's end, silence, the second track's burst.
    const auto loudest = [&](double begin, double end) {
        return *std::max_element(sound.begin() + std::lround(begin * 48000), sound.begin() + std::lround(end * 48000));
    };
    EXPECT_GT(loudest(0.1, 0.9), 0.05F);
    EXPECT_LT(loudest(1.2, 2.9), 0.01F);
    EXPECT_GT(loudest(3.01, 3.09), 0.3F);
}

TEST_F(Mixing, AFileThatCannotBeOpenedIsLoggedOnce) {
    mix(folder_ / "absent.mp4");
    ASSERT_EQ(log_.size(), 1U);
    EXPECT_EQ(log_[0], "Velmo Studio: no se pudo mezclar el audio: No se encuentra el archivo o su carpeta.");
    std::ofstream(folder_ / "text.mp4") << "no video";
    mix(folder_ / "text.mp4");
    ASSERT_EQ(log_.size(), 2U);
    EXPECT_EQ(log_[1], "Velmo Studio: no se pudo mezclar el audio: El archivo no es un video.");
    EXPECT_EQ(filesInFolder(), 1U);
}

} // namespace
} // namespace velmo
