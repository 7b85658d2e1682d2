#include "encoder/Content.h"
#include "encoder/EncoderCost.h"

#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <future>
#include <string>
#include <thread>

// bench_encoder                          what the encoder alone costs, a table over painted contents and presets
// bench_encoder --nv12 WIDTH HEIGHT FPS  the same for raw NV12 pictures from standard input
// bench_encoder --paint CONTENT FRAMES   writes painted 1080p NV12 pictures to standard output
// bench_encoder --finish FILE MINUTES    how long a file of that length takes from stop to finished

namespace velmo::bench {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kRate = 30;
constexpr int kFrames = 300;

void printHeading() {
    std::printf("%-10s %-10s %8s %12s %12s %11s %10s\n", "content", "preset", "frames", "cpu ms/frame", "wall ms/frame",
                "longest ms", "Mbit/s");
}

void print(const char* content, const char* preset, const EncoderCost& cost) {
    std::printf("%-10s %-10s %8d %12.2f %12.2f %11.1f %10.2f\n", content, preset, cost.frames, cost.cpuPerFrame,
                cost.wallPerFrame, cost.longest, cost.bitRate / 1e6);
    std::fflush(stdout);
}

void measurePainted() {
    printHeading();
    for (const Content content : kContents) {
        constexpr std::pair<EncoderPreset, const char*> kPresets[] = {{EncoderPreset::veryfast, "veryfast"},
                                                                      {EncoderPreset::superfast, "superfast"},
                                                                      {EncoderPreset::ultrafast, "ultrafast"}};
        for (const auto& [preset, name] : kPresets) {
            FfmpegWriterOptions options;
            options.preset = preset;
            Painter painter(content, kWidth, kHeight);
            int left = kFrames;
            const auto next = [&] { return left-- > 0 ? painter.next() : FrameRef(); };
            print(nameOf(content), name, measureEncoder(recordingSettings(kWidth, kHeight, kRate), options, next));
        }
    }
}

bool readPlane(const PlaneView& plane, std::size_t bytesPerUnit) {
    for (int y = 0; y < plane.height; ++y) {
        if (std::fread(plane.row(y), bytesPerUnit, static_cast<std::size_t>(plane.width), stdin) !=
            static_cast<std::size_t>(plane.width)) {
            return false;
        }
    }
    return true;
}

void measureInput(int width, int height, int rate) {
    printHeading();
    const auto next = [&]() -> FrameRef {
        FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width, height);
        return picture && readPlane(picture->plane(0), 1) && readPlane(picture->plane(1), 2) ? picture : FrameRef();
    };
    print("input", "veryfast", measureEncoder(recordingSettings(width, height, rate), {}, next));
}

int paint(const std::string& name, int frames) {
    for (const Content content : kContents) {
        if (name != nameOf(content)) {
            continue;
        }
        Painter painter(content, kWidth, kHeight);
        for (int i = 0; i < frames; ++i) {
            const FrameRef picture = painter.next();
            for (int index = 0; index < 2; ++index) {
                const PlaneView plane = picture->plane(index);
                for (int y = 0; y < plane.height; ++y) {
                    std::fwrite(plane.row(y), static_cast<std::size_t>(index) + 1,
                                static_cast<std::size_t>(plane.width), stdout);
                }
            }
        }
        return 0;
    }
    return 1;
}

bool append(AssetWriterInput& input, const Sample& sample) {
    while (!input.isReadyForMoreMediaData()) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return input.append(sample);
}

// A still page with two sound tracks, as fast as it can be written; then the stop is timed.
int measureFinish(const std::filesystem::path& file, double minutes) {
    FfmpegAssetWriterFactory factory;
    const auto writer = factory.makeWriter(file).value().release();
    const std::unique_ptr<AssetWriter> owner(writer);
    AssetWriterInput* video = writer->addVideoInput(recordingSettings(640, 360, kRate));
    AssetWriterInput* sounds[] = {writer->addAudioInput({}), writer->addAudioInput({})};
    if (!writer->startWriting()) {
        return 1;
    }
    writer->startSession(MediaTime::zero());
    Painter painter(Content::still, 640, 360);
    const AudioRef sound = AudioBuffer::create({}, 960);
    std::memset(sound->bytes().data(), 0, sound->bytes().size());
    std::int64_t soundFrames = 0;
    const int frames = static_cast<int>(minutes * 60 * kRate);
    for (int i = 0; i < frames; ++i) {
        Sample picture;
        picture.timing.presentation = MediaTime(i, kRate);
        picture.image = painter.next();
        append(*video, picture);
        for (; soundFrames * kRate < std::int64_t{i} * 48000; soundFrames += 960) {
            Sample sample;
            sample.timing.presentation = MediaTime(soundFrames, 48000);
            sample.audio = sound;
            for (AssetWriterInput* input : sounds) {
                append(*input, sample);
            }
        }
    }
    const auto begin = std::chrono::steady_clock::now();
    std::promise<void> done;
    writer->finishWriting([&done] { done.set_value(); });
    done.get_future().wait();
    const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("%.0f minutes, %d pictures, %s: %.3f s from stop to finished file\n", minutes, frames,
                writer->status() == WriterStatus::completed ? "completed" : "NOT completed", took);
    return 0;
}

int run(int count, char** arguments) {
    const std::string mode = count > 1 ? arguments[1] : "";
    if (mode == "--nv12" && count == 5) {
        measureInput(std::atoi(arguments[2]), std::atoi(arguments[3]), std::atoi(arguments[4]));
        return 0;
    }
    if (mode == "--paint" && count == 4) {
        return paint(arguments[2], std::atoi(arguments[3]));
    }
    if (mode == "--finish" && count == 4) {
        return measureFinish(arguments[2], std::atof(arguments[3]));
    }
    measurePainted();
    return 0;
}

} // namespace
} // namespace velmo::bench

int main(int count, char** arguments) {
    return velmo::bench::run(count, arguments);
}
