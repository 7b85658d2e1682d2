// What it costs to bring a camera's picture of 1280x720 to NV12 of Rec. 709: milliseconds of CPU a picture, the
// converter beside libswscale with the same task, in turn.
//
//   build/release/bin/bench_camera

#include "platform/ffmpeg/internal/VideoRangeConverter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>

namespace velmo::internal {
namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr int kPictures = 100;
constexpr int kRounds = 5;

double cpu() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_nsec) / 1e6;
}

FramePtr noise(AVPixelFormat format, AVColorRange range) {
    FramePtr frame(av_frame_alloc());
    frame->format = format;
    frame->width = kWidth;
    frame->height = kHeight;
    frame->color_range = range;
    frame->colorspace = AVCOL_SPC_BT470BG;
    if (av_frame_get_buffer(frame.get(), 0) < 0) {
        std::abort();
    }
    std::minstd_rand random(1);
    for (const AVBufferRef* buffer : frame->buf) {
        if (buffer != nullptr) {
            std::generate_n(buffer->data, buffer->size, [&] { return static_cast<std::uint8_t>(40 + random() % 160); });
        }
    }
    return frame;
}

template <typename Work>
double each(const Work& work) {
    const double before = cpu();
    for (int i = 0; i < kPictures; ++i) {
        work();
    }
    return (cpu() - before) / kPictures;
}

void compare(const char* name, AVPixelFormat format, AVColorRange range) {
    const FramePtr frame = noise(format, range);
    VideoRangeConverter converter(VideoRangeConverter::Untagged::camera);
    const Scaler scaler(sws_getContext(kWidth, kHeight, format, kWidth, kHeight, AV_PIX_FMT_NV12,
                                       SWS_BILINEAR | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    const int full = range == AVCOL_RANGE_JPEG ? 1 : 0;
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(SWS_CS_ITU601), full, sws_getCoefficients(SWS_CS_ITU709),
                             0, 0, 1 << 16, 1 << 16);
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, kWidth, kHeight, 1);
    const FrameRef to = pool->take();
    double own = 1e9;
    double library = 1e9;
    for (int round = 0; round < kRounds; ++round) { // the best of some: others use the machine
        own = std::min(own, each([&] { converter.convert(*frame); }));
        library = std::min(library, each([&] {
                               std::uint8_t* const planes[] = {to->plane(0).data, to->plane(1).data, nullptr, nullptr};
                               const int strides[] = {static_cast<int>(to->plane(0).stride),
                                                      static_cast<int>(to->plane(1).stride), 0, 0};
                               sws_scale(scaler.get(), frame->data, frame->linesize, 0, kHeight, planes, strides);
                           }));
    }
    std::printf("%-22s %6.2f ms, libswscale %6.2f ms, ratio %.2f\n", name, own, library, own / library);
}

} // namespace
} // namespace velmo::internal

int main() {
    using velmo::internal::compare;
    compare("MJPEG 4:2:2, full", AV_PIX_FMT_YUV422P, AVCOL_RANGE_JPEG);
    compare("MJPEG 4:2:0, full", AV_PIX_FMT_YUV420P, AVCOL_RANGE_JPEG);
    compare("YUYV, video range", AV_PIX_FMT_YUYV422, AVCOL_RANGE_MPEG);
    return EXIT_SUCCESS;
}
