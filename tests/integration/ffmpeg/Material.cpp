#include "Material.h"

#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <future>
#include <numbers>
#include <random>
#include <thread>

namespace velmo::test {

namespace {

constexpr int kBits = 16;
constexpr int kSoundFrames = 960;
constexpr double kBeepLength = 0.02;

} // namespace

FrameRef numberedPicture(int width, int height, unsigned number) {
    FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width, height);
    const PlaneView luma = picture->plane(0);
    const int square = width / kBits;
    for (int y = 0; y < height; ++y) {
        std::memset(luma.row(y), 110, static_cast<std::size_t>(width));
        for (int bit = 0; bit < kBits && y < square; ++bit) {
            std::memset(luma.row(y) + bit * square, (number >> bit) & 1U ? 235 : 16, static_cast<std::size_t>(square));
        }
    }
    const PlaneView chroma = picture->plane(1);
    for (int y = 0; y < chroma.height; ++y) {
        std::memset(chroma.row(y), 128, static_cast<std::size_t>(chroma.width) * 2);
    }
    return picture;
}

FrameRef noisyPicture(int width, int height, unsigned seed) {
    FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width, height);
    std::minstd_rand random(seed + 1);
    for (int index = 0; index < 2; ++index) {
        const PlaneView plane = picture->plane(index);
        for (int y = 0; y < plane.height; ++y) {
            for (int x = 0; x < plane.width * (index + 1); ++x) {
                plane.row(y)[x] = static_cast<std::uint8_t>(16 + (random() >> 8) % 220);
            }
        }
    }
    return picture;
}

unsigned numberIn(const std::uint8_t* grey, int width, int) {
    const int square = width / kBits;
    unsigned number = 0;
    for (int bit = 0; bit < kBits; ++bit) {
        number |= grey[square / 2 * width + bit * square + square / 2] > 125 ? 1U << bit : 0U;
    }
    return number;
}

Sample pictureSample(FrameRef picture, MediaTime time, MediaTime duration) {
    Sample sample;
    sample.timing = {duration, time, MediaTime::invalid()};
    sample.image = std::move(picture);
    return sample;
}

BeepingSource::BeepingSource(double begin, std::vector<double> beeps, double frequency, double ppm, float amplitude)
    : time_(begin), rate_(48000 * (1 + ppm * 1e-6)), beeps_(std::move(beeps)), frequency_(frequency),
      amplitude_(amplitude) {}

Sample BeepingSource::next() {
    Sample sample;
    sample.timing = {MediaTime(kSoundFrames, 48000), MediaTime::fromSeconds(time_), MediaTime::invalid()};
    sample.audio = AudioBuffer::create({}, kSoundFrames);
    const std::span<float> floats = sample.audio->floats();
    for (int i = 0; i < kSoundFrames; ++i) {
        const double now = time_ + i / rate_;
        for (const double beep : beeps_) {
            if (now >= beep && now < beep + kBeepLength) {
                const auto value =
                    static_cast<float>(amplitude_ * std::cos(2 * std::numbers::pi * frequency_ * (now - beep)));
                floats[static_cast<std::size_t>(i) * 2] = value;
                floats[static_cast<std::size_t>(i) * 2 + 1] = value;
            }
        }
    }
    time_ += kSoundFrames / rate_;
    return sample;
}

bool appendWhenReady(AssetWriterInput& input, const Sample& sample) {
    for (int i = 0; i < 60000 && !input.isReadyForMoreMediaData(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return input.append(sample);
}

void finish(AssetWriter& writer) {
    std::promise<void> done;
    writer.finishWriting([&done] { done.set_value(); });
    done.get_future().wait();
}

void writeRecording(const std::filesystem::path& path, double seconds,
                    const std::vector<std::vector<double>>& beepsOfTracks, float amplitude) {
    FfmpegAssetWriterFactory factory;
    const auto writer = factory.makeWriter(path).value().release();
    const std::unique_ptr<AssetWriter> owner(writer);
    AssetWriterInput* video = writer->addVideoInput({320, 180, 2'000'000, 30, 60});
    ASSERT_NE(video, nullptr);
    std::vector<std::pair<AssetWriterInput*, BeepingSource>> tracks;
    for (const auto& beeps : beepsOfTracks) {
        const double frequency = 1000.0 * static_cast<double>(tracks.size() + 1);
        tracks.emplace_back(writer->addAudioInput({}), BeepingSource(0, beeps, frequency, 0, amplitude));
    }
    ASSERT_TRUE(writer->startWriting());
    writer->startSession(MediaTime::zero());
    for (int i = 0; i < std::lround(seconds * 30); ++i) {
        ASSERT_TRUE(appendWhenReady(*video, pictureSample(numberedPicture(320, 180, static_cast<unsigned>(i)),
                                                          MediaTime(i, 30), MediaTime(1, 30))));
        for (auto& [input, source] : tracks) {
            while (source.time() < (i + 1) / 30.0) {
                ASSERT_TRUE(appendWhenReady(*input, source.next()));
            }
        }
    }
    finish(*writer);
    ASSERT_EQ(writer->status(), WriterStatus::completed);
}

} // namespace velmo::test
