#include "platform/ffmpeg/internal/VideoRangeConverter.h"

namespace velmo::internal {

namespace {

constexpr int kPictures = 6; // the mail, the feed, the screen, the compositor's two, one in the making
constexpr int kHighDefinition = 720;
constexpr int kOne = 1 << 16;

struct Plain {
    AVPixelFormat full;
    AVPixelFormat plain;
};

/// The formats that carry their range in their name, which is the decoder's old way to say it.
constexpr Plain kFullRange[] = {
    {AV_PIX_FMT_YUVJ420P, AV_PIX_FMT_YUV420P},
    {AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUV422P},
    {AV_PIX_FMT_YUVJ444P, AV_PIX_FMT_YUV444P},
    {AV_PIX_FMT_YUVJ440P, AV_PIX_FMT_YUV440P},
};

} // namespace

VideoRangeConverter::Kind VideoRangeConverter::kindOf(const AVFrame& frame) const {
    Kind kind{frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.colorspace,
              frame.color_range == AVCOL_RANGE_JPEG};
    if (kind.matrix == AVCOL_SPC_UNSPECIFIED || kind.matrix == AVCOL_SPC_RGB) {
        const bool high = untagged_ == Untagged::file && frame.height >= kHighDefinition;
        kind.matrix = high ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
    for (const Plain& each : kFullRange) {
        if (kind.format == each.full) {
            kind.format = each.plain;
            kind.fullRange = true;
        }
    }
    return kind;
}

bool VideoRangeConverter::prepare(const Kind& kind) {
    if (kind == kind_) {
        return scaler_ != nullptr && pool_ != nullptr;
    }
    if (pool_ == nullptr || kind.width != pool_->width() || kind.height != pool_->height()) {
        pool_ = PixelBufferPool::create(PixelFormat::nv12, kind.width, kind.height, kPictures);
    }
    kind_ = kind;
    scaler_.reset(sws_getContext(kind.width, kind.height, kind.format, kind.width, kind.height, AV_PIX_FMT_NV12,
                                 SWS_BILINEAR | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    if (scaler_ == nullptr || pool_ == nullptr) {
        return false;
    }
    sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(kind.matrix), kind.fullRange ? 1 : 0,
                             sws_getCoefficients(SWS_CS_ITU709), 0, 0, kOne, kOne);
    return true;
}

FrameRef VideoRangeConverter::convert(const AVFrame& frame) {
    if (frame.width < 1 || frame.height < 1 || !prepare(kindOf(frame))) {
        return nullptr;
    }
    FrameRef picture = pool_->take();
    if (!picture) {
        return nullptr;
    }
    const PlaneView luma = picture->plane(0);
    const PlaneView chroma = picture->plane(1);
    std::uint8_t* const planes[] = {luma.data, chroma.data, nullptr, nullptr};
    const int strides[] = {static_cast<int>(luma.stride), static_cast<int>(chroma.stride), 0, 0};
    const int rows = sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
    return rows == frame.height ? std::move(picture) : nullptr;
}

} // namespace velmo::internal
