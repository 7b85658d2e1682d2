#include "platform/ffmpeg/internal/UprightPicture.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace velmo::internal {

namespace {

struct PixelSize {
    int width;
    int height;
};

// Where a picture's right and down directions go on screen, each -1, 0 or 1: the display matrix for upright viewing.
struct Turn {
    int rightX = 1;
    int rightY = 0;
    int downX = 0;
    int downY = 1;

    bool isUpright() const { return rightX == 1 && downY == 1; }
    bool swapsSides() const { return rightX == 0; }
};

int sign(std::int32_t value) {
    return (value > 0) - (value < 0);
}

Turn turnOf(const AVStream& stream) {
    const auto* matrix =
        reinterpret_cast<const std::int32_t*>(av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
    if (matrix == nullptr) {
        return {};
    }
    const Turn turn{sign(matrix[0]), sign(matrix[1]), sign(matrix[3]), sign(matrix[4])};
    const bool isQuarter = std::abs(turn.rightX) + std::abs(turn.rightY) == 1 &&
                           turn.rightX * turn.downX + turn.rightY * turn.downY == 0 &&
                           std::abs(turn.downX) + std::abs(turn.downY) == 1;
    return isQuarter ? turn : Turn{};
}

PixelSize fittedSize(const AVFrame& frame, const AVStream& stream, int maximumSide) {
    AVRational aspect = frame.sample_aspect_ratio.num > 0 ? frame.sample_aspect_ratio : stream.sample_aspect_ratio;
    const double stretch = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1.0;
    const double width = frame.width * stretch;
    const double height = frame.height;
    const double scale = std::min(1.0, maximumSide / std::max(width, height));
    return {std::max(1, static_cast<int>(std::lround(width * scale))),
            std::max(1, static_cast<int>(std::lround(height * scale)))};
}

// Files without a tag are what their size suggests: high definition is Rec. 709.
int matrixOf(const AVFrame& frame) {
    if (frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB) {
        return frame.colorspace;
    }
    return frame.height >= 720 ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

FrameRef scaled(const AVFrame& frame, PixelSize size) {
    const Scaler scaler(sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), size.width,
                                       size.height, AV_PIX_FMT_BGRA, SWS_AREA | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT,
                                       nullptr, nullptr, nullptr));
    FrameRef picture = PixelBuffer::create(PixelFormat::bgra, size.width, size.height);
    if (scaler == nullptr || !picture) {
        return nullptr;
    }
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(matrixOf(frame)),
                             frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0, sws_getCoefficients(SWS_CS_DEFAULT), 1, 0,
                             1 << 16, 1 << 16);
    const PlaneView plane = picture->plane(0);
    std::uint8_t* const planes[] = {plane.data, nullptr, nullptr, nullptr};
    const int strides[] = {static_cast<int>(plane.stride), 0, 0, 0};
    const int rows = sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
    return rows == size.height ? picture : nullptr;
}

FrameRef turned(const FrameRef& picture, const Turn& turn) {
    const PlaneView from = picture->plane(0);
    const int width = turn.swapsSides() ? from.height : from.width;
    const int height = turn.swapsSides() ? from.width : from.height;
    FrameRef result = PixelBuffer::create(PixelFormat::bgra, width, height);
    if (!result) {
        return nullptr;
    }
    const PlaneView to = result->plane(0);
    // A direction that points left or up starts at the far side.
    const int startX = turn.rightX < 0 || turn.downX < 0 ? width - 1 : 0;
    const int startY = turn.rightY < 0 || turn.downY < 0 ? height - 1 : 0;
    for (int y = 0; y < from.height; ++y) {
        for (int x = 0; x < from.width; ++x) {
            const int toX = startX + x * turn.rightX + y * turn.downX;
            const int toY = startY + x * turn.rightY + y * turn.downY;
            std::memcpy(to.row(toY) + static_cast<std::ptrdiff_t>(toX) * 4,
                        from.row(y) + static_cast<std::ptrdiff_t>(x) * 4, 4);
        }
    }
    return result;
}

} // namespace

FrameRef uprightPicture(const AVFrame& frame, const AVStream& stream, int maximumSide) {
    if (frame.width < 1 || frame.height < 1 || maximumSide < 1) {
        return nullptr;
    }
    FrameRef picture = scaled(frame, fittedSize(frame, stream, maximumSide));
    const Turn turn = turnOf(stream);
    return picture && !turn.isUpright() ? turned(picture, turn) : picture;
}

} // namespace velmo::internal
