#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "capture/internal/AudioLine.h"
#include "media/AssetWriter.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace velmo::internal {

/// Turns samples with host times into one continuous file: zero is the first frame, pauses are cut out, times strictly
/// increase on each track, and the video ends when the recording ended.
///
/// All calls on one queue, the writer's. Nothing here allocates between `arm` and `finish`, and nothing waits but
/// `finish`. A frame that comes while the video input is busy is lost; sound waits in a line.
class RecordingTimeline {
public:
    enum class Sound { system, microphone };

    /// Those of the writer; absent for a track that does not exist.
    struct Inputs {
        AssetWriterInput* video = nullptr;
        AssetWriterInput* system = nullptr;
        AssetWriterInput* microphone = nullptr;
    };

    struct Counters {
        int droppedVideo = 0;
        int droppedAudio = 0;
        int waitedAudio = 0;
        friend bool operator==(const Counters&, const Counters&) = default;
    };

    /// Waits on the spot for some seconds.
    using Sleep = std::function<void(double seconds)>;

    /// `clock` is borrowed and is the one that sample times are on.
    explicit RecordingTimeline(const Clock& clock);

    /// Takes a writer that has started writing.
    void arm(std::unique_ptr<AssetWriter> writer, const Inputs& inputs);

    /// A frame with its host time. The first one that is taken begins the file.
    void writeVideo(const Sample& sample, MediaTime time);
    /// Whether sound of that host time has a place in the file. False before the first frame.
    bool wantsSound(Sound sound, MediaTime time) const;
    /// Only sound that is wanted.
    void writeSound(Sound sound, const Sample& sample);

    void pause();
    void resume();

    /// For the case that the file is never finished, see `AssetWriter`. Nothing happens outside a recording.
    void noteMark(const RecordingMark& mark);
    void noteProgress();

    /// The end of all samples. On success the video is extended to now (or to the pause), waiting sound is written as
    /// far as the writer takes it within a second for each track, and all inputs are finished: what is left to do is
    /// the writer's `finishWriting`. Otherwise the writer is cancelled and the result says why: no picture ever came,
    /// or the writer had failed.
    Result<void> finish(const Sleep& sleep);
    /// No more samples, and no file.
    void abandon();
    /// Gives the writer up without another word to it.
    void dropWriter();

    /// The newest picture is not in the file, since it came in a pause or the encoder was busy. A still screen sends
    /// no other, so somebody has to hand it in again. Any thread.
    bool owesPicture() const { return owesPicture_.load(std::memory_order_relaxed); }

    /// Null before `arm` and after `dropWriter`. Borrowed.
    AssetWriter* writer() const { return writer_.get(); }
    /// The writer has failed, and nobody has asked it to end.
    bool writerHasFailed() const { return writer_ && !stopping_ && !isWriting(); }
    const Counters& counters() const { return counters_; }
    /// The line for the diagnostics log.
    std::string summary() const;

private:
    struct Track {
        AssetWriterInput* input = nullptr;
        MediaTime lastTime; // of the last sample accepted, in the file; invalid before it

        bool append(const Sample& sample);
        bool isAfterLast(MediaTime time) const { return !lastTime.isValid() || time > lastTime; }
    };
    struct SoundTrack : Track {
        AudioLine line;
    };

    bool isWriting() const;
    bool accepts(MediaTime time) const;
    void appendVideo(const Sample& sample);
    void flush(SoundTrack& track);
    void extendVideoToTheEnd();
    MediaTime recorded() const;
    void drain(SoundTrack& track, const Sleep& sleep);

    SoundTrack& track(Sound sound) { return sound == Sound::system ? system_ : microphone_; }
    const SoundTrack& track(Sound sound) const { return sound == Sound::system ? system_ : microphone_; }

    const Clock& clock_;
    std::unique_ptr<AssetWriter> writer_;
    Track video_;
    SoundTrack system_;
    SoundTrack microphone_;
    bool started_ = false;
    bool paused_ = false;
    bool stopping_ = false;
    MediaTime pausedAt_;
    MediaTime resumeAt_;
    MediaTime offset_ = MediaTime::zero(); // host time of the first frame and all pauses
    Sample lastVideo_;                     // before retiming; without a picture when there is none
    Counters counters_;
    std::atomic<bool> owesPicture_ = false;
};

} // namespace velmo::internal
