#include "capture/AudioMixer.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace velmo {
namespace {

struct NoFormat final : TrackFormat {};

/// A file of so many tracks, pictures and stretches of sound; what is to go wrong can be said.
struct Script {
    int videoTracks = 1;
    int audioTracks = 2;
    int pictures = 3;
    int sounds = 2;
    bool opens = true;
    bool videoBreaks = false;
    bool audioBreaks = false;
    bool writerOpens = true;
    bool takesVideo = true;
    bool takesAudio = true;
    bool finishes = true;
};

class ScriptedReader final : public AssetReader {
public:
    explicit ScriptedReader(const Script& script) : script_(script) {}
    int videoTrackCount() const override { return script_.videoTracks; }
    int audioTrackCount() const override { return script_.audioTracks; }
    const TrackFormat* videoFormat() const override { return script_.videoTracks > 0 ? &format_ : nullptr; }
    ReadStep nextVideoSample(EncodedSample& sample) override {
        if (pictures_ == script_.pictures) {
            return script_.videoBreaks ? ReadStep::failed : ReadStep::end;
        }
        sample = {MediaTime(pictures_, 30), MediaTime(pictures_, 30), MediaTime(1, 30), pictures_ == 0, {}};
        ++pictures_;
        return ReadStep::sample;
    }
    ReadStep nextMixedAudio(AudioRef& sound) override {
        if (sounds_ == script_.sounds) {
            return script_.audioBreaks ? ReadStep::failed : ReadStep::end;
        }
        ++sounds_;
        sound = AudioBuffer::create({48000, 2, AudioFormat::Sample::int16, true}, 1024);
        return ReadStep::sample;
    }

private:
    const Script script_;
    NoFormat format_;
    int pictures_ = 0;
    int sounds_ = 0;
};

/// Writes what it takes as letters, so that the order can be read from the file.
class ScriptedWriter final : public PassthroughWriter {
public:
    ScriptedWriter(const Script& script, std::filesystem::path path) : script_(script), path_(std::move(path)) {
        std::ofstream(path_) << "";
    }
    ~ScriptedWriter() override {
        if (!finished_) {
            std::filesystem::remove(path_);
        }
    }
    bool appendVideo(const EncodedSample&) override {
        text_ += 'v';
        return script_.takesVideo;
    }
    bool appendAudio(const AudioRef&) override {
        text_ += 'a';
        return script_.takesAudio;
    }
    Result<void> finish() override {
        if (!script_.finishes) {
            return Error{"test", 1, "nope"};
        }
        finished_ = true;
        std::ofstream(path_) << text_;
        return {};
    }

private:
    const Script script_;
    std::filesystem::path path_;
    std::string text_;
    bool finished_ = false;
};

class MixerOverFakes : public testing::Test, public AssetReaderFactory, public PassthroughWriterFactory {
protected:
    MixerOverFakes() {
        file_ = folder_ / "Clase.mp4";
        std::ofstream(file_) << "original";
    }

    Result<std::unique_ptr<AssetReader>> openReader(const std::filesystem::path&) const override {
        if (!script_.opens) {
            return Error{"test", 2, "No se abre."};
        }
        return std::unique_ptr<AssetReader>(std::make_unique<ScriptedReader>(script_));
    }
    Result<std::unique_ptr<PassthroughWriter>> makePassthroughWriter(const std::filesystem::path& path,
                                                                     const TrackFormat&,
                                                                     const AudioSettings& audio) const override {
        temporary_ = path;
        settings_ = audio;
        if (!script_.writerOpens) {
            return Error{"test", 3, "No se escribe."};
        }
        return std::unique_ptr<PassthroughWriter>(std::make_unique<ScriptedWriter>(script_, path));
    }

