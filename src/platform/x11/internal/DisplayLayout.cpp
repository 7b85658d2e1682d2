#include "platform/x11/internal/DisplayLayout.h"

#include "platform/FlippedGeometry.h"

#include <xcb/randr.h>

#include <algorithm>

namespace velmo::x11 {
namespace {

std::vector<Monitor> wholeRoot(const XConnection& connection) {
    const auto geometry =
        take(xcb_get_geometry_reply, connection.xcb(), xcb_get_geometry(connection.xcb(), connection.root()));
    if (!geometry) {
        return {};
    }
    return {{connection.root(), {0, 0, geometry->width, geometry->height}, true}};
}

} // namespace

std::vector<Monitor> queryMonitors(const XConnection& connection) {
    if (!connection.hasRandr()) {
        return wholeRoot(connection);
    }
    const auto reply = take(xcb_randr_get_monitors_reply, connection.xcb(),
                            xcb_randr_get_monitors(connection.xcb(), connection.root(), 1));
    std::vector<Monitor> monitors;
    if (reply) {
        for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
             xcb_randr_monitor_info_next(&it)) {
            const auto& info = *it.data;
            const bool hasOutput = xcb_randr_monitor_info_outputs_length(&info) > 0;
            monitors.push_back({hasOutput ? xcb_randr_monitor_info_outputs(&info)[0] : connection.root(),
                                {info.x, info.y, info.width, info.height},
                                info.primary != 0});
        }
    }
    std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& each) { return each.primary; });
    return monitors.empty() ? wholeRoot(connection) : monitors;
}

std::optional<Monitor> findMonitor(const std::vector<Monitor>& monitors, DisplayId displayID) {
    const auto found = std::find_if(monitors.begin(), monitors.end(),
                                    [displayID](const Monitor& each) { return each.displayID == displayID; });
    return found == monitors.end() ? std::nullopt : std::optional(*found);
}

Rect globalPoints(const PixelRect& pixels, const std::vector<Monitor>& monitors) {
    const double scale = pointPixelScale();
    const double primaryBottom = monitors.empty() ? 0 : monitors.front().frame.bottom() / scale;
    return FlippedGeometry{primaryBottom}.flip(
        Rect{pixels.x / scale, pixels.y / scale, pixels.width / scale, pixels.height / scale});
}

} // namespace velmo::x11
