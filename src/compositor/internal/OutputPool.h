#pragma once

#include "media/PixelBuffer.h"

#include <memory>

namespace velmo::internal {

/// Buffers to render into, of the format and size that the source has at the moment. Video queue.
class OutputPool {
public:
    using Maker = std::unique_ptr<PixelBufferPool> (*)(PixelFormat format, int width, int height, int minimumCount);
    static constexpr int kMinimumCount = 4;

    explicit OutputPool(Maker make) : make_(make) {}

    /// A buffer like `source`, with its colour tags and undefined contents. A change of size or format drops the old
    /// pool, whose outstanding buffers stay valid; a pool that could not be made is tried again each time. Null when
    /// there is no pool or no buffer.
    FrameRef takeLike(const PixelBuffer& source);

private:
    bool fits(const PixelBuffer& source) const;

    Maker make_;
    std::unique_ptr<PixelBufferPool> pool_;
};

} // namespace velmo::internal
