#include "platform/ffmpeg/internal/H264Encoder.h"

#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <iterator>

namespace velmo::internal {

namespace {

constexpr int kSmallestSide = 2;
constexpr int kLargestSide = 8192;
// Below this a picture only costs more: with little to show the average bit rate would otherwise be spent on noise.
constexpr int kFinestQuantizer = 20;

// Fixed for all presets, so that each writes the same headers: what a preset changes beyond these stays inside a frame.
constexpr const char* kSameHeaders = "cabac=1:8x8dct=1:ref=1:weightp=0:stitchable=1";

constexpr const char* kPresetNames[] = {"veryfast", "superfast", "ultrafast"};

bool isPossibleSide(int side) {
    return side >= kSmallestSide && side <= kLargestSide && side % 2 == 0;
}

void releasePicture(void* picture, std::uint8_t*) {
    static_cast<const PixelBuffer*>(picture)->release();
}

// Points the frame at the picture's planes; the frame holds a count of the picture until it is let go.
bool wrap(const FrameRef& picture, AVFrame& frame) {
    const PlaneView luma = picture->plane(0);
    const PlaneView chroma = picture->plane(1);
    picture->retain();
    frame.buf[0] =
        av_buffer_create(luma.data, picture->byteCount(), &releasePicture, picture.get(), AV_BUFFER_FLAG_READONLY);
    if (frame.buf[0] == nullptr) {
        picture->release();
        return false;
    }
    frame.format = AV_PIX_FMT_NV12;
    frame.width = picture->width();
    frame.height = picture->height();
    frame.data[0] = luma.data;
    frame.data[1] = chroma.data;
    frame.linesize[0] = static_cast<int>(luma.stride);
    frame.linesize[1] = static_cast<int>(chroma.stride);
    return true;
}

void describe(AVCodecContext& context, const VideoSettings& settings, int threads) {
    context.width = settings.width;
    context.height = settings.height;
    context.pix_fmt = AV_PIX_FMT_NV12;
    context.time_base = kVideoTimeBase;
    context.framerate = {settings.expectedSourceFrameRate, 1};
    context.sample_aspect_ratio = {1, 1};
    context.bit_rate = settings.averageBitRate;
    context.gop_size = settings.maxKeyFrameInterval;
    context.max_b_frames = 0;
    context.qmin = kFinestQuantizer;
    context.thread_count = threads;
    context.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    context.color_primaries = AVCOL_PRI_BT709;
    context.color_trc = AVCOL_TRC_BT709;
    context.colorspace = AVCOL_SPC_BT709;
    context.color_range = AVCOL_RANGE_MPEG;
    context.chroma_sample_location = AVCHROMA_LOC_LEFT;
}

} // namespace

bool canEncode(const VideoSettings& settings) {
    return isPossibleSide(settings.width) && isPossibleSide(settings.height) && settings.averageBitRate > 0 &&
           settings.expectedSourceFrameRate > 0 && settings.maxKeyFrameInterval > 0;
}

Result<std::unique_ptr<H264Encoder>> H264Encoder::open(const VideoSettings& settings, EncoderPreset preset,
                                                       int threads) {
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    std::unique_ptr<H264Encoder> encoder(new H264Encoder);
    encoder->context_.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    encoder->frame_.reset(av_frame_alloc());
    if (encoder->context_ == nullptr || encoder->frame_ == nullptr) {
        return mediaError(MediaError::encoder);
    }
    AVCodecContext& context = *encoder->context_;
    describe(context, settings, threads);
    const std::pair<const char*, const char*> options[] = {
        {"preset", kPresetNames[static_cast<std::size_t>(preset)]},
        {"tune", "zerolatency"},
        {"profile", "high"},
        {"forced-idr", "1"},
        {"x264-params", kSameHeaders},
    };
    for (const auto& [name, value] : options) {
        if (av_opt_set(context.priv_data, name, value, 0) < 0) {
            return mediaError(MediaError::encoder);
        }
    }
    if (const int failed = avcodec_open2(&context, codec, nullptr); failed < 0) {
        return libraryError(failed, MediaError::encoder);
    }
    return encoder;
}

PacketPtr H264Encoder::encode(const FrameRef& picture, std::int64_t time, std::int64_t duration, Frame kind) {
    if (!wrap(picture, *frame_)) {
        return nullptr;
    }
    frame_->pts = time;
    frame_->pict_type = kind == Frame::key ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
    const int failed = avcodec_send_frame(context_.get(), frame_.get());
    av_frame_unref(frame_.get());
    if (failed < 0) {
        return nullptr;
    }
    inFlight_.push_back({time, duration});
    return receive();
}

PacketPtr H264Encoder::drain() {
    if (!draining_) {
        draining_ = true;
        avcodec_send_frame(context_.get(), nullptr);
    }
    return receive();
}

PacketPtr H264Encoder::receive() {
    PacketPtr packet(av_packet_alloc());
    if (packet == nullptr || avcodec_receive_packet(context_.get(), packet.get()) < 0) {
        return nullptr;
    }
    while (!inFlight_.empty() && inFlight_.front().time <= packet->pts) {
        packet->duration = inFlight_.front().duration;
        inFlight_.pop_front();
    }
    return packet;
}

} // namespace velmo::internal
