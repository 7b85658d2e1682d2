#pragma once

#include "platform/x11/internal/PixelFetcher.h"
#include "platform/x11/internal/PixmanImage.h"
#include "platform/x11/internal/Region.h"
#include "platform/x11/internal/SharedSegment.h"
#include "platform/x11/internal/XConnection.h"

#include <memory>

namespace velmo::x11 {

/// What is seen where no window lies: the pixmap that wallpaper programs announce; without one, the grey that
/// compositing managers then paint where one runs; else the root's own background, which the server only gives away
/// through a window that inherits it. That window is on screen for one exchange, at the bottom, where it looks like
/// what it covers. Read again when the announced pixmap or the compositing manager is another one.
class RootBackground {
public:
    /// `frame` is the part of the root that is wanted.
    RootBackground(const XConnection& connection, const PixelRect& frame) : connection_(connection), frame_(frame) {}

    void begin();
    /// True when the background is another one after this event.
    bool handle(const xcb_generic_event_t& event);
    /// Paints `region`, in root pixels, of the background into `canvas`, whose pixel 0, 0 is the frame's corner.
    void paint(pixman_image_t* canvas, const Region& region);

private:
    void load();
    bool loadAnnouncedPixmap();
    bool loadInherited();
    bool managerPaintsRoot() const;
    bool read(xcb_pixmap_t pixmap, const PixelRect& size, pixman_repeat_t repeat);

    const XConnection& connection_;
    PixelRect frame_;
    bool stale_ = true;
    std::unique_ptr<SharedSegment> pixels_;
    PixmanImage image_; ///< null: a plain colour
    int originX_ = 0;   ///< root pixels of the image's corner
    int originY_ = 0;
};

} // namespace velmo::x11
