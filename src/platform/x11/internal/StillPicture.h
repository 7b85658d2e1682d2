#pragma once

#include "platform/ScreenCapture.h"
#include "platform/x11/internal/XConnection.h"

namespace velmo::x11 {

/// One picture of what `filter` shows now, of the configuration's size and format, with the pointer where it asks for
/// it. Fails when display or window are not there or cannot be seen.
Result<FrameRef> stillPicture(XConnection& connection, const ContentFilter& filter,
                              const StreamConfiguration& configuration);

} // namespace velmo::x11
