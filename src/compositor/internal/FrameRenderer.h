#pragma once

#include "compositor/internal/CropLayer.h"
#include "compositor/internal/FrameContents.h"
#include "compositor/internal/OutputPool.h"
#include "compositor/internal/PointerBubbleLayer.h"
#include "compositor/internal/SpotlightLayer.h"
#include "media/PixelBuffer.h"

namespace velmo::internal {

/// Makes one frame: a buffer of the pool, and the list of layers evaluated once into it. Video queue.
class FrameRenderer {
public:
    explicit FrameRenderer(OutputPool::Maker makePool) : pool_(makePool) {}

    /// Null when no buffer can be had. Allocates only when the size or the format changes, and to draw the figure on
    /// the pointer.
    FrameRef render(const PixelBuffer& source, const FrameContents& contents);

private:
    OutputPool pool_;
    CropLayer screen_;
    SpotlightLayer spotlight_;
    PointerBubbleLayer pointerBubble_;
};

} // namespace velmo::internal
