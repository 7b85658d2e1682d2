#include "compositor/internal/OutputPool.h"

namespace velmo::internal {

FrameRef OutputPool::takeLike(const PixelBuffer& source) {
    if (!fits(source)) {
        pool_.reset();
        pool_ = make_(source.format(), source.width(), source.height(), kMinimumCount);
    }
    FrameRef target = pool_ ? pool_->take() : nullptr;
    if (target) {
        target->setColorTags(source.colorTags());
    }
    return target;
}

bool OutputPool::fits(const PixelBuffer& source) const {
    return pool_ && pool_->format() == source.format() && pool_->width() == source.width() &&
           pool_->height() == source.height();
}

} // namespace velmo::internal
