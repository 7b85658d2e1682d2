#pragma once

#include "platform/ScreenCapture.h"
#include "platform/x11/internal/XConnection.h"

namespace velmo::x11 {

/// Displays, viewable windows (bottom to top) and their applications, as they are now. A window that goes while the
/// list is made is left out.
ShareableContent queryContent(const XConnection& connection);

} // namespace velmo::x11
