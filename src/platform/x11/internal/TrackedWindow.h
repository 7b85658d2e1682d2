#pragma once

#include "platform/x11/internal/Region.h"

#include <xcb/xcb.h>

#include <optional>

namespace velmo::x11 {

/// What is known of one child of the root.
struct TrackedWindow {
    xcb_window_t id = 0;
    PixelRect outer; ///< root pixels, border included
    int border = 0;
    int depth = 0;         ///< 0 until known and for windows that show nothing
    bool viewable = false; ///< mapped, so it has pixels
    std::uint8_t opacity = 255;
    bool shaped = false;
    Region shape;              ///< only when shaped; relative to the corner of `outer`
    xcb_window_t client = 0;   ///< the application's window in this frame, or `id`; 0 until known
    bool excluded = false;     ///< belongs to a process that the picture leaves out
    std::uint32_t pixmap = 0;  ///< names the pixels while viewable
    std::uint32_t damage = 0;  ///< reports changes of the pixels
    std::uint32_t fetched = 0; ///< the request that took the reported changes last

    // what has to be asked of the server before the next picture
    bool describeAgain = true;
    bool shapeAgain = true;
    bool opacityAgain = true;
    bool ownerAgain = true;
    bool pixmapAgain = true;
    bool damaged = false;

    /// What happens to it can change the picture, as far as is known before the server is asked. Not so an overlay of
    /// our own: it is moved all the time, and a picture taken for it would take a painting's place.
    bool mayShow() const { return viewable && !excluded; }
    /// Adds something to the picture.
    bool isVisible() const {
        return viewable && !excluded && client != 0 && opacity > 0 && (depth == 24 || depth == 32);
    }
    /// Hides all that lies under it.
    bool isOpaque() const { return depth == 24 && opacity == 255; }
    /// The pixels that belong to it, in root pixels.
    Region bounds() const {
        Region region(outer);
        if (shaped) {
            Region shapeOnRoot = shape;
            shapeOnRoot.translate(outer.x, outer.y);
            region.intersect(shapeOnRoot);
        }
        return region;
    }
};

} // namespace velmo::x11
