#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "capture/ClickSuppressor.h"
#include "capture/RecorderServices.h"
#include "compositor/ZoomProcessor.h"
#include "media/RecordingMark.h"
#include "platform/ScreenCapture.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

namespace internal {
class RecordingSession;
}

/// Records one video: captures screen, overlays and sound, and writes them into one file. Serves exactly one recording.
///
/// All operations from any thread; none waits. Completions and the stop callback come on the recorder's own control
/// queue: hop to your own thread before you do anything else, above all before you destroy the recorder. A completion
/// is called once, except that those still due when the recorder is destroyed may be left out. Nothing is called after
/// the destructor.
class ScreenRecorder {
public:
    using Completion = std::function<void(Result<void>)>;
    using StopCompletion = std::function<void(Result<std::filesystem::path>)>;
    using OnStop = std::function<void(std::optional<Error>)>;

    explicit ScreenRecorder(const RecorderServices& services);
    /// Not on a queue of the recorder's own. Waits for what is in hand; after `stop` has completed that is nothing. A
    /// recording that was not stopped ends here, and its file stays as far as it was written.
    ~ScreenRecorder();
    ScreenRecorder(const ScreenRecorder&) = delete;
    ScreenRecorder& operator=(const ScreenRecorder&) = delete;

    /// Once. `size` in pixels, truncated to whole ones and captured as it is, also where the source is smaller. A file
    /// at `path` is replaced. Completes when capture runs; after a failure there is no file.
    /// Errors: `RecorderError::writer` for what the writer refuses, capture errors as they are.
    void start(const ContentFilter& filter, Size size, int fps, bool systemAudio,
               std::optional<std::string> microphoneID, std::filesystem::path path, Completion completion);

    /// Captures a window by itself for the compositor: 0 camera bubble, 1 second camera, 2 phone window. While
    /// recording; a failure concerns this overlay only.
    void addOverlay(int key, const CaptureWindow& window, Completion completion);
    /// `size` in points. Nothing for a key that was never added; failures are ignored.
    void resizeOverlay(int key, Size size);

    /// The time in between is cut out of the file. Calling either twice changes nothing.
    void pause();
    void resume();

    /// A mark that the recording is to have also when this process does not live to save it.
    void noteMark(RecordingMark mark);

    /// Ends the recording; completes with the finished file. Errors: the writer's own, or `RecorderError::noFrames`
    /// when no picture came, and then there is no file. Asked again it gives the same answer.
    void stop(StopCompletion completion);

    /// Told, with the reason, when the recording cannot go on by itself: the main stream ended, or the writer can take
    /// no more. `stop` then keeps what there is. At most once for either. Set before `start`.
    void setOnStop(OnStop onStop);

    ZoomProcessor& zoom() { return *zoom_; }
    /// For a camera, whose pictures come on a thread of its own and may come when the recorder has gone.
    std::weak_ptr<ZoomProcessor> sharedZoom() const { return zoom_; }
    ClickSuppressor& clicks() { return *clicks_; }
    /// For those that note clicks on threads of their own, and may do so when the recorder has gone.
    std::weak_ptr<ClickSuppressor> sharedClicks() const { return clicks_; }

private:
    std::shared_ptr<ZoomProcessor> zoom_;
    std::shared_ptr<ClickSuppressor> clicks_ = std::make_shared<ClickSuppressor>();
    std::unique_ptr<internal::RecordingSession> session_;
};

} // namespace velmo
