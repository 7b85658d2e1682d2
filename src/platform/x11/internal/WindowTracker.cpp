#include "platform/x11/internal/WindowTracker.h"

#include "platform/ScreenCapture.h"
#include "platform/x11/internal/WindowOwners.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include <utility>

namespace velmo::x11 {
namespace {

void selectEvents(const XConnection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
}

Error noWindow() {
    return {kStreamErrorDomain, kStreamErrorSourceGone, "No se encontró la ventana que se quería grabar."};
}

/// Surfaces that the server makes itself, like the one that compositing managers paint on: no part of the desktop, and
/// no part of its list of windows, though their events come.
bool isServersOwn(const XConnection& connection, xcb_window_t window) {
    return (window & ~xcb_get_setup(connection.xcb())->resource_id_mask) == 0;
}

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

WindowTracker::WindowTracker(XConnection& connection, Exclusion exclusion)
    : connection_(connection), exclusion_(std::move(exclusion)) {}

WindowTracker::WindowTracker(XConnection& connection, xcb_window_t window) : connection_(connection), wanted_(window) {}

Result<void> WindowTracker::begin() {
    xcb_connection_t* xcb = connection_.xcb();
    fixesRegion_ = xcb_generate_id(xcb);
    xcb_xfixes_create_region(xcb, fixesRegion_, 0, nullptr);
    if (single()) {
        return beginSingle();
    }
    const xcb_window_t root = connection_.root();
    selectEvents(connection_, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_composite_redirect_subwindows(xcb, root, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    const auto cookie = xcb_query_tree(xcb, root);
    startSequence_ = cookie.sequence;
    const auto tree = take(xcb_query_tree_reply, xcb, cookie);
    if (!tree) {
        return noWindow();
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        add(children[i]);
    }
    return {};
}

Result<void> WindowTracker::beginSingle() {
    const auto topLevel = topLevelWindow(connection_, wanted_);
    if (!topLevel) {
        return noWindow();
    }
    xcb_composite_redirect_window(connection_.xcb(), *topLevel, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    add(*topLevel);
    return {};
}

TrackedWindow* WindowTracker::find(xcb_window_t window) {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : &found->second;
}

void WindowTracker::add(xcb_window_t window) {
    if (isServersOwn(connection_, window)) {
        return;
    }
    order_.raise(window);
    windows_[window].id = window;
    selectEvents(connection_, window,
                 single() ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
                          : XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_shape_select_input(connection_.xcb(), window, 1);
}

void WindowTracker::remove(xcb_window_t window) {
    if (TrackedWindow* tracked = find(window)) {
        markDirty(*tracked);
        releaseServerObjects(*tracked);
        order_.remove(window);
        std::erase(visible_, tracked);
        windows_.erase(window);
    }
}

void WindowTracker::releaseServerObjects(TrackedWindow& window) {
    if (window.pixmap != 0) {
        xcb_free_pixmap(connection_.xcb(), std::exchange(window.pixmap, 0));
    }
    if (window.damage != 0) {
        xcb_damage_destroy(connection_.xcb(), std::exchange(window.damage, 0));
    }
}

void WindowTracker::markDirty(const TrackedWindow& window) {
    if (window.isVisible()) {
        dirty_.add(window.bounds());
    }
}

bool WindowTracker::isBeforeStart(const xcb_generic_event_t& event) {
    if (startSequence_ && static_cast<std::int32_t>(event.full_sequence - *startSequence_) < 0) {
        return true;
    }
    startSequence_.reset(); // sequence numbers wrap, so the comparison must end
    return false;
}

bool WindowTracker::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = event.response_type & 0x7f;
    if (type == connection_.events().damage + XCB_DAMAGE_NOTIFY) {
        return onDamage(as<xcb_damage_notify_event_t>(event), event.full_sequence);
    }
    if (type == connection_.events().shape + XCB_SHAPE_NOTIFY) {
        const auto& shape = as<xcb_shape_notify_event_t>(event);
        TrackedWindow* window = shape.shape_kind == XCB_SHAPE_SK_BOUNDING ? find(shape.affected_window) : nullptr;
        return window != nullptr && (window->shapeAgain = true) && window->mayShow();
    }
    const bool wasSent = (event.response_type & 0x80) != 0; // by a client: window managers tell clients their place
    return !wasSent && !isBeforeStart(event) && structureChanged(event);
}

/// An event that the server sent before it answered with the damage tells of what is in that answer. It comes after it,
/// and there is nothing behind it any more.
bool WindowTracker::onDamage(const xcb_damage_notify_event_t& event, std::uint32_t sequence) {
    TrackedWindow* window = find(event.drawable);
    const bool isNew = window != nullptr && static_cast<std::int32_t>(sequence - window->fetched) >= 0;
    return isNew && (window->damaged = true);
}

bool WindowTracker::structureChanged(const xcb_generic_event_t& event) {
    switch (event.response_type) {
    case XCB_CREATE_NOTIFY:
        if (as<xcb_create_notify_event_t>(event).parent == connection_.root()) {
            add(as<xcb_create_notify_event_t>(event).window);
        }
        return false; // nothing to see before it is mapped
    case XCB_DESTROY_NOTIFY:
        remove(as<xcb_destroy_notify_event_t>(event).window);
        return true;
    case XCB_REPARENT_NOTIFY:
        return onReparent(as<xcb_reparent_notify_event_t>(event));
    case XCB_MAP_NOTIFY:
        return onMapping(as<xcb_map_notify_event_t>(event).window, true);
    case XCB_UNMAP_NOTIFY:
        return onMapping(as<xcb_unmap_notify_event_t>(event).window, false);
    case XCB_CONFIGURE_NOTIFY:
        return onConfigure(as<xcb_configure_notify_event_t>(event));
    case XCB_CIRCULATE_NOTIFY: {
        const auto& circulate = as<xcb_circulate_notify_event_t>(event);
        TrackedWindow* window = find(circulate.window);
        if (window != nullptr && circulate.place == XCB_PLACE_ON_TOP) {
            order_.raise(circulate.window);
        } else if (window != nullptr) {
            order_.lower(circulate.window);
        }
        return window != nullptr && (markDirty(*window), window->mayShow());
    }
    case XCB_PROPERTY_NOTIFY:
        return onProperty(as<xcb_property_notify_event_t>(event));
    default:
        return false;
    }
}

bool WindowTracker::onReparent(const xcb_reparent_notify_event_t& event) {
    remove(event.window);
    if (single()) {
        return beginSingle().ok(); // it shows in another frame now
    }
    if (event.parent == connection_.root()) {
        add(event.window);
    } else if (TrackedWindow* frame = find(event.parent)) {
        frame->ownerAgain = true;
    } else {
        lookForOwnersAgain();
    }
    return true;
}

/// A client got into some frame, or was marked as managed: every frame without a client may be the one.
void WindowTracker::lookForOwnersAgain() {
    for (auto& [id, window] : windows_) {
        window.ownerAgain |= window.client == id;
    }
}

bool WindowTracker::onMapping(xcb_window_t id, bool mapped) {
    TrackedWindow* window = find(id);
    if (window == nullptr) {
        return false;
    }
    markDirty(*window);
    window->viewable = mapped;
    window->pixmapAgain = true;
    window->ownerAgain |= mapped;
    return true;
}

bool WindowTracker::onConfigure(const xcb_configure_notify_event_t& event) {
    TrackedWindow* window = find(event.window);
    if (window == nullptr) {
        return false;
    }
    const PixelRect outer{event.x, event.y, event.width + 2 * event.border_width,
                          event.height + 2 * event.border_width};
    const bool restacked = !single() && order_.placeAbove(event.window, event.above_sibling);
    if (outer == window->outer && event.border_width == window->border && !restacked) {
        return false;
    }
    const bool resized = outer.width != window->outer.width || outer.height != window->outer.height ||
                         event.border_width != window->border;
    markDirty(*window);
    window->pixmapAgain |= resized;
    window->shapeAgain |= resized && window->shaped;
    window->outer = outer;
    window->border = event.border_width;
    markDirty(*window);
    return window->mayShow();
}

bool WindowTracker::onProperty(const xcb_property_notify_event_t& event) {
    if (event.atom == connection_.atoms().wmState) {
        lookForOwnersAgain();
        return true;
    }
    if (event.atom != connection_.atoms().wmOpacity) {
        return false;
    }
    for (auto& [id, window] : windows_) {
        if (id == event.window || window.client == event.window) {
            window.opacityAgain = true;
            return true;
        }
    }
    return false;
}

} // namespace velmo::x11
