#include "platform/ffmpeg/internal/AacEncoder.h"

#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <algorithm>

namespace velmo::internal {

bool canEncode(const AudioSettings& settings) {
    return settings.sampleRate == 48000 && settings.channels == 2 && settings.bitRate > 0;
}

Result<std::unique_ptr<AacEncoder>> AacEncoder::open(const AudioSettings& settings, Sink sink) {
    const AVCodec* codec = avcodec_find_encoder_by_name("aac");
    std::unique_ptr<AacEncoder> encoder(new AacEncoder);
    encoder->context_.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    encoder->frame_.reset(av_frame_alloc());
    if (encoder->context_ == nullptr || encoder->frame_ == nullptr) {
        return mediaError(MediaError::encoder);
    }
    AVCodecContext& context = *encoder->context_;
    context.sample_fmt = AV_SAMPLE_FMT_FLTP;
    context.sample_rate = settings.sampleRate;
    context.time_base = {1, settings.sampleRate};
    context.bit_rate = settings.bitRate;
    context.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_channel_layout_default(&context.ch_layout, settings.channels);
    if (const int failed = avcodec_open2(&context, codec, nullptr); failed < 0) {
        return libraryError(failed, MediaError::encoder);
    }
    AVFrame& frame = *encoder->frame_;
    frame.format = context.sample_fmt;
    frame.nb_samples = context.frame_size;
    frame.sample_rate = context.sample_rate;
    if (av_channel_layout_copy(&frame.ch_layout, &context.ch_layout) < 0 || av_frame_get_buffer(&frame, 0) < 0) {
        return systemError(ENOMEM);
    }
    encoder->sink_ = std::move(sink);
    return encoder;
}

bool AacEncoder::encode(std::span<const float> interleaved) {
    const int channels = context_->ch_layout.nb_channels;
    int left = static_cast<int>(interleaved.size()) / channels;
    const float* in = interleaved.data();
    while (left > 0) {
        if (filled_ == 0 && av_frame_make_writable(frame_.get()) < 0) {
            return false;
        }
        const int count = std::min(left, context_->frame_size - filled_);
        for (int channel = 0; channel < channels; ++channel) {
            auto* out = reinterpret_cast<float*>(frame_->data[channel]) + filled_;
            for (int i = 0; i < count; ++i) {
                out[i] = in[i * channels + channel];
            }
        }
        in += static_cast<std::ptrdiff_t>(count) * channels;
        left -= count;
        filled_ += count;
        if (filled_ == context_->frame_size && !send(frame_.get())) {
            return false;
        }
    }
    return true;
}

bool AacEncoder::finish() {
    if (filled_ > 0) {
        frame_->nb_samples = filled_;
        if (!send(frame_.get())) {
            return false;
        }
    }
    return send(nullptr);
}

bool AacEncoder::send(const AVFrame* frame) {
    if (frame != nullptr) {
        frame_->pts = sent_;
        sent_ += filled_;
        filled_ = 0;
    }
    if (avcodec_send_frame(context_.get(), frame) < 0) {
        return false;
    }
    while (true) {
        PacketPtr packet(av_packet_alloc());
        if (packet == nullptr) {
            return false;
        }
        const int result = avcodec_receive_packet(context_.get(), packet.get());
        if (result < 0) {
            return result == AVERROR(EAGAIN) || result == AVERROR_EOF;
        }
        sink_(std::move(packet));
    }
}

} // namespace velmo::internal
