#pragma once

#include "base/Result.h"
#include "platform/x11/internal/StackOrder.h"
#include "platform/x11/internal/TrackedWindow.h"
#include "platform/x11/internal/WindowProbe.h"
#include "platform/x11/internal/XConnection.h"

#include <xcb/damage.h>

#include <unordered_map>
#include <vector>

namespace velmo::x11 {

/// Keeps up what the windows of a picture are, where they are and which of their pixels changed: all children of the
/// root, or one of them alone. Redirects them, so that each has its pixels to itself whatever lies over it.
///
/// DAMAGE objects report at level NonEmpty: one event a window and picture, however much an application paints; the
/// exact rectangles are fetched when a picture is due. On the capture thread, like the connection, which is borrowed.
class WindowTracker {
public:
    /// All children of the root.
    WindowTracker(XConnection& connection, Exclusion exclusion);
    /// The child of the root that shows `window`.
    WindowTracker(XConnection& connection, xcb_window_t window);
    WindowTracker(const WindowTracker&) = delete;
    WindowTracker& operator=(const WindowTracker&) = delete;

    /// Once, before all others: selects events, redirects, reads what is there.
    Result<void> begin();
    /// True when the picture may be another one after this event.
    bool handle(const xcb_generic_event_t& event);
    /// Brings everything up to date with the server, up to the events handled, and returns what changed since the
    /// last call, in root pixels. What opaque windows hide is left out of it.
    Region update();
    /// What is painted between `update` and the reading of pixels is in those pixels, yet it would be reported as a
    /// change and shown twice. So: ask right before the pixels are asked for, in the same exchange, and take what was
    /// painted in between, in root pixels, once they are there. It is not reported again.
    void askForLateDamage();
    Region takeLateDamage();
    /// The pixels of `window` could not be read: its pixmap is named again at the next update.
    void pixelsWereRefused(TrackedWindow& window) { window.pixmapAgain = true; }

    /// Bottom to top, valid until the next event is handled.
    const std::vector<TrackedWindow*>& visible() const { return visible_; }

private:
    bool single() const { return wanted_ != 0; }
    Result<void> beginSingle();
    TrackedWindow* find(xcb_window_t window);
    void add(xcb_window_t window);
    void remove(xcb_window_t window);
    void releaseServerObjects(TrackedWindow& window);
    void markDirty(const TrackedWindow& window);
    bool isBeforeStart(const xcb_generic_event_t& event);

    bool onDamage(const xcb_damage_notify_event_t& event, std::uint32_t sequence);
    bool structureChanged(const xcb_generic_event_t& event);
    bool onReparent(const xcb_reparent_notify_event_t& event);
    bool onMapping(xcb_window_t window, bool mapped);
    bool onConfigure(const xcb_configure_notify_event_t& event);
    bool onProperty(const xcb_property_notify_event_t& event);
    void lookForOwnersAgain();

    void refreshStale();
    void prepareToRead(TrackedWindow& window);
    void listVisible();
    void collectDamage();
    void askForDamage(TrackedWindow& window);
    void fetchDamage(std::vector<std::pair<TrackedWindow*, Region>>& into);

    XConnection& connection_;
    Exclusion exclusion_;
    xcb_window_t wanted_ = 0; ///< the window of a picture of one window
    StackOrder order_;
    std::unordered_map<xcb_window_t, TrackedWindow> windows_;
    std::vector<TrackedWindow*> visible_;
    Region dirty_;
    std::optional<std::uint32_t> startSequence_; ///< until the first event after it: older ones are in what was read
    std::uint32_t fixesRegion_ = 0;
    std::vector<TrackedWindow*> damagedNow_;                 ///< those of the latest update
    std::vector<std::pair<TrackedWindow*, unsigned>> asked_; ///< with the sequence numbers of the replies to come
};

} // namespace velmo::x11
