#pragma once

#include "base/Result.h"
#include "media/AssetWriter.h"
#include "platform/ffmpeg/FfmpegWriterOptions.h"
#include "platform/ffmpeg/internal/Handles.h"

#include <cstdint>
#include <deque>
#include <memory>

namespace velmo::internal {

/// One tick of every video time here.
inline constexpr AVRational kVideoTimeBase{1, 90000};

/// Whether pictures of this size and rate can be encoded: even sides from 2 to 8192, positive rates.
bool canEncode(const VideoSettings& settings);

/// libx264: H.264 High, no frame reordering, no delay, Rec. 709 tags. One thread at a time; `send` blocks for as long
/// as encoding takes.
class H264Encoder {
public:
    enum class Frame { free, key };

    static Result<std::unique_ptr<H264Encoder>> open(const VideoSettings& settings, EncoderPreset preset, int threads);

    /// The headers of all presets are the same bytes for the same settings.
    const AVCodecContext& context() const { return *context_; }

    /// NV12 of the settings' size, read in place. Times in ticks of `kVideoTimeBase`, strictly increasing. Null when
    /// the encoder failed or, never with these settings, holds the picture back.
    PacketPtr encode(const FrameRef& picture, std::int64_t time, std::int64_t duration, Frame kind);
    /// What the encoder holds back; null when there is nothing. Only then, and no `encode` after it.
    PacketPtr drain();

private:
    H264Encoder() = default;
    PacketPtr receive();

    struct Timing {
        std::int64_t time;
        std::int64_t duration;
    };

    CodecContext context_;
    FramePtr frame_;
    std::deque<Timing> inFlight_;
    bool draining_ = false;
};

} // namespace velmo::internal
