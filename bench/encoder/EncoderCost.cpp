#include "encoder/EncoderCost.h"

#include "platform/ffmpeg/internal/Errors.h"
#include "platform/ffmpeg/internal/H264Encoder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace velmo::bench {

namespace {

constexpr double kBitsPerPixel = 0.15;
constexpr int kLeastBitRate = 6'000'000;

double secondsOn(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

VideoSettings recordingSettings(int width, int height, int framesPerSecond) {
    const int bitRate = static_cast<int>(static_cast<double>(width) * height * framesPerSecond * kBitsPerPixel);
    return {width, height, std::max(bitRate, kLeastBitRate), framesPerSecond, 2 * framesPerSecond};
}

EncoderCost measureEncoder(const VideoSettings& settings, const FfmpegWriterOptions& options,
                           const std::function<FrameRef()>& next) {
    internal::silenceLibraries();
    auto encoder = internal::H264Encoder::open(settings, options.preset, options.threads);
    if (!encoder) {
        std::fprintf(stderr, "%s\n", encoder.error().text.c_str());
        std::exit(1);
    }
    const std::int64_t step = internal::kVideoTimeBase.den / settings.expectedSourceFrameRate;
    EncoderCost cost;
    double cpu = 0;
    double wall = 0;
    double bytes = 0;
    while (const FrameRef picture = next()) {
        const double cpuBefore = secondsOn(CLOCK_PROCESS_CPUTIME_ID);
        const double wallBefore = secondsOn(CLOCK_MONOTONIC);
        const auto packet =
            encoder.value()->encode(picture, cost.frames * step, step, internal::H264Encoder::Frame::free);
        const double took = secondsOn(CLOCK_MONOTONIC) - wallBefore;
        cpu += secondsOn(CLOCK_PROCESS_CPUTIME_ID) - cpuBefore;
        wall += took;
        cost.longest = std::max(cost.longest, took * 1000);
        bytes += packet == nullptr ? 0 : packet->size;
        ++cost.frames;
    }
    const int frames = std::max(cost.frames, 1);
    cost.cpuPerFrame = cpu * 1000 / frames;
    cost.wallPerFrame = wall * 1000 / frames;
    cost.bitRate = bytes * 8 * settings.expectedSourceFrameRate / frames;
    return cost;
}

} // namespace velmo::bench
