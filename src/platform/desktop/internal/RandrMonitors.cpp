#include "platform/desktop/internal/RandrMonitors.h"

#include <QGuiApplication>

#include <xcb/randr.h>

#include <cstdlib>
#include <memory>

namespace velmo::internal {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, Free>;

QString atomName(xcb_connection_t* connection, xcb_atom_t atom) {
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    return reply ? QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QString();
}

} // namespace

std::vector<RandrMonitor> randrMonitors() {
    std::vector<RandrMonitor> monitors;
    const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr) {
        return monitors;
    }
    xcb_connection_t* connection = native->connection();
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const XcbReply<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, root, 1), nullptr));
    if (!reply) {
        return monitors;
    }
    for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it)) {
        const bool hasOutput = xcb_randr_monitor_info_outputs_length(it.data) > 0;
        monitors.push_back({atomName(connection, it.data->name), QPoint(it.data->x, it.data->y),
                            hasOutput ? xcb_randr_monitor_info_outputs(it.data)[0] : 0});
    }
    return monitors;
}

} // namespace velmo::internal
