#pragma once

#include "base/Result.h"
#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/PixelFetcher.h"
#include "platform/x11/internal/PixmanImage.h"
#include "platform/x11/internal/Region.h"
#include "platform/x11/internal/RootBackground.h"
#include "platform/x11/internal/SharedSegment.h"
#include "platform/x11/internal/WindowTracker.h"
#include "platform/x11/internal/XConnection.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Keeps a picture made of the windows' own pixels: a part of the root without some processes' windows, or one window
/// with its alpha. Only what changed is read and painted, and nothing that an opaque window hides. The pointer is not
/// in it. On the capture thread; the connection is borrowed.
class WindowComposer {
public:
    /// The windows and the background within `frame`, in root pixels.
    WindowComposer(XConnection& connection, const PixelRect& frame, Exclusion exclusion);
    /// The window alone, frame of the window manager included.
    WindowComposer(XConnection& connection, xcb_window_t window);
    WindowComposer(const WindowComposer&) = delete;
    WindowComposer& operator=(const WindowComposer&) = delete;

    /// Once, before all others. The first `compose` paints everything.
    Result<void> begin();
    /// True when the picture may be another one after this event.
    bool handle(const xcb_generic_event_t& event);
    /// Brings the picture up to date and returns what was painted, in its own pixels. Its size may be another one
    /// then (one window only). Pixels that could not be read stay as they were and are tried again at the next call.
    Region compose();
    /// True when the last `compose` has left something for the next.
    bool hasUnread() const { return !unread_.isEmpty(); }
    /// Everything is painted at the next `compose`.
    void invalidate();

    /// Empty before the first picture. Its pixels may be changed between two calls if they are put back.
    const Picture& picture() const { return picture_; }
    /// What the picture shows, in root pixels.
    const PixelRect& frame() const { return frame_; }

private:
    /// What one window adds: pixels of the root that nothing opaque above it hides.
    struct Layer {
        TrackedWindow* window = nullptr;
        Region region;
    };
    /// A rectangle under way from the server.
    struct Piece {
        const Layer* layer = nullptr;
        PixelRect rect;         ///< root pixels
        Region paint;           ///< what of it is to be painted
        std::size_t offset = 0; ///< in the staging memory
        bool direct = false;    ///< goes straight into the picture
    };

    bool placeFrame();
    bool allocate(int width, int height);
    void planLayers(const Region& dirty);
    void paintUnderneath(const Region& region);
    void paintLayers();
    void fetchLayer(const Layer& layer);
    bool replaces(const TrackedWindow& window) const;
    bool canGoDirect(const Layer& layer) const;
    void finishPieces();
    void paint(const Piece& piece);
    void copyRows(const Piece& piece, const PixelRect& rect) const;
    void blend(const Piece& piece);

    XConnection& connection_;
    WindowTracker tracker_;
    PixelFetcher fetcher_;
    std::optional<RootBackground> background_; ///< absent for one window: clear
    PixelRect frame_;
    Picture picture_;
    std::unique_ptr<SharedSegment> canvas_;
    std::unique_ptr<SharedSegment> staging_;
    PixmanImage canvasImage_;
    std::vector<Layer> layers_; ///< top to bottom
    Region underneath_;
    std::vector<Piece> pieces_;
    std::vector<PixelRect> rects_; ///< scratch
    std::size_t stagingUsed_ = 0;
    Region unread_; ///< root pixels
};

} // namespace velmo::x11
