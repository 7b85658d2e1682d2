#pragma once

#include "compositor/internal/BubblesLayer.h"
#include "compositor/internal/ColumnLayer.h"
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

    /// Null when no buffer can be had. Allocates only when a size or a format changes, for a mask or a name tag
    /// that it has not drawn before, and to draw the figure on the pointer.
    FrameRef render(const PixelBuffer& source, const FrameContents& contents);

private:
    OutputPool pool_;
    CropLayer screen_;
    SpotlightLayer spotlight_;
    PointerBubbleLayer pointerBubble_;
    BubblesLayer bubbles_;
    ColumnLayer column_;
};

} // namespace velmo::internal
