#include "capture/internal/SampleRouter.h"

#include <algorithm>
#include <cassert>

namespace velmo::internal {

namespace {

constexpr double kLongestGap = 1.2; // frame durations without a frame, before the timer makes one
const MediaTime kJustAfter(1, 1000);

} // namespace

SampleRouter::SampleRouter(Parts parts) : parts_(std::move(parts)) {}

void SampleRouter::addOverlay(const CaptureStream& stream, int key, double scale) {
    const std::lock_guard guard(overlayLock_);
    std::erase_if(overlays_, [key](const Overlay& each) { return each.key == key; });
    overlays_.push_back({&stream, key, scale});
}

std::optional<double> SampleRouter::overlayScale(int key) const {
    const std::lock_guard guard(overlayLock_);
    const auto found = std::ranges::find(overlays_, key, &Overlay::key);
    return found == overlays_.end() ? std::nullopt : std::optional(found->scale);
}

std::optional<int> SampleRouter::overlayKey(const CaptureStream& stream) const {
    const std::lock_guard guard(overlayLock_);
    const auto found = std::ranges::find(overlays_, &stream, &Overlay::stream);
    return found == overlays_.end() ? std::nullopt : std::optional(found->key);
}

void SampleRouter::streamDidOutput(CaptureStream& stream, const Sample& sample, StreamOutput type) {
    if (const auto key = overlayKey(stream)) {
        if (frameIsComplete(sample)) {
            parts_.zoom.setOverlay(*key, sample.image);
        }
        return;
    }
    switch (type) {
    case StreamOutput::screen:
        screenDidOutput(sample);
        break;
    case StreamOutput::audio:
        soundDidOutput(RecordingTimeline::Sound::system, sample);
        break;
    case StreamOutput::microphone:
        soundDidOutput(RecordingTimeline::Sound::microphone, sample);
        break;
    }
}

void SampleRouter::screenDidOutput(const Sample& sample) {
    assert(parts_.videoQueue.isCurrent());
    if (!frameIsComplete(sample) || !sample.presentation().isValid()) {
        return;
    }
    const MediaTime time = afterMadeFrames(sample.presentation());
    // Motion and the last picture stay current during a pause; a frame that is not wanted is dropped by the timeline.
    parts_.zoom.stepTo(time.seconds());
    lastSource_ = sample.image;
    lastVideoHost_ = time;
    auto rendered =
        parts_.zoom.needsProcessing() ? parts_.zoom.render(sample.image, time, sample.timing.duration) : std::nullopt;
    lastIsPlain_ = !rendered;
    if (!rendered) {
        rendered = sample;
        rendered->timing.presentation = time;
    }
    writeVideo(*rendered, time);
}

/// A picture takes a while to come here. One that was taken before the timer's last frame but comes after it would not
/// be in the file, and the motion would go back in time.
MediaTime SampleRouter::afterMadeFrames(MediaTime taken) const {
    return lastMade_.isValid() && taken <= lastMade_ ? lastMade_ + kJustAfter : taken;
}

void SampleRouter::soundDidOutput(RecordingTimeline::Sound sound, const Sample& sample) {
    assert(parts_.queue.isCurrent());
    noticeWriterFailure();
    if (!sample.audio || !parts_.timeline.wantsSound(sound, sample.presentation())) {
        return;
    }
    const bool isMicrophone = sound == RecordingTimeline::Sound::microphone;
    parts_.timeline.writeSound(sound, isMicrophone ? parts_.clicks.process(sample) : sample);
}

void SampleRouter::setFrameDuration(MediaTime duration) {
    assert(parts_.videoQueue.isCurrent());
    frameDuration_ = duration;
}

void SampleRouter::tick() {
    assert(parts_.videoQueue.isCurrent());
    const bool owed = parts_.timeline.owesPicture();
    if (parts_.zoom.isPaused() || !lastSource_ || !(parts_.zoom.isAnimating() || owed)) {
        return;
    }
    const MediaTime now = parts_.clock.now();
    if (!lastVideoHost_.isValid() || (now - lastVideoHost_).seconds() <= frameDuration_.seconds() * kLongestGap) {
        return;
    }
    parts_.zoom.stepTo(now.seconds());
    auto made = parts_.zoom.render(lastSource_, now, frameDuration_);
    const bool plain = !made;
    if (plain && lastIsPlain_ && !owed) {
        return; // the file shows this very picture already
    }
    if (plain) {
        made = ZoomProcessor::sample(lastSource_, now, frameDuration_);
    }
    if (made) {
        lastIsPlain_ = plain;
        lastVideoHost_ = now;
        lastMade_ = now;
        writeVideo(*made, now);
    }
}

void SampleRouter::writeVideo(const Sample& sample, MediaTime time) {
    parts_.queue.async([this, sample = sample, time] {
        noticeWriterFailure();
        parts_.timeline.writeVideo(sample, time);
    });
}

void SampleRouter::noticeWriterFailure() {
    if (!failureTold_ && parts_.timeline.writerHasFailed()) {
        failureTold_ = true;
        parts_.writerFailed();
    }
}

} // namespace velmo::internal
