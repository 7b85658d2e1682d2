#pragma once

#include "base/SerialQueue.h"
#include "media/AssetWriter.h"
#include "media/AudioTimeline.h"
#include "platform/ffmpeg/internal/AacEncoder.h"
#include "platform/ffmpeg/internal/PacketSink.h"

#include <atomic>
#include <memory>

namespace velmo::internal {

/// A sound track: its buffers go through an `AudioTimeline` into the AAC encoder, on "velmo.writer.audio". At most
/// `kQueueLimit` buffers wait, then the input is not ready.
class AudioTrack final : public AssetWriterInput {
public:
    static constexpr int kQueueLimit = 64;

    /// `sink` is borrowed and outlives the track.
    AudioTrack(const AudioSettings& settings, PacketSink& sink);

    /// Before anything else. The encoder's parameters are then known.
    Result<void> open();
    const AVCodecContext& context() const { return encoder_->context(); }
    AVRational timeBase() const { return encoder_->timeBase(); }
    /// The number in the file, before the first sample.
    void setNumber(int number) { number_ = number; }
    void startSession(MediaTime sourceTime) { sessionStart_ = sourceTime; }

    bool isReadyForMoreMediaData() const override;
    bool append(const Sample& sample) override;
    void markAsFinished() override;
    /// Another track has come to `time`. A source that stays far behind is silent, and is written as silence now
    /// rather than all at once when it speaks again.
    void keepUpWith(MediaTime time);

private:
    void encode(std::span<const float> interleaved);
    void drain();

    const AudioSettings settings_;
    PacketSink& sink_;
    int number_ = 0;
    std::atomic<int> waiting_{0};

    // On the thread that appends.
    MediaTime sessionStart_;
    MediaTime last_;
    MediaTime keptUp_ = MediaTime::zero();
    bool finished_ = false;

    // On the queue.
    std::unique_ptr<AacEncoder> encoder_;
    AudioTimeline timeline_;
    bool failed_ = false;

    ThreadQueue queue_; // last: its thread ends before what it works on
};

} // namespace velmo::internal
