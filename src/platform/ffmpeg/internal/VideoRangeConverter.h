#pragma once

#include "media/PixelBuffer.h"
#include "platform/ffmpeg/internal/Handles.h"
#include "platform/ffmpeg/internal/Rec709Kernels.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::internal {

/// Turns decoded pictures of any format, matrix and range into NV12 of Rec. 709 and video range, in pooled buffers of
/// the same size. One thread; allocates when size or format change.
class VideoRangeConverter {
public:
    /// For pictures that do not say their matrix: `camera` is Rec. 601 whatever the size, as USB cameras are unless
    /// they tell otherwise; `file` goes by the size.
    enum class Untagged { camera, file };

    explicit VideoRangeConverter(Untagged untagged) : untagged_(untagged) {}

    /// Null when it cannot be converted.
    FrameRef convert(const AVFrame& frame);

private:
    struct Kind {
        int width = 0;
        int height = 0;
        AVPixelFormat format = AV_PIX_FMT_NONE;
        int matrix = 0;
        bool fullRange = false;
        friend bool operator==(const Kind&, const Kind&) = default;
    };

    /// A row of a decoded picture, wherever its values lie.
    struct Row {
        const std::uint8_t* luma;
        Rec709Kernels::ColorRow color;
    };

    Kind kindOf(const AVFrame& frame) const;
    bool prepare(const Kind& kind);
    bool prepareScaler(const Kind& kind);
    Row row(const AVFrame& frame, int y, std::vector<std::uint8_t>& room) const;
    void convertRows(const AVFrame& frame, PixelBuffer& picture);
    bool scale(const AVFrame& frame, PixelBuffer& picture);

    const Untagged untagged_;
    Kind kind_;
    std::optional<Rec709Kernels::Matrix> matrix_;    // for what the row loops know
    std::array<std::vector<std::uint8_t>, 2> rooms_; // for two rows taken apart
    Scaler scaler_;                                  // for all else
    std::unique_ptr<PixelBufferPool> pool_;
};

} // namespace velmo::internal
