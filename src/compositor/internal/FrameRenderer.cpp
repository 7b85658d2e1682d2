#include "compositor/internal/FrameRenderer.h"

#include "compositor/internal/LayerList.h"

namespace velmo::internal {

FrameRef FrameRenderer::render(const PixelBuffer& source, const CropWindow& window) {
    FrameRef target = pool_.takeLike(source);
    if (!target) {
        return nullptr;
    }
    screen_.prepare(source, window);
    LayerList layers;
    layers.add(screen_);
    layers.paint(*target);
    return target;
}

} // namespace velmo::internal