    std::string mix(const Script& script) {
        script_ = script;
        log_.clear();
        temporary_.clear();
        AudioMixer(*this, *this, [this](const std::string& line) { log_.push_back(line); }).mixIfNeeded(file_);
        if (std::filesystem::is_directory(file_)) {
            return "a folder";
        }
        std::ifstream stream(file_);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

    Script script_;
    test::TemporaryFolder folder_;
    std::filesystem::path file_;
    mutable std::filesystem::path temporary_;
    mutable AudioSettings settings_;
    std::vector<std::string> log_;
};

TEST_F(MixerOverFakes, PictureAndSoundAreCopiedSideBySide) {
    EXPECT_EQ(mix({}), "vaavv") << "33 ms of picture, then 21 and 21 ms of sound";
    EXPECT_TRUE(log_.empty());
    EXPECT_EQ(files(), 1U);
    EXPECT_EQ(settings_.bitRate, 192000);
    EXPECT_EQ(settings_.sampleRate, 48000);
    EXPECT_EQ(settings_.channels, 2);
}

TEST_F(MixerOverFakes, TheTemporaryFileLiesBesideTheRecordingUnderAHiddenName) {
    mix({});
    EXPECT_EQ(temporary_.parent_path(), folder_.path());
    EXPECT_THAT(
        temporary_.filename().string(),
        testing::MatchesRegex("\\.mezcla-[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\.mp4"));
    const auto first = temporary_;
    mix({});
    EXPECT_NE(temporary_, first);
}

TEST_F(MixerOverFakes, FewerThanTwoAudioTracksOrNoVideoIsNothingToDo) {
    Script oneTrack;
    oneTrack.audioTracks = 1;
    Script noAudio;
    noAudio.audioTracks = 0;
    Script noVideo;
    noVideo.videoTracks = 0;
    for (const Script& script : {oneTrack, noAudio, noVideo}) {
        EXPECT_EQ(mix(script), "original");
        EXPECT_TRUE(temporary_.empty());
        EXPECT_TRUE(log_.empty());
    }
}

TEST_F(MixerOverFakes, ThreeAudioTracksAreMixedToo) {
    Script script;
    script.audioTracks = 3;
    EXPECT_EQ(mix(script), "vaavv");
}

TEST_F(MixerOverFakes, WhatBreaksOnTheWayKeepsTheRecordingAndSaysNothing) {
    Script videoBreaks;
    videoBreaks.videoBreaks = true;
    Script audioBreaks;
    audioBreaks.audioBreaks = true;
    Script refusesVideo;
    refusesVideo.takesVideo = false;
    Script refusesAudio;
    refusesAudio.takesAudio = false;
    Script doesNotFinish;
    doesNotFinish.finishes = false;
    for (const Script& script : {videoBreaks, audioBreaks, refusesVideo, refusesAudio, doesNotFinish}) {
        EXPECT_EQ(mix(script), "original");
        EXPECT_TRUE(log_.empty());
        EXPECT_EQ(files(), 1U) << "the temporary file is gone";
    }
}

TEST_F(MixerOverFakes, WhatCannotBeOpenedIsLoggedOnceAndKept) {
    Script closed;
    closed.opens = false;
    EXPECT_EQ(mix(closed), "original");
    EXPECT_EQ(log_, std::vector<std::string>{"Velmo Studio: no se pudo mezclar el audio: No se abre."});
    Script unwritable;
    unwritable.writerOpens = false;
    EXPECT_EQ(mix(unwritable), "original");
    EXPECT_EQ(log_, std::vector<std::string>{"Velmo Studio: no se pudo mezclar el audio: No se escribe."});
}

TEST_F(MixerOverFakes, AReplacementThatFailsIsLogged) {
    std::filesystem::remove(file_);
    std::filesystem::create_directory(file_);
    std::ofstream(file_ / "inside") << "x";
    EXPECT_EQ(mix({}), "a folder");
    ASSERT_EQ(log_.size(), 1U);
    EXPECT_EQ(log_[0].rfind("Velmo Studio: no se pudo mezclar el audio: ", 0), 0U);
    EXPECT_EQ(files(), 1U);
}

} // namespace
} // namespace velmo
