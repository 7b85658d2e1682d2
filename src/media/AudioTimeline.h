#pragma once

#include "base/MediaTime.h"
#include "media/AudioBuffer.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <vector>

namespace velmo {

/// Turns buffers of sound that carry time stamps into one stream without gaps, in which every sound lies at its stamp.
///
/// Frame k of the stream is time k / rate. A source whose clock drifts is stretched or squeezed by at most 0.2 %, which
/// keeps it within 2 ms for each 500 ppm; a stamp more than 8 ms away from where the sound would come to lie is a jump:
/// forward, silence fills it; back, what is already covered is cut. Jumps end and begin in a short fade. Single stamps
/// that are out of line with both their neighbours are taken for noise; for that, four buffers wait for those after
/// them. Sound before zero is cut.
///
/// No thread of its own: all calls from one thread. Memory does not grow with gaps.
class AudioTimeline {
public:
    /// Takes interleaved frames of the stream, in order and of any number.
    using Sink = std::function<void(std::span<const float> interleaved)>;

    /// `sampleRate` in frames a second. Sound is stereo.
    AudioTimeline(int sampleRate, Sink sink);

    /// Interleaved stereo float of the timeline's rate; `time` belongs to its first frame. Anything else is ignored.
    void push(MediaTime time, AudioRef sound);
    /// The source has nothing before `time` any more: what waits is written, then silence up to there. Changes nothing
    /// before the first buffer, so that a source that never speaks leaves no sound at all.
    void advanceTo(MediaTime time);
    /// Writes what waits. No calls follow.
    void finish();

    /// How often silence was put in, and how often sound was left out because its place was taken already.
    int gaps() const { return gaps_; }
    int cuts() const { return cuts_; }

private:
    /// A buffer with what the stamps around it are compared by.
    struct Arrival {
        std::int64_t framesBefore = 0; ///< of the source
        double offset = 0;             ///< in seconds: stamp less `framesBefore`
        AudioRef sound;
    };

    void placeNext();
    double filteredStamp() const;
    void beginRun(double stamp, std::span<const float>& frames);
    void endRun();
    void resample(bool toEnd);
    void emit(std::size_t keptFrames);
    void emitSilence(std::int64_t frames);
    double predictedEnd() const;

    const int sampleRate_;
    Sink sink_;

    std::deque<Arrival> arrivals_; // up to four that are placed already, then those that wait
    std::size_t placed_ = 0;
    std::int64_t framesPushed_ = 0;

    // The present run: sound without a jump.
    bool running_ = false;
    std::vector<float> source_; // interleaved, with half a filter of silence or of past sound in front
    double position_ = 0;       // in frames of `source_`
    double step_ = 1;           // source frames for each frame of the stream
    double smoothedError_ = 0;  // in seconds
    std::vector<float> output_; // resampled, not yet handed on

    std::int64_t written_ = 0;
    std::int64_t runFrames_ = 0; // of the run, resampled so far
    int gaps_ = 0;
    int cuts_ = 0;
};

} // namespace velmo
