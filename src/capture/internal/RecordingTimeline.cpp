#include "capture/internal/RecordingTimeline.h"

#include "capture/RecorderError.h"

#include <cassert>
#include <initializer_list>

namespace velmo::internal {

namespace {

constexpr int kMostDrainRounds = 200;
constexpr double kDrainWait = 0.005; // seconds

} // namespace

bool RecordingTimeline::Track::append(const Sample& sample) {
    if (!input->append(sample)) {
        return false;
    }
    lastTime = sample.presentation();
    return true;
}

RecordingTimeline::RecordingTimeline(const Clock& clock) : clock_(clock) {}

void RecordingTimeline::arm(std::unique_ptr<AssetWriter> writer, const Inputs& inputs) {
    assert(!writer_ && inputs.video != nullptr);
    writer_ = std::move(writer);
    video_.input = inputs.video;
    system_.input = inputs.system;
    microphone_.input = inputs.microphone;
}

bool RecordingTimeline::isWriting() const {
    return writer_ && writer_->status() == WriterStatus::writing;
}

bool RecordingTimeline::accepts(MediaTime time) const {
    return !stopping_ && isWriting() && !paused_ && !(resumeAt_.isValid() && time < resumeAt_);
}

void RecordingTimeline::writeVideo(const Sample& sample, MediaTime time) {
    owesPicture_.store(true, std::memory_order_relaxed);
    if (!accepts(time)) {
        return;
    }
    if (!started_) {
        writer_->startSession(MediaTime::zero());
        offset_ = time;
        started_ = true;
    }
    lastVideo_ = sample;
    appendVideo(sample.retimedBy(offset_));
}

void RecordingTimeline::appendVideo(const Sample& sample) {
    if (!(sample.presentation() >= MediaTime::zero())) {
        return;
    }
    if (!video_.input->isReadyForMoreMediaData()) {
        ++counters_.droppedVideo;
        return;
    }
    if (video_.isAfterLast(sample.presentation()) && video_.append(sample)) {
        owesPicture_.store(false, std::memory_order_relaxed);
    }
}

bool RecordingTimeline::wantsSound(Sound sound, MediaTime time) const {
    return accepts(time) && started_ && track(sound).input != nullptr;
}

void RecordingTimeline::writeSound(Sound sound, const Sample& sample) {
    Sample retimed = sample.retimedBy(offset_);
    // Sound from before the first frame has no place in the file.
    if (!(retimed.presentation() >= MediaTime::zero())) {
        return;
    }
    SoundTrack& to = track(sound);
    to.line.push(std::move(retimed));
    flush(to);
}

void RecordingTimeline::flush(SoundTrack& track) {
    if (track.line.size() > 1) {
        ++counters_.waitedAudio;
    }
    while (!track.line.isEmpty() && track.input->isReadyForMoreMediaData()) {
        const Sample sample = track.line.pop();
        if (track.isAfterLast(sample.presentation()) && !track.append(sample)) {
            ++counters_.droppedAudio;
        }
    }
    counters_.droppedAudio += track.line.dropDownTo(AudioLine::kLimit);
}

void RecordingTimeline::pause() {
    if (!paused_) {
        paused_ = true;
        pausedAt_ = clock_.now();
    }
}

void RecordingTimeline::resume() {
    if (!paused_) {
        return;
    }
    const MediaTime now = clock_.now();
    if (started_) {
        offset_ += now - pausedAt_;
    }
    resumeAt_ = now;
    paused_ = false;
}

void RecordingTimeline::noteMark(const RecordingMark& mark) {
    if (!stopping_ && isWriting()) {
        writer_->noteMark(mark);
    }
}

void RecordingTimeline::noteProgress() {
    if (started_ && !stopping_ && isWriting()) {
        writer_->noteProgress(recorded());
    }
}

Result<void> RecordingTimeline::finish(const Sleep& sleep) {
    stopping_ = true;
    if (!started_ || !isWriting()) {
        const auto reason = writer_ ? writer_->error() : std::nullopt;
        abandon();
        return reason.value_or(RecorderError::noFrames());
    }
    extendVideoToTheEnd();
    lastVideo_ = {};
    for (SoundTrack* each : {&system_, &microphone_}) {
        if (each->input != nullptr) {
            drain(*each, sleep);
        }
    }
    for (Track* each : std::initializer_list<Track*>{&video_, &system_, &microphone_}) {
        if (each->input != nullptr) {
            each->input->markAsFinished();
        }
    }
    return {};
}

/// How long the file is by now.
MediaTime RecordingTimeline::recorded() const {
    return (paused_ ? pausedAt_ : clock_.now()) - offset_;
}

void RecordingTimeline::extendVideoToTheEnd() {
    const MediaTime end = recorded();
    const MediaTime last = video_.lastTime.isValid() ? video_.lastTime : MediaTime::zero();
    if (lastVideo_.image && end > last && video_.input->isReadyForMoreMediaData()) {
        video_.input->append(lastVideo_.retimedTo(end));
    }
}

void RecordingTimeline::drain(SoundTrack& track, const Sleep& sleep) {
    for (int round = 0; round < kMostDrainRounds && !track.line.isEmpty(); ++round) {
        flush(track);
        if (!track.line.isEmpty()) {
            sleep(kDrainWait);
        }
    }
    counters_.droppedAudio += track.line.dropDownTo(0);
}

void RecordingTimeline::abandon() {
    stopping_ = true;
    lastVideo_ = {};
    if (writer_) {
        writer_->cancelWriting();
    }
}

void RecordingTimeline::dropWriter() {
    stopping_ = true;
    lastVideo_ = {};
    video_.input = nullptr;
    for (SoundTrack* each : {&system_, &microphone_}) {
        each->input = nullptr;
        each->line.dropDownTo(0);
    }
    writer_.reset();
}

std::string RecordingTimeline::summary() const {
    return "grabación: audio en fila " + std::to_string(counters_.waitedAudio) + " veces · audio perdido " +
           std::to_string(counters_.droppedAudio) + " · cuadros saltados " + std::to_string(counters_.droppedVideo);
}

} // namespace velmo::internal
