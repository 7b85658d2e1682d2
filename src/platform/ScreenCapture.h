#pragma once

#include "base/Geometry.h"
#include "base/MediaTime.h"
#include "base/Result.h"
#include "base/SerialQueue.h"
#include "media/Sample.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What the recorder needs of the system's screen capture: a query, filters, streams.
// Coordinates are global points: origin at the lower left of the primary display, y up.

namespace velmo {

using WindowId = std::uint32_t;
using DisplayId = std::uint32_t;

struct CaptureDisplay {
    DisplayId displayID = 0;
    Rect frame;     ///< global points
    int width = 0;  ///< points
    int height = 0; ///< points
};

struct CaptureApplication {
    int processID = 0;
    std::string name;
};

struct CaptureWindow {
    WindowId windowID = 0;
    Rect frame;                         ///< global points
    std::optional<int> owningProcessID; ///< absent when the system does not tell
    std::string title;
};

/// One moment's list of what can be captured. `windows` holds only those on screen, bottom to top.
struct ShareableContent {
    std::vector<CaptureDisplay> displays;
    std::vector<CaptureWindow> windows;
    std::vector<CaptureApplication> applications;
};

/// What a stream shows: a display without some applications (but with some of their windows), or one window alone
/// with its alpha.
struct ContentFilter {
    struct Display {
        DisplayId displayID = 0;
        std::vector<int> excludedProcessIDs;
        std::vector<WindowId> exceptedWindowIDs;
        friend bool operator==(const Display&, const Display&) = default;
    };

    static ContentFilter display(DisplayId id, std::vector<int> excludingProcesses, std::vector<WindowId> excepting) {
        ContentFilter filter;
        filter.display_ = Display{id, std::move(excludingProcesses), std::move(excepting)};
        return filter;
    }
    static ContentFilter window(WindowId id) {
        ContentFilter filter;
        filter.window_ = id;
        return filter;
    }

    const std::optional<Display>& asDisplay() const { return display_; }
    std::optional<WindowId> asWindow() const { return window_; }
    friend bool operator==(const ContentFilter&, const ContentFilter&) = default;

private:
    std::optional<Display> display_;
    std::optional<WindowId> window_;
};

struct StreamConfiguration {
    int width = 0; ///< pixels of the delivered pictures; the source is scaled to it
    int height = 0;
    MediaTime minimumFrameInterval{1, 30};
    int queueDepth = 6; ///< pictures in flight at most; while all are held by the receiver none is delivered
    PixelFormat pixelFormat = PixelFormat::nv12;
    bool showsCursor = true;
    bool capturesAudio = false;
    bool excludesCurrentProcessAudio = true;
    int sampleRate = 48000;
    int channelCount = 2;
    std::optional<std::string> microphoneDeviceID; ///< present: the stream delivers this microphone as well
    friend bool operator==(const StreamConfiguration&, const StreamConfiguration&) = default;
};

enum class StreamOutput { screen = 0, audio = 1, microphone = 2 };

/// Receives what a stream delivers. Called on the queue given to `addOutput`.
class StreamOutputHandler {
public:
    virtual ~StreamOutputHandler() = default;
    virtual void streamDidOutput(class CaptureStream& stream, const Sample& sample, StreamOutput type) = 0;
};

/// Told when a stream ends by itself: display gone, server gone. Any thread, at most once, never after `stop`.
class StreamDelegate {
public:
    virtual ~StreamDelegate() = default;
    virtual void streamDidStop(class CaptureStream& stream, const Error& error) = 0;
};

/// A running or startable capture. Pictures come only when something changed; their times are host-clock times
/// of the moment that they show. Sound comes as interleaved float, its time that of its first frame.
/// The destructor ends the capture; no call of a handler, the delegate or a completion begins after it. It runs on any
/// thread that is neither a queue given to `addOutput` nor inside one of the stream's own calls.
class CaptureStream {
public:
    using Completion = std::function<void(Result<void>)>;

    virtual ~CaptureStream() = default;

    /// Before `start`. `handler` and `queue` are borrowed and must outlive the stream.
    virtual Result<void> addOutput(StreamOutputHandler& handler, StreamOutput type, SerialQueue& queue) = 0;
    /// Returns at once; `completion` is called once, on any thread. The first picture follows a success unasked.
    virtual void start(Completion completion) = 0;
    /// Returns at once; no handler call begins after `completion`.
    virtual void stop(Completion completion) = 0;
    /// Takes effect with a later picture.
    virtual void updateConfiguration(const StreamConfiguration& configuration, Completion completion) = 0;
};

class ScreenCaptureService {
public:
    using ContentCompletion = std::function<void(Result<ShareableContent>)>;
    using ImageCompletion = std::function<void(Result<FrameRef>)>;

    virtual ~ScreenCaptureService() = default;

    /// What is there now. Returns at once; `completion` is called once, on any thread.
    virtual void queryShareableContent(ContentCompletion completion) = 0;
    /// Pixels per point of what the filter shows.
    virtual double pointPixelScale(const ContentFilter& filter) const = 0;
    /// `delegate` is borrowed, may be null, and must outlive the stream.
    virtual Result<std::unique_ptr<CaptureStream>>
    makeStream(const ContentFilter& filter, const StreamConfiguration& configuration, StreamDelegate* delegate) = 0;
    /// One picture of what the filter shows now; of the configuration only size, format and pointer count. Returns at
    /// once; `completion` is called once, on any thread.
    virtual void captureImage(const ContentFilter& filter, const StreamConfiguration& configuration,
                              ImageCompletion completion) = 0;
    /// Whether capture is permitted as far as the system tells without asking the user.
    virtual bool preflightAccess() const = 0;
    /// Asks the user where the system has such a prompt. True when capture is permitted.
    virtual bool requestAccess() = 0;
};

/// Domain and codes of capture failures.
inline constexpr const char* kStreamErrorDomain = "SCStreamErrorDomain";
inline constexpr int kStreamErrorUserDeclined = -3801;
inline constexpr int kStreamErrorFailedToStart = -3802;
inline constexpr int kStreamErrorNoDisplay = -3815;
inline constexpr int kStreamErrorSourceGone = -3821;

} // namespace velmo
