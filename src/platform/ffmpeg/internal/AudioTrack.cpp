#include "platform/ffmpeg/internal/AudioTrack.h"

#include "platform/ffmpeg/internal/Errors.h"

namespace velmo::internal {

namespace {

// More than a caller's own line of waiting sound can hold, so that nothing that still comes is cut.
constexpr MediaTime kPatience{10, 1};
constexpr MediaTime kKeepUpStep{1, 1};

} // namespace

AudioTrack::AudioTrack(const AudioSettings& settings, PacketSink& sink)
    : settings_(settings), sink_(sink),
      timeline_(settings.sampleRate, [this](std::span<const float> interleaved) { encode(interleaved); }),
      queue_("velmo.writer.audio") {}

Result<void> AudioTrack::open() {
    auto encoder = AacEncoder::open(settings_, [this](PacketPtr packet) { sink_.put(std::move(packet), number_); });
    if (!encoder) {
        return encoder.error();
    }
    encoder_ = std::move(encoder).value();
    return {};
}

bool AudioTrack::isReadyForMoreMediaData() const {
    return !finished_ && sessionStart_.isValid() && waiting_.load(std::memory_order_relaxed) < kQueueLimit &&
           sink_.isOpen() && sink_.hasRoom();
}

bool AudioTrack::append(const Sample& sample) {
    const AudioFormat wanted{static_cast<double>(settings_.sampleRate), settings_.channels,
                             AudioFormat::Sample::float32, true};
    if (!isReadyForMoreMediaData() || !sample.audio || sample.audio->format() != wanted) {
        return false;
    }
    const MediaTime time = sample.presentation() - sessionStart_;
    if (!time.isValid() || time < MediaTime::zero() || time <= last_) {
        return false;
    }
    last_ = time;
    waiting_.fetch_add(1, std::memory_order_relaxed);
    queue_.async([this, time, sound = sample.audio]() mutable {
        if (!failed_ && sink_.isOpen()) {
            timeline_.push(time, std::move(sound));
        }
        waiting_.fetch_sub(1, std::memory_order_relaxed);
    });
    sink_.reached(time);
    return true;
}

void AudioTrack::markAsFinished() {
    if (!finished_) {
        finished_ = true;
        queue_.async([this] { drain(); });
    }
}

void AudioTrack::keepUpWith(MediaTime time) {
    if (finished_ || time < keptUp_ + kKeepUpStep) {
        return;
    }
    keptUp_ = time;
    queue_.async([this, end = time - kPatience] {
        if (!failed_ && sink_.isOpen()) {
            timeline_.advanceTo(end);
        }
    });
}

void AudioTrack::encode(std::span<const float> interleaved) {
    if (!failed_ && !encoder_->encode(interleaved)) {
        failed_ = true;
        sink_.trackFailed(mediaError(MediaError::encoder));
    }
}

void AudioTrack::drain() {
    if (!failed_ && sink_.isOpen()) {
        timeline_.finish();
    }
    if (!failed_ && sink_.isOpen()) {
        encoder_->finish();
    }
    sink_.trackEnded();
}

} // namespace velmo::internal
