#pragma once

namespace velmo::internal {

/// Tells when an encoder cannot keep up, before its queue overflows: it has fallen half a queue behind, and the frames
/// since then took longer, on average, than frames may take to come. A single heavy picture does neither.
/// A value; no clock of its own.
class EncoderLoad {
public:
    /// `frameInterval` in seconds; `queueLimit` in frames.
    EncoderLoad(double frameInterval, int queueLimit);

    /// After each frame: how long it took, in seconds, and how many wait. True when an easier preset is due; the
    /// measuring begins anew then.
    bool isTooHigh(double encodingTime, int waiting);

    /// Seconds for a frame, of the last few, by which the last answer was given; a hiccup counts no more than
    /// a slow picture.
    double averageTime() const { return average_; }

private:
    double frameInterval_;
    int highWater_;
    double average_ = 0;
    int frames_ = 0; ///< measured since the last change
};

} // namespace velmo::internal
