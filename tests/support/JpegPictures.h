#pragma once

#include "support/Bytes.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>

namespace velmo::test {

/// A JPEG picture as cameras send them: full range, 4:2:2. Its left half has the even brightness `level`, its right
/// half is noise, so that it has bytes to be damaged.
inline Bytes jpegPicture(int width, int height, int level) {
    struct Free {
        void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
        void operator()(AVFrame* frame) const { av_frame_free(&frame); }
        void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    };
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
    const std::unique_ptr<AVCodecContext, Free> encoder(avcodec_alloc_context3(codec));
    encoder->width = width;
    encoder->height = height;
    encoder->pix_fmt = AV_PIX_FMT_YUVJ422P;
    encoder->color_range = AVCOL_RANGE_JPEG;
    encoder->time_base = {1, 25};
    encoder->flags |= AV_CODEC_FLAG_QSCALE;
    encoder->global_quality = FF_QP2LAMBDA * 3;
    const std::unique_ptr<AVFrame, Free> frame(av_frame_alloc());
    frame->format = AV_PIX_FMT_YUVJ422P;
    frame->width = width;
    frame->height = height;
    frame->quality = encoder->global_quality;
    const std::unique_ptr<AVPacket, Free> packet(av_packet_alloc());
    if (avcodec_open2(encoder.get(), codec, nullptr) < 0 || av_frame_get_buffer(frame.get(), 0) < 0) {
        throw std::runtime_error("no JPEG encoder");
    }
    std::minstd_rand random(static_cast<unsigned>(level) + 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            frame->data[0][y * frame->linesize[0] + x] =
                static_cast<std::uint8_t>(x < width / 2 ? level : 40 + random() % 180);
        }
        for (int x = 0; x < width / 2; ++x) {
            frame->data[1][y * frame->linesize[1] + x] = 128;
            frame->data[2][y * frame->linesize[2] + x] = 128;
        }
    }
    if (avcodec_send_frame(encoder.get(), frame.get()) < 0 || avcodec_receive_packet(encoder.get(), packet.get()) < 0) {
        throw std::runtime_error("no JPEG picture");
    }
    return {packet->data, packet->data + packet->size};
}

/// The luma that `level` has in video range.
inline int videoLuma(int level) {
    return 16 + level * 219 / 255;
}

inline Bytes firstPart(const Bytes& picture, double part) {
    return {picture.begin(), picture.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(picture.size()) * part)};
}

} // namespace velmo::test
