#pragma once

#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/Region.h"
#include "platform/x11/internal/XConnection.h"

#include <xcb/xfixes.h>

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// The mouse pointer as the screen shows it. It is drawn into a picture for as long as that is read, then what lay
/// under it is put back, so a move of the pointer reads nothing again. On the capture thread.
class CursorLayer {
public:
    /// Connection and events are the stream's own; raw motion wakes it where the server has XInput 2.
    explicit CursorLayer(const XConnection& connection) : connection_(connection) {}

    void begin();
    /// True when the pointer may look otherwise or be elsewhere after this event.
    bool handle(const xcb_generic_event_t& event);
    /// Asks the server where the pointer is, and how it looks when that changed. Returns what of the root changed.
    Region update();
    /// The pixels that the pointer covers, in root pixels; empty when it is hidden.
    PixelRect rect() const;

    /// Draws into `picture`, whose corner is at `originX`, `originY` of the root. Each `draw` needs its `restore`.
    void draw(const Picture& picture, int originX, int originY);
    void restore(const Picture& picture);

private:
    void loadImage();

    const XConnection& connection_;
    bool imageStale_ = true;
    std::vector<std::uint32_t> image_; ///< premultiplied, `width_` pixels a row; empty: no pointer
    int width_ = 0;
    int height_ = 0;
    int hotX_ = 0;
    int hotY_ = 0;
    int x_ = 0; ///< of the hot spot, in root pixels
    int y_ = 0;
    bool onThisScreen_ = false;
    std::vector<std::uint32_t> covered_; ///< what lay under the drawn pointer
    PixelRect drawn_;                    ///< in the picture's pixels
};

} // namespace velmo::x11
