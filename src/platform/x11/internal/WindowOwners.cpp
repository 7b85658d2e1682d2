#include "platform/x11/internal/WindowOwners.h"

#include <xcb/res.h>

#include <algorithm>

namespace velmo::x11 {
namespace {

/// How deep window managers hide a client in their frame, and how many windows of a level are worth asking.
constexpr int kFrameDepth = 3;
constexpr std::size_t kMaxWindowsPerLevel = 64;

std::optional<xcb_window_t> firstManaged(const XConnection& connection, std::span<const xcb_window_t> windows) {
    std::vector<xcb_get_property_cookie_t> cookies;
    for (const xcb_window_t window : windows) {
        cookies.push_back(
            xcb_get_property(connection.xcb(), 0, window, connection.atoms().wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 1));
    }
    std::optional<xcb_window_t> found;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const auto reply = take(xcb_get_property_reply, connection.xcb(), cookies[i]);
        if (!found && reply && reply->type != XCB_ATOM_NONE) {
            found = windows[i];
        }
    }
    return found;
}

std::vector<xcb_window_t> childrenOf(const XConnection& connection, std::span<const xcb_window_t> windows) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    for (const xcb_window_t window : windows) {
        cookies.push_back(xcb_query_tree(connection.xcb(), window));
    }
    std::vector<xcb_window_t> children;
    for (const auto cookie : cookies) {
        const auto reply = take(xcb_query_tree_reply, connection.xcb(), cookie);
        if (reply) {
            const xcb_window_t* first = xcb_query_tree_children(reply.get());
            children.insert(children.end(), first, first + xcb_query_tree_children_length(reply.get()));
        }
    }
    children.resize(std::min(children.size(), kMaxWindowsPerLevel));
    return children;
}

std::optional<int> processOf(const xcb_res_query_client_ids_reply_t& reply) {
    for (auto it = xcb_res_query_client_ids_ids_iterator(&reply); it.rem > 0; xcb_res_client_id_value_next(&it)) {
        const bool isProcess = (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(it.data) > 0) {
            const auto process = static_cast<int>(*xcb_res_client_id_value_value(it.data));
            return process > 0 ? std::optional(process) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<int> cardinal(const xcb_get_property_reply_t& reply) {
    if (reply.format != 32 || xcb_get_property_value_length(&reply) < 4) {
        return std::nullopt;
    }
    const auto value = static_cast<int>(*static_cast<const std::uint32_t*>(xcb_get_property_value(&reply)));
    return value > 0 ? std::optional(value) : std::nullopt;
}

} // namespace

xcb_window_t clientWindow(const XConnection& connection, xcb_window_t topLevel) {
    std::vector<xcb_window_t> level{topLevel};
    for (int depth = 0; depth <= kFrameDepth && !level.empty(); ++depth) {
        if (const auto found = firstManaged(connection, level)) {
            return *found;
        }
        level = childrenOf(connection, level);
    }
    return topLevel;
}

std::vector<std::optional<int>> owningProcesses(const XConnection& connection, std::span<const xcb_window_t> windows) {
    std::vector<xcb_res_query_client_ids_cookie_t> asked;
    std::vector<xcb_get_property_cookie_t> said;
    for (const xcb_window_t window : windows) {
        if (connection.hasClientIds()) {
            const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
            asked.push_back(xcb_res_query_client_ids(connection.xcb(), 1, &spec));
        }
        said.push_back(
            xcb_get_property(connection.xcb(), 0, window, connection.atoms().wmPid, XCB_ATOM_CARDINAL, 0, 1));
    }
    std::vector<std::optional<int>> owners(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (connection.hasClientIds()) {
            if (const auto ids = take(xcb_res_query_client_ids_reply, connection.xcb(), asked[i])) {
                owners[i] = processOf(*ids);
            }
        }
        const auto property = take(xcb_get_property_reply, connection.xcb(), said[i]);
        if (!owners[i] && property) {
            owners[i] = cardinal(*property);
        }
    }
    return owners;
}

std::optional<xcb_window_t> topLevelWindow(const XConnection& connection, xcb_window_t window) {
    while (true) {
        const auto tree = take(xcb_query_tree_reply, connection.xcb(), xcb_query_tree(connection.xcb(), window));
        if (!tree || window == connection.root()) {
            return std::nullopt;
        }
        if (tree->parent == connection.root()) {
            return window;
        }
        window = tree->parent;
    }
}

} // namespace velmo::x11
