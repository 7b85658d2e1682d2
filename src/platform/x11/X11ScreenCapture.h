#pragma once

#include "base/Clock.h"
#include "platform/AudioInput.h"
#include "platform/ScreenCapture.h"

#include <memory>
#include <optional>
#include <string>

namespace velmo {

/// Screen capture on an X server with XComposite, DAMAGE, XFIXES and SHAPE.
///
/// Displays are RandR monitors; `displayID` is the XID of a monitor's first output (the root window's XID where the
/// server has no RandR). Windows are the root's children; `windowID` is the application's own window where a window
/// manager has put a frame around it, and either id names it. Translucent windows are blended whether or not a
/// compositing manager runs.
///
/// Each stream has its own connection and thread, so no call here waits for a running capture. `makeStream` makes
/// one short exchange with the server; queries and single pictures run on a thread of the service's own.
class X11ScreenCapture final : public ScreenCaptureService {
public:
    /// `audio` delivers the sound outputs of the streams; it is borrowed, must outlive service and streams, and may
    /// be null: the sound outputs then stay silent. The same holds for a sound source that does not open.
    /// `clock` is borrowed, must outlive the streams, and must run with CLOCK_MONOTONIC.
    X11ScreenCapture(std::optional<std::string> displayName, AudioInputService* audio, const Clock& clock);
    ~X11ScreenCapture() override;

    void queryShareableContent(ContentCompletion completion) override;
    double pointPixelScale(const ContentFilter& filter) const override;
    Result<std::unique_ptr<CaptureStream>> makeStream(const ContentFilter& filter,
                                                      const StreamConfiguration& configuration,
                                                      StreamDelegate* delegate) override;
    void captureImage(const ContentFilter& filter, const StreamConfiguration& configuration,
                      ImageCompletion completion) override;
    /// Always true: an X server lets every client see the screen.
    bool preflightAccess() const override;
    bool requestAccess() override;

private:
    std::optional<std::string> displayName_;
    AudioInputService* audio_;
    const Clock& clock_;
    std::unique_ptr<SerialQueue> queryQueue_; ///< "velmo.x11.query"
};

} // namespace velmo
