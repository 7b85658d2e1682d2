#include "platform/ffmpeg/internal/CameraDecoder.h"

namespace velmo::internal {

std::unique_ptr<CameraDecoder> CameraDecoder::create(const AVStream& stream) {
    std::unique_ptr<CameraDecoder> decoder(new CameraDecoder(stream));
    decoder->frame_.reset(av_frame_alloc());
    return decoder->frame_ != nullptr && decoder->open(true) ? std::move(decoder) : nullptr;
}

bool CameraDecoder::open(bool strict) {
    strict_ = strict;
    const AVCodec* codec = avcodec_find_decoder(stream_.codecpar->codec_id);
    codec_.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (codec_ == nullptr || avcodec_parameters_to_context(codec_.get(), stream_.codecpar) < 0) {
        return false;
    }
    if (codec_->codec_id ==
        AV_CODEC_ID_MJPEG) { // pictures tell their size; half of an announced one is taken for a field
        codec_->width = codec_->height = 0;
        codec_->coded_width = codec_->coded_height = 0;
    }
    codec_->pkt_timebase = stream_.time_base;
    codec_->thread_count = 1; // more would hold pictures back
    codec_->flags |= AV_CODEC_FLAG_LOW_DELAY;
    codec_->err_recognition = strict ? AV_EF_EXPLODE : 0;
    return avcodec_open2(codec_.get(), codec, nullptr) >= 0;
}

void CameraDecoder::decode(const AVPacket* packet, const std::function<void(const AVFrame&)>& take) {
    if (codec_ == nullptr || (packet != nullptr && packet->size == 0)) {
        return; // a driver's empty buffer would read as the end
    }
    if (avcodec_send_packet(codec_.get(), packet) < 0) {
        noteDamage();
        return;
    }
    while (true) {
        const int result = avcodec_receive_frame(codec_.get(), frame_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return;
        }
        const bool whole = result >= 0 && ((frame_->flags & AV_FRAME_FLAG_CORRUPT) == 0 || !strict_);
        if (!whole) {
            noteDamage();
            return;
        }
        everGood_ = true;
        damaged_ = 0;
        take(*frame_);
    }
}

void CameraDecoder::noteDamage() {
    if (++damaged_ >= kLenientAfter && strict_ && !everGood_) {
        open(false);
    }
}

} // namespace velmo::internal
