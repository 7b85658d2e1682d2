#pragma once

#include "platform/x11/internal/PixelRect.h"
#include "platform/x11/internal/SharedSegment.h"
#include "platform/x11/internal/XConnection.h"

#include <xcb/shm.h>

#include <vector>

namespace velmo::x11 {

/// Reads pixels of drawables of depth 24 or 32 into memory, many rectangles in one exchange.
/// Through shared memory where the server has it, else through the connection, with the same result.
class PixelFetcher {
public:
    explicit PixelFetcher(const XConnection& connection) : connection_(connection) {}

    /// Asks for `rect`, in the drawable's own coordinates, as 4 bytes a pixel and `rect.width` pixels a row, to be
    /// put at `offset` of `target`. `target` must live until `collect` returns.
    void request(xcb_drawable_t drawable, const PixelRect& rect, const SharedSegment& target, std::size_t offset);

    /// Waits for everything asked for and tells for each request, in order, whether its pixels came.
    /// The list is valid until the next call.
    const std::vector<char>& collect();

private:
    struct Pending {
        const SharedSegment* target = nullptr;
        std::size_t offset = 0;
        std::size_t bytes = 0;
        unsigned sequence = 0;
    };
    bool copyReply(const Pending& pending) const;

    const XConnection& connection_;
    std::vector<Pending> pending_;
    std::vector<char> arrived_;
};

} // namespace velmo::x11
