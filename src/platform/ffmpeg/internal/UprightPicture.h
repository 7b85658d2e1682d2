#pragma once

#include "media/PixelBuffer.h"
#include "platform/ffmpeg/internal/Handles.h"

namespace velmo::internal {

/// A decoded picture as it is to be seen: BGRA, square pixels, turned as the track says, scaled down to fit
/// `maximumSide`. Null when it cannot be converted.
FrameRef uprightPicture(const AVFrame& frame, const AVStream& stream, int maximumSide);

} // namespace velmo::internal
