#include "platform/x11/internal/WindowProbe.h"

#include "platform/x11/internal/WindowOwners.h"

#include <xcb/shape.h>

#include <algorithm>
#include <utility>

namespace velmo::x11 {
namespace {

constexpr std::uint32_t kWatchedEvents[] = {XCB_EVENT_MASK_PROPERTY_CHANGE};

struct Questions {
    TrackedWindow* window = nullptr;
    xcb_get_window_attributes_cookie_t attributes{};
    xcb_get_geometry_cookie_t geometry{};
    xcb_shape_query_extents_cookie_t extents{};
    xcb_shape_get_rectangles_cookie_t rectangles{};
};

Questions ask(const XConnection& connection, TrackedWindow& window) {
    xcb_connection_t* xcb = connection.xcb();
    Questions questions{&window, {}, {}, {}, {}};
    if (window.describeAgain) {
        questions.attributes = xcb_get_window_attributes(xcb, window.id);
        questions.geometry = xcb_get_geometry(xcb, window.id);
    }
    if (window.shapeAgain) {
        questions.extents = xcb_shape_query_extents(xcb, window.id);
        questions.rectangles = xcb_shape_get_rectangles(xcb, window.id, XCB_SHAPE_SK_BOUNDING);
    }
    return questions;
}

void describe(const XConnection& connection, const Questions& questions) {
    TrackedWindow& window = *questions.window;
    const auto attributes = take(xcb_get_window_attributes_reply, connection.xcb(), questions.attributes);
    const auto geometry = take(xcb_get_geometry_reply, connection.xcb(), questions.geometry);
    if (!attributes || !geometry) {
        window.viewable = false;
        return;
    }
    const bool hasPixels = attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    const PixelRect outer{geometry->x, geometry->y, geometry->width + 2 * geometry->border_width,
                          geometry->height + 2 * geometry->border_width};
    window.pixmapAgain |= outer.width != window.outer.width || outer.height != window.outer.height;
    window.depth = hasPixels ? geometry->depth : 0;
    window.outer = outer;
    window.border = geometry->border_width;
    window.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void readShape(const XConnection& connection, const Questions& questions) {
    TrackedWindow& window = *questions.window;
    const auto extents = take(xcb_shape_query_extents_reply, connection.xcb(), questions.extents);
    const auto rectangles = take(xcb_shape_get_rectangles_reply, connection.xcb(), questions.rectangles);
    window.shaped = extents && rectangles && extents->bounding_shaped != 0;
    window.shape.clear();
    if (window.shaped) {
        const xcb_rectangle_t* rects = xcb_shape_get_rectangles_rectangles(rectangles.get());
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(rectangles.get()); ++i) {
            window.shape.add(PixelRect{rects[i].x, rects[i].y, rects[i].width, rects[i].height});
        }
        window.shape.translate(window.border, window.border);
    }
}

bool holds(const auto& list, const auto& value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

void findOwners(const XConnection& connection, const Exclusion& exclusion, std::span<TrackedWindow* const> windows) {
    std::vector<TrackedWindow*> asked;
    std::vector<xcb_window_t> clients;
    for (TrackedWindow* window : windows) {
        if (window->ownerAgain && window->viewable) {
            window->client = clientWindow(connection, window->id);
            asked.push_back(window);
            clients.push_back(window->client);
        }
    }
    const bool excludesSome = !exclusion.processes.empty();
    const auto owners =
        excludesSome ? owningProcesses(connection, clients) : std::vector<std::optional<int>>(clients.size());
    for (std::size_t i = 0; i < asked.size(); ++i) {
        TrackedWindow& window = *asked[i];
        window.excluded = owners[i] && holds(exclusion.processes, *owners[i]) &&
                          !holds(exclusion.keptWindows, window.client) && !holds(exclusion.keptWindows, window.id);
        window.ownerAgain = false;
        window.opacityAgain = true; // the client may be the one that says it
        if (window.client != window.id) {
            xcb_change_window_attributes(connection.xcb(), window.client, XCB_CW_EVENT_MASK, kWatchedEvents);
        }
    }
}

std::optional<std::uint8_t> opacityIn(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 32 || xcb_get_property_value_length(reply) < 4) {
        return std::nullopt;
    }
    const std::uint64_t value = *static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return static_cast<std::uint8_t>((value * 255 + 0x7fffffff) / 0xffffffff);
}

void readOpacities(const XConnection& connection, std::span<TrackedWindow* const> windows) {
    xcb_connection_t* xcb = connection.xcb();
    const auto ask = [&](xcb_window_t window) {
        return xcb_get_property(xcb, 0, window, connection.atoms().wmOpacity, XCB_ATOM_CARDINAL, 0, 1);
    };
    std::vector<std::pair<TrackedWindow*, xcb_window_t>> asked;
    std::vector<xcb_get_property_cookie_t> cookies;
    for (TrackedWindow* window : windows) {
        if (window->opacityAgain && window->viewable) {
            window->opacityAgain = false;
            window->opacity = 255;
            if (window->client != 0 && window->client != window->id) {
                asked.emplace_back(window, window->client);
                cookies.push_back(ask(window->client));
            }
            asked.emplace_back(window, window->id); // the frame has the last word
            cookies.push_back(ask(window->id));
        }
    }
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const auto reply = take(xcb_get_property_reply, xcb, cookies[i]);
        asked[i].first->opacity = opacityIn(reply.get()).value_or(asked[i].first->opacity);
    }
}

} // namespace

void probeWindows(const XConnection& connection, const Exclusion& exclusion, std::span<TrackedWindow* const> windows) {
    std::vector<Questions> questions;
    for (TrackedWindow* window : windows) {
        questions.push_back(ask(connection, *window));
    }
    for (const Questions& each : questions) {
        if (std::exchange(each.window->describeAgain, false)) {
            describe(connection, each);
        }
        if (std::exchange(each.window->shapeAgain, false)) {
            readShape(connection, each);
        }
    }
    findOwners(connection, exclusion, windows);
    readOpacities(connection, windows);
}

} // namespace velmo::x11
