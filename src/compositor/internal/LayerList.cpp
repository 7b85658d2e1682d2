#include "compositor/internal/LayerList.h"

#include "compositor/internal/PlaneLayout.h"

namespace velmo::internal {

void LayerList::add(Layer& layer) {
    if (count_ < kCapacity) {
        layers_[static_cast<std::size_t>(count_++)] = &layer;
    }
}

void LayerList::paint(PixelBuffer& target) const {
    const LayersBelow all(layers_.data(), count_);
    for (int p = 0; p < target.planeCount(); ++p) {
        const PlaneView plane = target.plane(p);
        const int unitBytes = unitBytesOf(target.format(), p);
        for (int y = 0; y < plane.height; ++y) {
            all.paint({p, y, plane.row(y), plane.width, unitBytes});
        }
    }
}

} // namespace velmo::internal
