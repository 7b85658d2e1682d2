#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "capture/internal/SampleRouter.h"
#include "platform/ScreenCapture.h"

#include <functional>
#include <map>
#include <memory>

namespace velmo::internal {

/// The streams of single windows, one for each overlay key. All calls on one queue, the control queue;
/// completions come on any thread.
class OverlayStreams {
public:
    using Completion = std::function<void(Result<void>)>;

    /// Pictures with alpha go to `router` on `queue`. All borrowed.
    OverlayStreams(ScreenCaptureService& capture, SampleRouter& router, SerialQueue& queue);

    /// Replaces a stream of the same key. `size` in points.
    void add(int key, WindowId window, Size size, int fps, Completion completion);
    /// Nothing for an unknown key; a failure is ignored.
    void resize(int key, Size size, int fps);
    /// `stopped` is called once when all have stopped, whether they could or not.
    void stop(std::function<void()> stopped);
    /// Not inside a call of one of the streams.
    void clear() { streams_.clear(); }

private:
    ScreenCaptureService& capture_;
    SampleRouter& router_;
    SerialQueue& queue_;
    std::map<int, std::unique_ptr<CaptureStream>> streams_;
};

} // namespace velmo::internal
