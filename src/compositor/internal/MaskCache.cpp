#include "compositor/internal/MaskCache.h"

#include <algorithm>
#include <utility>

namespace velmo::internal {

std::shared_ptr<const BubbleMask> MaskCache::find(const BubbleMask::Shape& shape, PixelFormat format) {
    const auto known = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.shape == shape && entry.format == format; });
    if (known != entries_.end()) {
        return known->mask;
    }
    std::optional<BubbleMask> made = BubbleMask::make(shape, format);
    if (!made) {
        return nullptr;
    }
    if (entries_.size() > kLimit) {
        entries_.clear();
    }
    entries_.push_back({shape, format, std::make_shared<const BubbleMask>(std::move(*made))});
    return entries_.back().mask;
}

} // namespace velmo::internal
