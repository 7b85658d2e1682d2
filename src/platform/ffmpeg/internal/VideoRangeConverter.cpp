#include "platform/ffmpeg/internal/VideoRangeConverter.h"

#include <algorithm>
#include <iterator>
#include <utility>

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

constexpr AVPixelFormat kRowFormats[] = {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUYV422};

/// For pictures of cameras, whose matrix is one of two; absent for what the row loops do not know.
template <typename Kind>
std::optional<Rec709Kernels::Matrix> matrixFor(const Kind& kind) {
    const bool isKnown =
        std::find(std::begin(kRowFormats), std::end(kRowFormats), kind.format) != std::end(kRowFormats);
    const bool isEven = kind.width % 2 == 0 && kind.height % 2 == 0;
    if (!isKnown || !isEven || kind.width < static_cast<int>(Rec709Kernels::kLeastPixels)) {
        return std::nullopt;
    }
    switch (kind.matrix) {
    case SWS_CS_ITU709:
        return Rec709Kernels::makeMatrix(0.2126, 0.0722, kind.fullRange);
    case SWS_CS_ITU601: // as AVCOL_SPC_BT470BG
    case AVCOL_SPC_SMPTE170M:
        return Rec709Kernels::makeMatrix(0.299, 0.114, kind.fullRange);
    default:
        return std::nullopt;
    }
}

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
        return (matrix_ || scaler_ != nullptr) && pool_ != nullptr;
    }
    if (pool_ == nullptr || kind.width != pool_->width() || kind.height != pool_->height()) {
        pool_ = PixelBufferPool::create(PixelFormat::nv12, kind.width, kind.height, kPictures);
    }
    kind_ = kind;
    matrix_ = matrixFor(kind);
    if (matrix_) {
        for (std::vector<std::uint8_t>& room : rooms_) {
            room.resize(2 * static_cast<std::size_t>(kind.width));
        }
    }
    return (matrix_ || prepareScaler(kind)) && pool_ != nullptr;
}

bool VideoRangeConverter::prepareScaler(const Kind& kind) {
    scaler_.reset(sws_getContext(kind.width, kind.height, kind.format, kind.width, kind.height, AV_PIX_FMT_NV12,
                                 SWS_BILINEAR | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    if (scaler_ == nullptr) {
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
    if (matrix_) {
        convertRows(frame, *picture);
        return picture;
    }
    return scale(frame, *picture) ? std::move(picture) : nullptr;
}

VideoRangeConverter::Row VideoRangeConverter::row(const AVFrame& frame, int y, std::vector<std::uint8_t>& room) const {
    const auto line = [&frame](int plane, int at) {
        return frame.data[plane] + std::ptrdiff_t{at} * frame.linesize[plane];
    };
    const auto width = static_cast<std::size_t>(kind_.width);
    if (kind_.format == AV_PIX_FMT_YUYV422) {
        std::uint8_t* const luma = room.data();
        std::uint8_t* const cb = luma + width;
        std::uint8_t* const cr = cb + width / 2;
        Rec709Kernels::unpack(line(0, y), width, luma, cb, cr);
        return {luma, {cb, cr}};
    }
    const int colorRow = kind_.format == AV_PIX_FMT_YUV420P ? y / 2 : y;
    return {line(0, y), {line(1, colorRow), line(2, colorRow)}};
}

void VideoRangeConverter::convertRows(const AVFrame& frame, PixelBuffer& picture) {
    const auto width = static_cast<std::size_t>(kind_.width);
    for (int y = 0; y < kind_.height; y += 2) {
        const Row upper = row(frame, y, rooms_[0]);
        const Row lower = row(frame, y + 1, rooms_[1]);
        for (const auto& [from, at] : {std::pair{&upper, y}, std::pair{&lower, y + 1}}) {
            Rec709Kernels::luma(*matrix_, from->luma, from->color.cb, from->color.cr, width, picture.plane(0).row(at));
        }
        Rec709Kernels::color(*matrix_, upper.color, lower.color, width / 2, picture.plane(1).row(y / 2));
    }
}

bool VideoRangeConverter::scale(const AVFrame& frame, PixelBuffer& picture) {
    const PlaneView luma = picture.plane(0);
    const PlaneView chroma = picture.plane(1);
    std::uint8_t* const planes[] = {luma.data, chroma.data, nullptr, nullptr};
    const int strides[] = {static_cast<int>(luma.stride), static_cast<int>(chroma.stride), 0, 0};
    return sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) == frame.height;
}

} // namespace velmo::internal
