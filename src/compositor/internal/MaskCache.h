#pragma once

#include "compositor/internal/BubbleMask.h"

#include <memory>
#include <vector>

namespace velmo::internal {

/// Masks that were drawn lately. A bubble at rest finds its own in every frame; one that is dragged fills the cache,
/// which then empties in one step. Video queue.
class MaskCache {
public:
    /// One more than this many, and the next new mask empties the cache first.
    static constexpr std::size_t kLimit = 8;

    MaskCache() { entries_.reserve(kLimit + 1); }

    /// Null when the mask cannot be made. Allocates only for a new one.
    std::shared_ptr<const BubbleMask> find(const BubbleMask::Shape& shape, PixelFormat format);

    std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        BubbleMask::Shape shape;
        PixelFormat format;
        std::shared_ptr<const BubbleMask> mask;
    };
    std::vector<Entry> entries_;
};

} // namespace velmo::internal
