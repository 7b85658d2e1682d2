#include "Material.h"
#include "Probe.h"

#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <mutex>
#include <thread>

namespace velmo {
namespace {

using namespace test;

/// Times of pictures as a lecture makes them: steady motion, still minutes, single changes, odd intervals; in ticks
/// of 1/90000 s, so that what comes back can be compared exactly.
std::vector<std::int64_t> lectureTimes() {
    std::vector<std::int64_t> times;
    std::int64_t time = 0;
    const auto go = [&](int frames, std::int64_t step) {
        for (int i = 0; i < frames; ++i) {
            times.push_back(time);
            time += step;
        }
    };
    go(150, 3000);
    go(1, 41 * 90000 + 17); // a still slide
    go(40, 45000);          // two changes a second
    go(100, 3003);
    go(3, 11 * 90000);
    go(90, 2999);
    return times;
}

class Writing : public testing::Test {
protected:
    std::unique_ptr<AssetWriter> make(const std::string& name, FfmpegWriterOptions options = {}) {
        FfmpegAssetWriterFactory factory(std::move(options));
        return factory.makeWriter(folder_ / name).value();
    }

    TemporaryFolder folder_;
};

TEST_F(Writing, AFileHasTheStreamsTagsAndTimesThatWereAsked) {
    auto writer = make("a.mp4");
    AssetWriterInput* video = writer->addVideoInput({640, 360, 6'000'000, 30, 60});
    ASSERT_NE(video, nullptr);
    std::vector<std::pair<AssetWriterInput*, BeepingSource>> sounds;
    sounds.emplace_back(writer->addAudioInput({}), BeepingSource(0, {}));
    sounds.emplace_back(writer->addAudioInput({}), BeepingSource(0, {}));
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    const auto times = lectureTimes();
    for (std::size_t i = 0; i < times.size(); ++i) {
        const MediaTime time(times[i], 90000);
        ASSERT_TRUE(appendWhenReady(*video, pictureSample(numberedPicture(640, 360, static_cast<unsigned>(i)), time)));
        for (auto& [input, source] : sounds) {
            while (source.time() < time.seconds()) {
                ASSERT_TRUE(appendWhenReady(*input, source.next()));
            }
        }
    }
    finish(*writer);
    ASSERT_EQ(writer->status(), WriterStatus::completed);

    const auto path = writer->outputPath();
    const auto found = streams(path);
    ASSERT_EQ(found.size(), 3U);
    const Entry& picture = found[0];
    EXPECT_EQ(picture.at("codec_name"), "h264");
    EXPECT_EQ(picture.at("profile"), "High");
    EXPECT_EQ(picture.at("has_b_frames"), "0");
    EXPECT_EQ(picture.at("pix_fmt"), "yuv420p");
    EXPECT_EQ(picture.at("color_range"), "tv");
    EXPECT_EQ(picture.at("color_space"), "bt709");
    EXPECT_EQ(picture.at("color_transfer"), "bt709");
    EXPECT_EQ(picture.at("color_primaries"), "bt709");
    EXPECT_EQ(picture.at("time_base"), "1/90000");
    EXPECT_EQ(picture.at("codec_tag_string"), "avc1");
    for (std::size_t i = 1; i < 3; ++i) {
        EXPECT_EQ(found[i].at("codec_name"), "aac");
        EXPECT_EQ(found[i].at("profile"), "LC");
        EXPECT_EQ(found[i].at("sample_rate"), "48000");
        EXPECT_EQ(found[i].at("channels"), "2");
        EXPECT_NEAR(std::stod(found[i].at("start_time")), 0, 0.001);
    }

    const auto written = packets(path, "v:0");
    ASSERT_EQ(written.size(), times.size());
    std::size_t lastKey = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        ASSERT_EQ(std::stoll(written[i].at("pts")), times[i]) << i;
        ASSERT_EQ(written[i].at("dts"), written[i].at("pts")) << i;
        const std::int64_t lasts = i + 1 < times.size() ? times[i + 1] - times[i] : 3000;
        ASSERT_EQ(std::stoll(written[i].at("duration")), lasts) << i;
        if (written[i].at("flags").find('K') != std::string::npos) {
            lastKey = i;
        }
        EXPECT_LT(i - lastKey, 60U);
        EXPECT_TRUE(lastKey == i || times[i] - times[lastKey] < 2 * 90000) << i;
    }
    EXPECT_NEAR(std::stod(format(path).at("duration")), static_cast<double>(times.back() + 3000) / 90000, 0.03);

