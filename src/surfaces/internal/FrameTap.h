#pragma once

#include "media/PixelBuffer.h"

#include <functional>
#include <memory>

namespace velmo::internal {

/// Hands a camera's pictures to at most one customer, as they are or mirrored. Lives on one queue.
class FrameTap {
public:
    using Customer = std::function<void(FrameRef)>;

    void open(bool mirrored, Customer customer);
    void close();
    /// NV12. Not copied unless mirrored; then into a pooled buffer.
    void pass(const FrameRef& picture);

private:
    FrameRef mirrorImage(const PixelBuffer& picture);

    Customer customer_;
    bool mirrored_ = false;
    std::unique_ptr<PixelBufferPool> mirrorImages_; // of the latest size
};

} // namespace velmo::internal
