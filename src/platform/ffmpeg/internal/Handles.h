#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace velmo::internal {

/// Ends a library object through the library's own function, which takes the address of the pointer.
template <auto Free>
struct FreedThrough {
    template <typename T>
    void operator()(T* object) const {
        Free(&object);
    }
};

struct FreedScaler {
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

using CodecContext = std::unique_ptr<AVCodecContext, FreedThrough<avcodec_free_context>>;
using CodecParameters = std::unique_ptr<AVCodecParameters, FreedThrough<avcodec_parameters_free>>;
using FramePtr = std::unique_ptr<AVFrame, FreedThrough<av_frame_free>>;
using PacketPtr = std::unique_ptr<AVPacket, FreedThrough<av_packet_free>>;
using InputContext = std::unique_ptr<AVFormatContext, FreedThrough<avformat_close_input>>;
using Resampler = std::unique_ptr<SwrContext, FreedThrough<swr_free>>;
using Scaler = std::unique_ptr<SwsContext, FreedScaler>;

} // namespace velmo::internal
