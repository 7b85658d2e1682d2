#pragma once

#include "base/MediaTime.h"
#include "media/AudioBuffer.h"
#include "media/PixelBuffer.h"

namespace velmo {

struct SampleTiming {
    MediaTime duration;
    MediaTime presentation;
    MediaTime decode;
};

/// What capture says about a frame. Only a `complete` one holds a new picture.
enum class FrameStatus { complete, idle, blank, suspended };

/// A picture or a stretch of sound at its time. A value: copying it copies two counts and no data.
struct Sample {
    SampleTiming timing;
    FrameRef image; ///< absent for sound
    AudioRef audio; ///< absent for pictures
    FrameStatus status = FrameStatus::complete;

    MediaTime presentation() const { return timing.presentation; }

    /// The same sample `offset` earlier: taken off the presentation time and, if valid, the decode time.
    Sample retimedBy(MediaTime offset) const {
        Sample copy = *this;
        copy.timing.presentation -= offset;
        if (copy.timing.decode.isValid()) {
            copy.timing.decode -= offset;
        }
        return copy;
    }

    /// The same sample at `time`, with no duration and no decode time.
    Sample retimedTo(MediaTime time) const {
        Sample copy = *this;
        copy.timing = {MediaTime::invalid(), time, MediaTime::invalid()};
        return copy;
    }
};

/// True only for a picture that capture calls complete.
inline bool frameIsComplete(const Sample& sample) {
    return sample.status == FrameStatus::complete && sample.image;
}

} // namespace velmo
