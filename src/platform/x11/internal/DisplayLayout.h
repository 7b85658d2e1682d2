#pragma once

#include "base/Geometry.h"
#include "platform/ScreenCapture.h"
#include "platform/x11/internal/PixelRect.h"
#include "platform/x11/internal/XConnection.h"

#include <optional>
#include <vector>

namespace velmo::x11 {

/// Pixels per point. X11 programs agree on one pixel a point; a scaled desktop changes it here and nowhere else.
constexpr double pointPixelScale() {
    return 1;
}

struct Monitor {
    DisplayId displayID = 0;
    PixelRect frame; ///< root window pixels
    bool primary = false;
    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// The monitors of a moment, the primary one first; one for the whole root window where the server has no RandR.
/// Empty only when the server has gone.
std::vector<Monitor> queryMonitors(const XConnection& connection);

std::optional<Monitor> findMonitor(const std::vector<Monitor>& monitors, DisplayId displayID);

/// Root window pixels as global points: y up from the lower edge of the first, primary, monitor.
Rect globalPoints(const PixelRect& pixels, const std::vector<Monitor>& monitors);

} // namespace velmo::x11
