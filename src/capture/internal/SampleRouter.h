#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "capture/ClickSuppressor.h"
#include "capture/internal/RecordingTimeline.h"
#include "compositor/ZoomProcessor.h"
#include "platform/ScreenCapture.h"

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace velmo::internal {

/// Sends every captured sample where it belongs: overlay pictures to the compositor, screen pictures through it to the
/// timeline, sound to the timeline, the microphone's through the click suppressor. Makes a frame itself while
/// something moves over a still screen.
///
/// Threads: samples come on the queue that their output was added with: screen of the main stream on the video queue,
/// sound on the writer's queue, overlays on theirs. The timeline is touched on the writer's queue only. Nothing here
/// allocates for a sample, and a sample that is no good is ignored.
class SampleRouter final : public StreamOutputHandler {
public:
    /// All borrowed. `writerFailed` is called at most once, on `queue`.
    struct Parts {
        ZoomProcessor& zoom;
        ClickSuppressor& clicks;
        RecordingTimeline& timeline;
        const Clock& clock;
        SerialQueue& queue;
        SerialQueue& videoQueue;
        std::function<void()> writerFailed;
    };

    explicit SampleRouter(Parts parts);

    /// Any thread, before the stream starts. `scale` is its pixels per point.
    void addOverlay(const CaptureStream& stream, int key, double scale);
    /// Any thread. Absent for an unknown key.
    std::optional<double> overlayScale(int key) const;

    void streamDidOutput(CaptureStream& stream, const Sample& sample, StreamOutput type) override;

    /// Video queue. 1/30 s until told otherwise.
    void setFrameDuration(MediaTime duration);
    /// The frame timer's tick. Video queue.
    void tick();

private:
    struct Overlay {
        const CaptureStream* stream;
        int key;
        double scale;
    };

    std::optional<int> overlayKey(const CaptureStream& stream) const;
    void screenDidOutput(const Sample& sample);
    MediaTime afterMadeFrames(MediaTime taken) const;
    void soundDidOutput(RecordingTimeline::Sound sound, const Sample& sample);
    void writeVideo(const Sample& sample, MediaTime time);
    void noticeWriterFailure();

    Parts parts_;

    mutable std::mutex overlayLock_;
    std::vector<Overlay> overlays_; // protected by overlayLock_

    // video queue
    FrameRef lastSource_;
    MediaTime lastVideoHost_;
    MediaTime lastMade_; // of the frames that the timer made
    MediaTime frameDuration_{1, 30};
    bool lastIsPlain_ = false; // the last frame handed on was `lastSource_` as it came

    bool failureTold_ = false; // writer's queue
};

} // namespace velmo::internal
