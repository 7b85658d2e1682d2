#pragma once

#include "media/PixelBuffer.h"
#include "platform/ffmpeg/internal/Handles.h"

#include <memory>

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

    Kind kindOf(const AVFrame& frame) const;
    bool prepare(const Kind& kind);

    const Untagged untagged_;
    Kind kind_;
    Scaler scaler_;
    std::unique_ptr<PixelBufferPool> pool_;
};

} // namespace velmo::internal
