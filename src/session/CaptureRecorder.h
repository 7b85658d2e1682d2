#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "base/Result.h"
#include "compositor/BubbleInfo.h"
#include "media/PixelBuffer.h"
#include "media/RecordingMark.h"
#include "platform/ScreenCapture.h"
#include "settings/NameTag.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// What a session tells the compositor of its recording. Any thread.
class ZoomPort {
public:
    virtual ~ZoomPort() = default;
    /// The captured screen in global points.
    virtual void configure(Rect screenFrame) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void setLevel(double level) = 0;
    virtual void setFollow(bool follow) = 0;
    /// Centre in fractions of the screen.
    virtual void focus(Point center, double level) = 0;
    virtual void setRegion(std::optional<Rect> region) = 0;
    virtual void setSpotlight(bool on) = 0;
    virtual void setColumn(bool on, bool left) = 0;
    virtual void setCameraFrame(FrameRef frame) = 0;
    virtual void setNameTag(std::optional<NameTag::Text> tag) = 0;
    /// `at` in seconds of the media clock.
    virtual void showBubble(double at, std::vector<Color> colors) = 0;
    /// `mouse` in global points.
    virtual void update(Point mouse, std::vector<BubbleInfo> bubbles) = 0;
};

/// One recording's capture and writer. Made anew for each; called from the main thread; whatever it calls back may
/// come from any thread. A completion is called once. Destroying it ends what still runs.
class CaptureRecorder {
public:
    struct Request {
        ContentFilter filter;
        Size size; ///< pixels, even
        int fps = 30;
        bool systemAudio = false;
        std::optional<std::string> microphoneID; ///< absent: no microphone
        std::filesystem::path url;
    };
    using Completion = std::function<void(Result<void>)>;
    using FileCompletion = std::function<void(Result<std::filesystem::path>)>;

    virtual ~CaptureRecorder() = default;

    /// Before `start`. Told when capture ends by itself.
    virtual void setOnStop(std::function<void(std::optional<Error>)> stopped) = 0;
    /// Succeeds when capture runs.
    virtual void start(Request request, Completion completion) = 0;
    /// After `start`. Captures `window` by itself, under `key`.
    virtual void addOverlay(int key, CaptureWindow window, Completion completion) = 0;
    /// `size` in points. A key without a stream is ignored.
    virtual void resizeOverlay(int key, Size size) = 0;
    /// Whether the noise of mouse clicks is taken out of the microphone's sound.
    virtual void setMutesClicks(bool mutes) = 0;
    /// To be called with the host-clock seconds of each movement of a mouse button. Any thread, also when the recorder
    /// has gone: it then does nothing.
    virtual std::function<void(double time)> clickNoter() = 0;
    /// A mark that the recording is to have also when this process does not live to save it.
    virtual void noteMark(RecordingMark mark) = 0;
    /// To be called with each picture of the camera for the column. Any thread, also when the recorder has gone: it
    /// then does nothing.
    virtual std::function<void(FrameRef)> cameraFrames() = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    /// Ends capture and finishes the file.
    virtual void stop(FileCompletion completion) = 0;
    virtual ZoomPort& zoom() = 0;
};

class CaptureRecorderFactory {
public:
    virtual ~CaptureRecorderFactory() = default;
    /// Never null.
    virtual std::unique_ptr<CaptureRecorder> makeRecorder() = 0;
};

} // namespace velmo
