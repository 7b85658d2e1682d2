#include "platform/x11/internal/ContentQuery.h"

#include "platform/x11/internal/DisplayLayout.h"
#include "platform/x11/internal/WindowOwners.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace velmo::x11 {
namespace {

constexpr std::uint32_t kTitleWords = 256; // 1 KiB of title

struct Candidate {
    xcb_window_t topLevel = 0;
    xcb_window_t client = 0;
    PixelRect frame;
};

std::vector<Candidate> viewableTopLevels(const XConnection& connection) {
    xcb_connection_t* xcb = connection.xcb();
    const auto tree = take(xcb_query_tree_reply, xcb, xcb_query_tree(xcb, connection.root()));
    if (!tree) {
        return {};
    }
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> cookies;
    for (const xcb_window_t child : children) {
        cookies.emplace_back(xcb_get_window_attributes(xcb, child), xcb_get_geometry(xcb, child));
    }
    std::vector<Candidate> found;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const auto attributes = take(xcb_get_window_attributes_reply, xcb, cookies[i].first);
        const auto geometry = take(xcb_get_geometry_reply, xcb, cookies[i].second);
        if (attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT) {
            const int borders = 2 * geometry->border_width;
            found.push_back({children[i],
                             clientWindow(connection, children[i]),
                             {geometry->x, geometry->y, geometry->width + borders, geometry->height + borders}});
        }
    }
    return found;
}

std::string textOf(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply))};
}

std::string utf8OfLatin1(const std::string& latin1) {
    std::string utf8;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8.push_back(c);
        } else {
            utf8.push_back(static_cast<char>(0xc0 | (byte >> 6)));
            utf8.push_back(static_cast<char>(0x80 | (byte & 0x3f)));
        }
    }
    return utf8;
}

std::vector<std::string> titles(const XConnection& connection, const std::vector<xcb_window_t>& windows) {
    xcb_connection_t* xcb = connection.xcb();
    const XAtoms& atoms = connection.atoms();
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> cookies;
    for (const xcb_window_t window : windows) {
        cookies.emplace_back(xcb_get_property(xcb, 0, window, atoms.wmName, atoms.utf8String, 0, kTitleWords),
                             xcb_get_property(xcb, 0, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 0, kTitleWords));
    }
    std::vector<std::string> result;
    for (const auto& [modern, old] : cookies) {
        const auto modernReply = take(xcb_get_property_reply, xcb, modern);
        const auto oldReply = take(xcb_get_property_reply, xcb, old);
        std::string title = textOf(modernReply.get());
        result.push_back(title.empty() ? utf8OfLatin1(textOf(oldReply.get())) : std::move(title));
    }
    return result;
}

std::string processName(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

void addApplication(std::vector<CaptureApplication>& applications, int process) {
    const bool known = std::any_of(applications.begin(), applications.end(),
                                   [process](const CaptureApplication& each) { return each.processID == process; });
    if (!known) {
        applications.push_back({process, processName(process)});
    }
}

} // namespace

ShareableContent queryContent(const XConnection& connection) {
    ShareableContent content;
    const std::vector<Monitor> monitors = queryMonitors(connection);
    for (const Monitor& monitor : monitors) {
        const Rect frame = globalPoints(monitor.frame, monitors);
        content.displays.push_back(
            {monitor.displayID, frame, static_cast<int>(frame.width), static_cast<int>(frame.height)});
    }
    const std::vector<Candidate> candidates = viewableTopLevels(connection);
    std::vector<xcb_window_t> clients;
    for (const Candidate& each : candidates) {
        clients.push_back(each.client);
    }
    const auto owners = owningProcesses(connection, clients);
    const auto names = titles(connection, clients);
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        content.windows.push_back(
            {candidates[i].client, globalPoints(candidates[i].frame, monitors), owners[i], names[i]});
        if (owners[i]) {
            addApplication(content.applications, *owners[i]);
        }
    }
    return content;
}

} // namespace velmo::x11
