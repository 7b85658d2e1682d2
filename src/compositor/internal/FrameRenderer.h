#pragma once

#include "compositor/internal/CropLayer.h"
#include "compositor/internal/CropWindow.h"
#include "compositor/internal/OutputPool.h"
#include "media/PixelBuffer.h"

namespace velmo::internal {

/// Makes one frame: a buffer of the pool, and the list of layers evaluated once into it. Video queue.
class FrameRenderer {
public:
    explicit FrameRenderer(OutputPool::Maker makePool) : pool_(makePool) {}

    /// Null when no buffer can be had. Allocates only when the size or the format changes.
    FrameRef render(const PixelBuffer& source, const CropWindow& window);

private:
    OutputPool pool_;
    CropLayer screen_;
};

} // namespace velmo::internal
