#pragma once

#include "base/Geometry.h"
#include "media/PixelBuffer.h"

namespace velmo::test {

/// What `ZoomProcessor::render` must make of a picture: its law of sampling in plain double arithmetic, one component
/// at a time. Slow on purpose; shares nothing with the renderer but the buffers.
FrameRef referenceRender(const PixelBuffer& source, Point center, double scale);

} // namespace velmo::test
