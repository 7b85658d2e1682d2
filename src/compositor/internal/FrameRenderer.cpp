#include "compositor/internal/FrameRenderer.h"

#include "compositor/internal/LayerList.h"

namespace velmo::internal {

FrameRef FrameRenderer::render(const PixelBuffer& source, const FrameContents& contents) {
    FrameRef target = pool_.takeLike(source);
    if (!target) {
        return nullptr;
    }
    const CropWindow& window = contents.window;
    LayerList layers;
    screen_.prepare(source, window);
    layers.add(screen_);
    if (contents.spotlight.isLive()) {
        spotlight_.prepare(contents.spotlight, window, source.width(), source.height());
        layers.add(spotlight_);
    }
    if (contents.pointerFigure &&
        pointerBubble_.prepare(*contents.pointerFigure, window, source.width(), source.height())) {
        layers.add(pointerBubble_);
    }
    if (bubbles_.prepare(contents, source)) {
        layers.add(bubbles_);
    }
    if (contents.column) {
        column_.prepare(*contents.column, source);
        layers.add(column_);
    }
    layers.paint(*target);
    return target;
}

} // namespace velmo::internal
