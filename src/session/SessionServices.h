#pragma once

#include "base/Clock.h"
#include "classkit/Chapter.h"
#include "classkit/KitItem.h"
#include "platform/InputMonitors.h"
#include "platform/Machine.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "session/CaptureRecorder.h"
#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "settings/Devices.h"
#include "settings/Prefs.h"

#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The services without which there is no session, and the surfaces that may be absent.

namespace velmo {

/// The application as a whole, before the window system.
class ApplicationPort {
public:
    virtual ~ApplicationPort() = default;
    /// Ignoring other applications.
    virtual void toFront() = 0;
    /// Where the user permits the capture of the screen, as near as the system has such a place.
    virtual void openScreenCaptureSettings() = 0;
};

/// The store of finished recordings, as a session uses it.
class LibraryStore {
public:
    virtual ~LibraryStore() = default;
    virtual std::filesystem::path folder() const = 0;
    /// Free at the moment of asking.
    virtual std::filesystem::path newRecordingURL() = 0;
    /// `duration` and `markers` in recorded seconds, `titles` by index into `markers`.
    virtual void add(const std::filesystem::path& url, double duration, const std::vector<double>& markers,
                     const QStringList& titles) = 0;
};

/// Brings the sound tracks of a finished file together where needed.
class MixService {
public:
    virtual ~MixService() = default;
    /// Returns at once; `done` is called once, on any thread. Cannot fail for the caller.
    virtual void mixIfNeeded(const std::filesystem::path& url, std::function<void()> done) = 0;
};

/// The material of the class, as a session uses it.
class ClassMaterial {
public:
    virtual ~ClassMaterial() = default;
    virtual std::vector<KitItem> items() const = 0;
    virtual bool copyFiles() const = 0;
    /// Writes the class folder beside the video, off the main thread. Returns at once; `done` is called once, on any
    /// thread. Failures are the folder's own matter.
    virtual void writeFolder(std::filesystem::path video, std::vector<KitItem> items, std::vector<Chapter> chapters,
                             bool copyFiles, std::function<void()> done) = 0;
};

/// What a session cannot do without. All borrowed; all outlive the controller.
struct SessionServices {
    Prefs& prefs;
    const Clock& clock; ///< stamps and durations
    MainTimers& timers;
    AlertPort& alerts;
    ApplicationPort& application;
    const Screens& screens;
    const PowerSources& power;
    const DiskSpace& disk;
    ScreenCaptureService& capture;
    CaptureRecorderFactory& recorders;
    const Devices& devices;
    DevicePermissions& permissions;
    LibraryStore& library;
    MixService& mixer;
    std::function<void(std::string_view)> log; ///< one line of the diagnostics log
    int processID = 0;                         ///< this process, whose windows stay out of the video
};

/// What stands around a session on the screen. All borrowed, each may be null: then the session leaves out what
/// concerns it.
struct SessionSurfaces {
    SetupPanelPort* setupPanel = nullptr;
    ControlBarPort* controlBar = nullptr;
    LibraryWindowPort* libraryWindow = nullptr;
    CountdownPort* countdown = nullptr;
    CameraPort* camera = nullptr;
    SecondCameraPort* secondCamera = nullptr;
    BubblePort* bubble = nullptr;
    SecondBubblePort* secondBubble = nullptr;
    PhonePort* phone = nullptr;
    DrawingPort* drawing = nullptr;
    BoardPort* board = nullptr;
    SpotlightPort* spotlight = nullptr;
    PresenterPort* presenter = nullptr;
    KitPanelPort* kitPanel = nullptr;
    ClassMaterial* classKit = nullptr;
    TeleprompterPort* teleprompter = nullptr;
    RegionPickerPort* regionPicker = nullptr;
    PointerPort* pointer = nullptr;         ///< without it the zoom stays where it was put
    InputMonitors* inputMonitors = nullptr; ///< without them no zoom by click or gesture, and clicks stay audible
};

} // namespace velmo