    const GreyPictures pictures = decodePictures(path);
    ASSERT_EQ(pictures.count(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
        ASSERT_EQ(numberIn(pictures.at(i), 640, 360), i);
    }
    EXPECT_EQ(complaints(path), "");
}

TEST_F(Writing, BeepsLieAtTheirStampsOnBothTracks) {
    auto writer = make("b.mp4");
    AssetWriterInput* video = writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    AssetWriterInput* system = writer->addAudioInput({});
    AssetWriterInput* mic = writer->addAudioInput({});
    ASSERT_TRUE(writer->startWriting());
    constexpr double kZero = 1000; // a host time
    writer->startSession(MediaTime::fromSeconds(kZero));
    std::vector<double> beeps;
    for (int i = 0; i < 40; ++i) {
        beeps.push_back(kZero + 1.5 + i);
    }
    BeepingSource fast(kZero + 0.1, beeps, 1000, 500);
    BeepingSource slow(kZero + 0.7777, beeps, 2000, -500);
    bool stalled = false;
    for (int i = 0; i < 42 * 30; ++i) {
        const double time = kZero + i / 30.0;
        ASSERT_TRUE(appendWhenReady(
            *video, pictureSample(numberedPicture(320, 180, static_cast<unsigned>(i)), MediaTime::fromSeconds(time))));
        if (!stalled && time > kZero + 20) {
            stalled = true;
            slow.stall(0.3); // between two beeps
        }
        while (fast.time() < time) {
            ASSERT_TRUE(appendWhenReady(*system, fast.next()));
        }
        while (slow.time() < time) {
            ASSERT_TRUE(appendWhenReady(*mic, slow.next()));
        }
    }
    finish(*writer);
    ASSERT_EQ(writer->status(), WriterStatus::completed);
    for (int track = 0; track < 2; ++track) {
        const auto sound = decodeSound(writer->outputPath(), track);
        EXPECT_NEAR(static_cast<double>(sound.size()) / 48000, 42, 0.05);
        const auto heard = onsets(sound);
        ASSERT_EQ(heard.size(), beeps.size());
        for (std::size_t i = 0; i < beeps.size(); ++i) {
            EXPECT_NEAR(heard[i], beeps[i] - kZero, i == 0 ? 0.003 : 0.010) << "track " << track << " beep " << i;
        }
    }
}

TEST_F(Writing, ATrackWithoutASingleSoundIsLeftOut) {
    auto writer = make("c.mp4");
    AssetWriterInput* video = writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    writer->addAudioInput({});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    for (int i = 0; i < 30; ++i) {
        ASSERT_TRUE(appendWhenReady(*video, pictureSample(numberedPicture(320, 180, 5), MediaTime(i, 1))));
    }
    finish(*writer);
    EXPECT_EQ(writer->status(), WriterStatus::completed);
    EXPECT_EQ(streams(writer->outputPath()).size(), 1U);
    EXPECT_EQ(complaints(writer->outputPath()), "");
}

TEST_F(Writing, AnInputThatIsFullRefusesAndNeverWaits) {
    auto writer = make("d.mp4");
    AssetWriterInput* video = writer->addVideoInput({1920, 1080, 9'331'200, 30, 60});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    const FrameRef picture = noisyPicture(1920, 1080, 1);
    int taken = 0;
    std::vector<double> took;
    for (int i = 0; i < 30; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        taken += video->append(pictureSample(picture, MediaTime(i, 30))) ? 1 : 0;
        took.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    EXPECT_FALSE(video->isReadyForMoreMediaData());
    EXPECT_GE(taken, 8);
    EXPECT_LT(taken, 30);
    // The middle one: on a busy machine any single call may be put off.
    std::nth_element(took.begin(), took.begin() + 15, took.end());
    EXPECT_LT(took[15], 0.002);
    finish(*writer);
    EXPECT_EQ(packets(writer->outputPath(), "v:0").size(), static_cast<std::size_t>(taken));
}

TEST_F(Writing, UnderSustainedLoadThePresetStepsDownAndTheFileStaysWhole) {
    std::mutex lock;
    std::vector<std::string> lines;
    FfmpegWriterOptions options;
    options.log = [&](const std::string& line) {
        const std::lock_guard guard(lock);
        lines.push_back(line);
    };
    auto writer = make("e.mp4", options);
    // Frames come faster than any preset can take them here.
    AssetWriterInput* video = writer->addVideoInput({1280, 720, 8'000'000, 400, 800});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    std::vector<FrameRef> noise;
    for (unsigned i = 0; i < 4; ++i) {
        noise.push_back(noisyPicture(1280, 720, i));
    }
    const auto told = [&] {
        const std::lock_guard guard(lock);
        return lines.size();
    };
    int frames = 0;
    for (int more = 10; more > 0 && frames < 600; more -= told() < 2 ? 0 : 1, ++frames) {
        ASSERT_TRUE(appendWhenReady(
            *video, pictureSample(noise[static_cast<std::size_t>(frames % 4)], MediaTime(frames, 400))));
    }
    finish(*writer);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], testing::HasSubstr("veryfast a superfast"));
    EXPECT_THAT(lines[1], testing::HasSubstr("superfast a ultrafast"));
    const auto written = packets(writer->outputPath(), "v:0");
    EXPECT_EQ(written.size(), static_cast<std::size_t>(frames));
    const auto keys = std::count_if(written.begin(), written.end(), [](const Entry& packet) {
        return packet.at("flags").find('K') != std::string::npos;
    });
    EXPECT_GE(keys, 3); // the first, and one for each new preset
    EXPECT_EQ(streams(writer->outputPath())[0].at("profile"), "High");
    EXPECT_EQ(decodePictures(writer->outputPath()).count(), static_cast<std::size_t>(frames));
    EXPECT_EQ(complaints(writer->outputPath()), "");
}

TEST_F(Writing, ImpossibleSettingsGetNoInput) {
    auto writer = make("f.mp4");
    for (const auto& [width, height] : {std::pair{0, 180}, {320, -2}, {321, 180}, {320, 181}, {1 << 20, 1 << 20}}) {
        EXPECT_EQ(writer->addVideoInput({width, height, 1'000'000, 30, 60}), nullptr) << width << "x" << height;
    }
    EXPECT_EQ(writer->addVideoInput({320, 180, 0, 30, 60}), nullptr);
    EXPECT_EQ(writer->addVideoInput({320, 180, 1'000'000, 0, 60}), nullptr);
    EXPECT_EQ(writer->addAudioInput({44100, 2, 160000}), nullptr);
    EXPECT_EQ(writer->addAudioInput({48000, 0, 160000}), nullptr);
    EXPECT_NE(writer->addVideoInput({320, 180, 1'000'000, 30, 60}), nullptr);
    EXPECT_EQ(writer->addVideoInput({320, 180, 1'000'000, 30, 60}), nullptr) << "there is one picture track";
}

TEST_F(Writing, TheSmallestAndALargePictureCanBeWritten) {
    for (const auto& [width, height] : {std::pair{2, 2}, {34, 18}, {4096, 2160}}) {
        auto writer = make("g.mp4");
        AssetWriterInput* video = writer->addVideoInput({width, height, 6'000'000, 30, 60});
        ASSERT_NE(video, nullptr);
        const Result<void> started = writer->startWriting();
        ASSERT_TRUE(started) << width << "x" << height << ": " << started.error().text;
        writer->startSession(MediaTime::zero());
        for (int i = 0; i < 5; ++i) {
            ASSERT_TRUE(appendWhenReady(
                *video, pictureSample(noisyPicture(width, height, static_cast<unsigned>(i)), MediaTime(i, 30))));
        }
        finish(*writer);
        EXPECT_EQ(writer->status(), WriterStatus::completed);
        EXPECT_EQ(packets(writer->outputPath(), "v:0").size(), 5U);
        EXPECT_EQ(complaints(writer->outputPath()), "");
    }
}

TEST_F(Writing, SamplesThatDoNotFitAreRefused) {
    auto writer = make("h.mp4");
    AssetWriterInput* video = writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    AssetWriterInput* audio = writer->addAudioInput({});
    const Sample good = pictureSample(numberedPicture(320, 180, 1), MediaTime(1, 1));
    EXPECT_FALSE(video->append(good)) << "not writing yet";
    ASSERT_TRUE(writer->startWriting());
    EXPECT_FALSE(video->append(good)) << "no session yet";
    writer->startSession(MediaTime::zero());
    EXPECT_TRUE(video->append(good));
    EXPECT_FALSE(video->append(good)) << "the same time again";
    EXPECT_FALSE(video->append(good.retimedTo(MediaTime(1, 2)))) << "an earlier time";
    EXPECT_FALSE(video->append(good.retimedTo(MediaTime(-1, 2)))) << "before the session";
    EXPECT_FALSE(video->append(good.retimedTo(MediaTime::invalid())));
    EXPECT_FALSE(video->append(pictureSample(numberedPicture(640, 360, 1), MediaTime(2, 1)))) << "another size";
    EXPECT_FALSE(video->append(pictureSample(PixelBuffer::create(PixelFormat::bgra, 320, 180), MediaTime(2, 1))));
    EXPECT_FALSE(audio->append(good)) << "no sound";
    EXPECT_FALSE(video->append(BeepingSource(2, {}).next())) << "no picture";
    video->markAsFinished();
    video->markAsFinished();
    EXPECT_FALSE(video->isReadyForMoreMediaData());
    EXPECT_FALSE(video->append(good.retimedTo(MediaTime(3, 1)))) << "finished";
    finish(*writer);
    EXPECT_EQ(packets(writer->outputPath(), "v:0").size(), 1U);
}

TEST_F(Writing, CancellingLeavesNothing) {
    auto writer = make("i.mp4");
    AssetWriterInput* video = writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    ASSERT_TRUE(video->append(pictureSample(numberedPicture(320, 180, 1), MediaTime(0, 1))));
    EXPECT_TRUE(std::filesystem::exists(writer->outputPath()));
    writer->cancelWriting();
    EXPECT_EQ(writer->status(), WriterStatus::cancelled);
    EXPECT_FALSE(video->isReadyForMoreMediaData());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "i.mp4"));
    finish(*writer);
    writer.reset();
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(Writing, WithoutAPictureThereIsNoFileAndThatIsTold) {
    FfmpegWriterOptions options;
    options.keepsJournal = true;
    auto writer = make("n.mp4", options);
    writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    AssetWriterInput* sound = writer->addAudioInput({});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    BeepingSource source(0, {});
    while (source.time() < 1) {
        ASSERT_TRUE(appendWhenReady(*sound, source.next()));
    }
    finish(*writer);
    EXPECT_EQ(writer->status(), WriterStatus::failed);
    EXPECT_EQ(writer->error()->text, "La grabación terminó antes de capturar imagen.");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(Writing, AWriterThatIsLetGoWhileItWritesLeavesAPlayableFile) {
    auto writer = make("j.mp4");
    AssetWriterInput* video = writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    for (int i = 0; i < 60; ++i) {
        ASSERT_TRUE(appendWhenReady(
            *video, pictureSample(numberedPicture(320, 180, static_cast<unsigned>(i)), MediaTime(i, 30))));
    }
    writer.reset();
    EXPECT_EQ(decodePictures(folder_ / "j.mp4").count(), 60U);
}

TEST_F(Writing, TheFileGrowsWhileItIsWrittenAndFinishingAddsOnlyTheIndex) {
    auto writer = make("k.mp4");
    AssetWriterInput* video = writer->addVideoInput({1280, 720, 8'000'000, 30, 60});
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    for (int i = 0; i < 60; ++i) {
        ASSERT_TRUE(appendWhenReady(
            *video, pictureSample(noisyPicture(1280, 720, static_cast<unsigned>(i)), MediaTime(i, 30))));
    }
    for (int i = 0; i < 5000; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (std::filesystem::file_size(folder_ / "k.mp4") > 1'000'000 && i > 500) {
            break;
        }
    }
    const auto before = std::filesystem::file_size(folder_ / "k.mp4");
    EXPECT_GT(before, 1'000'000U);
    finish(*writer);
    std::uint64_t data = 0;
    for (const Entry& packet : packets(folder_ / "k.mp4", "v:0")) {
        data += std::stoull(packet.at("size"));
    }
    EXPECT_LT(std::filesystem::file_size(folder_ / "k.mp4") - data, 4096U);
}

TEST_F(Writing, AFileThatCannotBeMadeIsToldInWords) {
    std::ofstream(folder_ / "plain").put('x');
    const std::pair<const char*, const char*> cases[] = {
        {"absent/a.mp4", "No se encuentra el archivo o su carpeta."},
        {"plain/a.mp4", "No se encuentra el archivo o su carpeta."},
        {".", "El archivo es una carpeta."},
    };
    for (const auto& [name, text] : cases) {
        auto writer = make(name);
        writer->addVideoInput({320, 180, 1'000'000, 30, 60});
        const Result<void> started = writer->startWriting();
        ASSERT_FALSE(started) << name;
        EXPECT_EQ(started.error().text, text);
        EXPECT_EQ(writer->status(), WriterStatus::failed);
        EXPECT_EQ(writer->error()->text, text);
    }
}

TEST_F(Writing, NamesWithEveryLegalCharacterWork) {
    const std::string name = "Grabación 15 nov 2026 a las 19.14 (2) ñ%d*?\"\\:;#&=[]{}\n.mp4";
    writeRecording(folder_ / name, 0.5, {});
    EXPECT_GT(std::filesystem::file_size(folder_ / name), 1000U);
}

} // namespace
} // namespace velmo
