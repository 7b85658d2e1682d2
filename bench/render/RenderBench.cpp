// Milliseconds a frame of ZoomProcessor::render on one core, beside libswscale's bilinear scaler on the same crop.
// Both are timed in turn, in short rounds, and the median round of each counts, so that a busy machine slows both.

#include "compositor/ZoomProcessor.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

extern "C" {
#include <libswscale/swscale.h>
}

namespace {

using namespace velmo;

constexpr int kRounds = 31;
constexpr int kFramesPerRound = 10;

struct Subject {
    const char* name;
    PixelFormat format;
    AVPixelFormat ffmpegFormat;
    int width;
    int height;
    double scale;
};

constexpr Subject kSubjects[] = {
    {"1920x1080 NV12 zoom 2", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 2.0},
    {"1920x1080 NV12 zoom 1.25", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 1.25},
    {"1920x1080 NV12 zoom 6", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 6.0},
    {"3840x2160 NV12 zoom 2", PixelFormat::nv12, AV_PIX_FMT_NV12, 3840, 2160, 2.0},
    {"1920x1080 BGRA zoom 2", PixelFormat::bgra, AV_PIX_FMT_BGRA, 1920, 1080, 2.0},
};

FrameRef noise(PixelFormat format, int width, int height) {
    std::mt19937 random(1);
    FrameRef frame = PixelBuffer::create(format, width, height);
    for (int p = 0; p < frame->planeCount(); ++p) {
        const PlaneView plane = frame->plane(p);
        for (int y = 0; y < plane.height; ++y) {
            std::generate_n(plane.row(y), plane.stride, [&] { return static_cast<std::uint8_t>(random()); });
        }
    }
    return frame;
}

template <typename Work>
double millisecondsPerFrame(Work work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kFramesPerRound; ++i) {
        work();
    }
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / kFramesPerRound;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// The middle of the picture, stretched to the whole of `target`.
class SwscaleCrop {
public:
    SwscaleCrop(const Subject& subject, const FrameRef& source, const FrameRef& target)
        : height_(even(subject.height / subject.scale)), source_(source), target_(target) {
        const int width = even(subject.width / subject.scale);
        context_ = sws_getContext(width, height_, subject.ffmpegFormat, subject.width, subject.height,
                                  subject.ffmpegFormat, SWS_BILINEAR, nullptr, nullptr, nullptr);
        left_ = even((subject.width - width) / 2.0);
        top_ = even((subject.height - height_) / 2.0);
    }
    ~SwscaleCrop() { sws_freeContext(context_); }

    void operator()() const {
        const std::uint8_t* from[4] = {};
        std::uint8_t* to[4] = {};
        int fromStride[4] = {};
        int toStride[4] = {};
        for (int p = 0; p < source_->planeCount(); ++p) {
            const PlaneView plane = source_->plane(p);
            const int leftBytes = source_->format() == PixelFormat::bgra ? left_ * 4 : left_;
            from[p] = plane.row(p == 0 ? top_ : top_ / 2) + leftBytes;
            to[p] = target_->plane(p).data;
            fromStride[p] = static_cast<int>(plane.stride);
            toStride[p] = static_cast<int>(target_->plane(p).stride);
        }
        sws_scale(context_, from, fromStride, 0, height_, to, toStride);
    }

private:
    static int even(double value) { return static_cast<int>(value / 2) * 2; }

    int height_;
    FrameRef source_;
    FrameRef target_;
    SwsContext* context_ = nullptr;
    int left_ = 0;
    int top_ = 0;
};

void measure(const Subject& subject) {
    const FrameRef source = noise(subject.format, subject.width, subject.height);
    const SwscaleCrop swscale(subject, source, PixelBuffer::create(subject.format, subject.width, subject.height));
    ZoomProcessor resting;
    resting.setScale(subject.scale);
    ZoomProcessor moving;
    double drift = 0;

    std::vector<double> rest;
    std::vector<double> motion;
    std::vector<double> reference;
    for (int round = 0; round < kRounds; ++round) {
        rest.push_back(millisecondsPerFrame([&] { resting.render(source, MediaTime::zero(), MediaTime(1, 30)); }));
        motion.push_back(millisecondsPerFrame([&] {
            moving.setScale(subject.scale + (drift += 1e-5)); // a new crop for each frame
            moving.render(source, MediaTime::zero(), MediaTime(1, 30));
        }));
        reference.push_back(millisecondsPerFrame([&] { swscale(); }));
    }
    std::printf("%-26s render %6.3f ms, while zooming %6.3f ms, swscale bilinear %6.3f ms: %4.1f times as fast\n",
                subject.name, median(rest), median(motion), median(reference), median(reference) / median(motion));
}

} // namespace

int main() {
    for (const Subject& subject : kSubjects) {
        measure(subject);
    }
}
