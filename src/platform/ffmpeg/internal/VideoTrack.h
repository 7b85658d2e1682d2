#pragma once

#include "base/SerialQueue.h"
#include "media/AssetWriter.h"
#include "platform/ffmpeg/FfmpegWriterOptions.h"
#include "platform/ffmpeg/internal/EncoderLoad.h"
#include "platform/ffmpeg/internal/H264Encoder.h"
#include "platform/ffmpeg/internal/PacketSink.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace velmo::internal {

/// The picture track. Pictures wait, uncopied, for the encoder on "velmo.writer.video"; at most `kQueueLimit` are there
/// with the one in work, then the input is not ready. When the encoder falls behind, it goes on with an easier preset.
class VideoTrack final : public AssetWriterInput {
public:
    static constexpr int kQueueLimit = 8;

    /// `sink` is borrowed and outlives the track.
    VideoTrack(const VideoSettings& settings, FfmpegWriterOptions options, PacketSink& sink);

    /// Before anything else. The encoder's parameters are then known.
    Result<void> open();
    const AVCodecContext& context() const { return encoder_->context(); }
    /// The number in the file, before the first sample.
    void setNumber(int number) { number_ = number; }
    void startSession(MediaTime sourceTime) { sessionStart_ = sourceTime; }

    bool isReadyForMoreMediaData() const override;
    bool append(const Sample& sample) override;
    void markAsFinished() override;

private:
    void encode(const FrameRef& picture, std::int64_t time, std::int64_t duration);
    void watchLoad(double encodingTime);
    void stepDown();
    void drain();

    const VideoSettings settings_;
    const FfmpegWriterOptions options_;
    PacketSink& sink_;
    int number_ = 0;
    std::atomic<int> waiting_{0};

    // On the thread that appends.
    MediaTime sessionStart_;
    std::int64_t lastTime_ = -1; // in ticks of kVideoTimeBase
    bool finished_ = false;

    // On the queue.
    std::unique_ptr<H264Encoder> encoder_;
    EncoderPreset preset_;
    EncoderLoad load_;
    std::int64_t lastKeyTime_ = 0;
    bool lastWasKey_ = false;
    bool stepDownIsDue_ = false;
    bool failed_ = false;

    ThreadQueue queue_; // last: its thread ends before what it works on
};

} // namespace velmo::internal
