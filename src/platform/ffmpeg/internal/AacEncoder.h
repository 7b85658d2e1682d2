#pragma once

#include "base/Result.h"
#include "media/AssetWriter.h"
#include "platform/ffmpeg/internal/Handles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace velmo::internal {

bool canEncode(const AudioSettings& settings);

/// AAC LC from one continuous stream of sound that begins at zero. One thread at a time; calls block for as long as
/// encoding takes.
class AacEncoder {
public:
    using Sink = std::function<void(PacketPtr)>;

    /// `sink` takes each packet, with times in ticks of the sample rate; the first lies before zero by what the encoder
    /// needs to settle, and the index takes that off again.
    static Result<std::unique_ptr<AacEncoder>> open(const AudioSettings& settings, Sink sink);

    const AVCodecContext& context() const { return *context_; }
    AVRational timeBase() const { return {1, context_->sample_rate}; }

    /// Interleaved, of the settings' channels. False when the encoder failed.
    bool encode(std::span<const float> interleaved);
    /// Encodes what is left; no call follows.
    bool finish();

private:
    AacEncoder() = default;
    bool send(const AVFrame* frame);

    CodecContext context_;
    FramePtr frame_;
    int filled_ = 0;
    std::int64_t sent_ = 0;
    Sink sink_;
};

} // namespace velmo::internal
