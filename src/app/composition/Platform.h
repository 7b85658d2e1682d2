#pragma once

#include "app/Composition.h"
#include "app/DesktopApplication.h"
#include "app/DesktopFileChooser.h"
#include "app/DesktopPointer.h"
#include "app/MixerAdapter.h"
#include "capture/DisplayWatch.h"
#include "platform/JoinedCameras.h"
#include "platform/desktop/CameraPortal.h"
#include "platform/desktop/DesktopFileActions.h"
#include "platform/desktop/QtDelayedCalls.h"
#include "platform/desktop/QtDisplayReconfiguration.h"
#include "platform/desktop/QtScreens.h"
#include "platform/desktop/StatvfsDiskSpace.h"
#include "platform/desktop/SysPowerSources.h"
#include "platform/desktop/XInputPointerMotion.h"
#include "platform/desktop/XcbHotKeyService.h"
#include "platform/ffmpeg/FfmpegAssetInspector.h"
#include "platform/ffmpeg/FfmpegAssetReaderFactory.h"
#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"
#include "platform/ffmpeg/FfmpegCameras.h"
#include "platform/ffmpeg/FfmpegPassthroughWriterFactory.h"
#include "platform/pulse/PulseAudioInputService.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "platform/x11/X11InputMonitors.h"
#include "platform/x11/X11ScreenCapture.h"
#include "session/QtTimers.h"

#include <functional>
#include <string>

namespace velmo {

/// What the system gives. Another system is another file like this one.
struct Composition::Platform {
    explicit Platform(const LaunchOptions& options);

    AudioMixer makeMixer() const;
    /// Asks the desktop for the camera and tells the answer; empty where nobody needs to be asked.
    std::function<void(std::function<void(bool)>)> askForCamera();

    static void log(const std::string& line);
    static int ownProcess();
    static FfmpegWriterOptions writerOptions();

    const HostClock& clock = HostClock::shared();
    PulseAudioInputService audio{clock};
    FfmpegCameras devices;
    SyntheticCameras syntheticCameras;
    JoinedCameras cameras;
    X11ScreenCapture capture{std::nullopt, &audio, clock};
    X11InputMonitors inputMonitors{std::nullopt, clock};
    FfmpegAssetWriterFactory writers{writerOptions()};
    FfmpegAssetReaderFactory readers;
    FfmpegPassthroughWriterFactory passthroughWriters;
    FfmpegAssetInspector inspector;
    QtTimers timers;
    QtDelayedCalls delayedCalls;
    QtScreens screens;
    QtDisplayReconfiguration displays;
    SysPowerSources power;
    StatvfsDiskSpace disk;
    DesktopFileActions files;
    DesktopFileChooser fileChooser;
    DesktopApplication application;
    DesktopPointer pointer;
    XInputPointerMotion pointerMotion;
    CameraPortal cameraPortal;
    XcbHotKeyService hotKeys;
    DisplayWatch displayWatch{displays, delayedCalls};
    MixerAdapter mixer{makeMixer(), std::make_unique<ThreadQueue>("velmo.mixer")};
};

} // namespace velmo
