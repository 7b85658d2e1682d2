#pragma once

#include "platform/x11/internal/TrackedWindow.h"
#include "platform/x11/internal/XConnection.h"

#include <span>
#include <vector>

namespace velmo::x11 {

/// Whose windows a picture leaves out, and which of them it keeps.
struct Exclusion {
    std::vector<int> processes;
    std::vector<xcb_window_t> keptWindows; ///< ids of application windows or of children of the root
};

/// Asks the server what `windows` say is stale and fills it in, all but the pixmap. Windows that have gone by now
/// come out as not viewable. Few exchanges, whatever the number of windows.
void probeWindows(const XConnection& connection, const Exclusion& exclusion, std::span<TrackedWindow* const> windows);

} // namespace velmo::x11
