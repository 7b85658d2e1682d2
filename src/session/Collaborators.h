#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "compositor/BubbleInfo.h"
#include "media/PixelBuffer.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "settings/PresenterStyle.h"

#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// The operations that a recording session calls on what surrounds it, and no others. Each is a small interface, so
// that tests record the order of calls and a surface that does not exist yet is simply absent. Main thread throughout.

namespace velmo {

/// The panel in which a recording is prepared.
class SetupPanelPort {
public:
    virtual ~SetupPanelPort() = default;
    virtual void show() = 0;
    virtual void hide() = 0;
};

/// The bar that drives a running recording.
class ControlBarPort {
public:
    virtual ~ControlBarPort() = default;
    virtual void show(const Screen& screen) = 0;
    virtual void hide() = 0;
};

/// The home window with the finished recordings.
class LibraryWindowPort {
public:
    virtual ~LibraryWindowPort() = default;
    /// With a file that recording comes up selected; without, nothing is.
    virtual void show(std::optional<std::filesystem::path> focus) = 0;
    virtual void hide() = 0;
};

/// Message boxes that block the session, not the event loop. The session brings the application to the front before
/// it asks.
class AlertPort {
public:
    virtual ~AlertPort() = default;
    /// The system's default button alone.
    virtual QCoro::Task<void> inform(QString message, QString informative) = 0;
    /// `buttons` from first to last; the index of the chosen one. `firstIsDestructive` marks the first.
    virtual QCoro::Task<int> ask(QString message, QString informative, QStringList buttons,
                                 bool firstIsDestructive) = 0;
};

/// 3, 2, 1 over the screen to be recorded; ends early on a click.
class CountdownPort {
public:
    virtual ~CountdownPort() = default;
    virtual QCoro::Task<void> run(Screen screen) = 0;
};

class CameraPort {
public:
    virtual ~CameraPort() = default;
    /// Absent ids mean no device.
    virtual QCoro::Task<void> configure(std::optional<std::string> camera, std::optional<std::string> microphone) = 0;
    virtual void stop() = 0;
    virtual bool hasVideo() const = 0;
    /// Loudness of the microphone, 0 to 1.
    virtual double level() const = 0;
    /// `onFrame` is called for each picture (NV12, shared, read only) on a thread of the camera. A second call
    /// replaces the first.
    virtual void startFrames(bool mirrored, std::function<void(FrameRef)> onFrame) = 0;
    /// No call of `onFrame` begins once this has taken effect, which it does without waiting.
    virtual void stopFrames() = 0;
};

class SecondCameraPort {
public:
    virtual ~SecondCameraPort() = default;
    virtual QCoro::Task<void> configure(std::optional<std::string> camera) = 0;
    virtual void stop() = 0;
};

class BubblePort {
public:
    virtual ~BubblePort() = default;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void keep(const Screen& screen) = 0;
    virtual void enterCameraOnly(const Screen& screen) = 0;
    virtual void exitCameraOnly() = 0;
    virtual void prepareControlsForCapture() = 0;
    virtual void parkControls() = 0;
    /// The user has put the bubble away.
    virtual bool userHidden() const = 0;
    virtual void toggleUserVisibility() = 0;
    /// While the camera stands in the column. A bubble that is covered, by the column or by the presenter's stage,
    /// lives on, unseen, and is in no frame.
    virtual void setCoveredByColumn(bool covered) = 0;
    virtual std::optional<WindowId> windowID() const = 0;
    /// As it stands on the screen now; absent while hidden.
    virtual std::optional<BubbleInfo> captureInfo() const = 0;
};

class SecondBubblePort {
public:
    virtual ~SecondBubblePort() = default;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void keep(const Screen& screen) = 0;
    virtual bool userHidden() const = 0;
    virtual void toggleUserVisibility() = 0;
    virtual std::optional<WindowId> windowID() const = 0;
    /// As it stands on the screen now; absent while hidden.
    virtual std::optional<BubbleInfo> captureInfo() const = 0;
};

class PhonePort {
public:
    virtual ~PhonePort() = default;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void keep(const Screen& screen) = 0;
    virtual void prepareForCapture() = 0;
    virtual void park() = 0;
    virtual std::optional<WindowId> windowID() const = 0;
    /// As it stands on the screen now; absent while hidden.
    virtual std::optional<BubbleInfo> captureInfo() const = 0;
};

class DrawingPort {
public:
    virtual ~DrawingPort() = default;
    virtual void prepare(const Screen& screen) = 0;
    virtual void parkPrepared() = 0;
    virtual void toggle() = 0;
    virtual void teardown() = 0;
    virtual std::optional<WindowId> overlayWindowID() const = 0;
};

/// Server and window of the whiteboard.
class BoardPort {
public:
    virtual ~BoardPort() = default;
    virtual bool isAvailable() const = 0;
    /// Starts the server if it does not run; nobody waits for it.
    virtual void ensureServer() = 0;
    virtual void prepare(const Screen& screen) = 0;
    virtual void park() = 0;
    virtual void endRecording() = 0;
    virtual bool shown() const = 0;
    virtual void show() = 0;
    virtual void toggle() = 0;
    virtual std::optional<WindowId> windowID() const = 0;
};

class SpotlightPort {
public:
    virtual ~SpotlightPort() = default;
    virtual void prepare(const Screen& screen) = 0;
    virtual void park() = 0;
    virtual void start(const Screen& screen, bool bubbles) = 0;
    virtual void stop() = 0;
    virtual void setSpotlight(bool on) = 0;
    /// Called with the media-clock time at which a circle was closed.
    virtual void setOnCircle(std::function<void(double)> circle) = 0;
};

class PresenterPort {
public:
    virtual ~PresenterPort() = default;
    virtual void prepare(const Screen& screen) = 0;
    virtual void park() = 0;
    virtual void reset() = 0;
    /// A presenter covers the screen.
    virtual bool isFull() const = 0;
    virtual void enter(const Screen& screen, PresenterStyle style) = 0;
    /// Called each time a flight has ended and all that waited for it was called. Requests that came while it flew were
    /// dropped; this is the moment to ask anew for what is still wanted. Empty takes it back.
    virtual void setOnSettled(std::function<void()> settled) = 0;
    /// `then` may be empty; it is called when the presenter has gone, or at once when there is nothing to leave or a
    /// flight is under way.
    virtual void exit(std::function<void()> then) = 0;
    virtual std::optional<WindowId> windowID() const = 0;
};

class KitPanelPort {
public:
    virtual ~KitPanelPort() = default;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void toggle() = 0;
};

class TeleprompterPort {
public:
    virtual ~TeleprompterPort() = default;
    virtual bool hasScript() const = 0;
    virtual bool visible() const = 0;
    virtual void togglePlay() = 0;
    virtual void show(const Screen& screen) = 0;
    virtual void hide() = 0;
};

/// Where the mouse is.
class PointerPort {
public:
    virtual ~PointerPort() = default;
    /// Global points.
    virtual Point location() const = 0;
    /// The program's own window that a press of the mouse would go to now. Absent over the windows of others, and where
    /// nobody can tell.
    virtual std::optional<WindowId> ownWindow() const { return std::nullopt; }
};

/// Lets the user drag a rectangle on the screen.
class RegionPickerPort {
public:
    virtual ~RegionPickerPort() = default;
    /// `completion` gets fractions of the screen, or nothing when the user cancelled.
    virtual void pick(const Screen& screen, std::optional<Rect> current, QString prompt,
                      std::function<void(std::optional<Rect>)> completion) = 0;
    /// An open pick ends with nothing.
    virtual void cancel() = 0;
};

/// Permission to use a class of device, as the system tells it.
class DevicePermissions {
public:
    enum class Media { video, audio };
    virtual ~DevicePermissions() = default;
    /// 3 is authorized.
    virtual int status(Media media) const = 0;
    virtual QCoro::Task<void> request(Media media) = 0;
};

} // namespace velmo
