#pragma once

#include "platform/ScreenCapture.h"
#include "platform/x11/internal/DisplayLayout.h"
#include "platform/x11/internal/WindowComposer.h"
#include "platform/x11/internal/XConnection.h"

#include <memory>
#include <optional>

namespace velmo::x11 {

/// What a filter shows, on one connection: the composer made for it, and whether the display is still the same.
class CaptureSource {
public:
    /// Fails when the display or the window of the filter is not there.
    static Result<std::unique_ptr<CaptureSource>> create(XConnection& connection, const ContentFilter& filter);

    Result<void> begin();
    /// True when the picture may be another one after this event.
    bool handle(const xcb_generic_event_t& event);
    /// Why there will be no more pictures: the display has gone or is another one now. Asks the server only after an
    /// event that makes it likely.
    std::optional<Error> ended();

    WindowComposer& composer() { return *composer_; }

private:
    CaptureSource(XConnection& connection, std::optional<Monitor> monitor, std::unique_ptr<WindowComposer> composer)
        : connection_(connection), monitor_(monitor), composer_(std::move(composer)) {}

    XConnection& connection_;
    std::optional<Monitor> monitor_; ///< absent for a window
    std::unique_ptr<WindowComposer> composer_;
    bool layoutChanged_ = false;
};

} // namespace velmo::x11
