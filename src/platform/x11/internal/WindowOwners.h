#pragma once

#include "platform/x11/internal/XConnection.h"

#include <optional>
#include <span>
#include <vector>

namespace velmo::x11 {

/// The application's own window below a child of the root: the one that a window manager has marked with WM_STATE,
/// or `topLevel` itself where there is none (menus, floating panels, windows nobody manages).
xcb_window_t clientWindow(const XConnection& connection, xcb_window_t topLevel);

/// The processes that made the windows, in the same order: by the server's knowledge of the connection, else by what
/// the window says itself. Absent for clients of other machines that say nothing. One exchange for all.
std::vector<std::optional<int>> owningProcesses(const XConnection& connection, std::span<const xcb_window_t> windows);

/// The child of the root that shows `window`, or absent when there is no such window.
std::optional<xcb_window_t> topLevelWindow(const XConnection& connection, xcb_window_t window);

} // namespace velmo::x11
