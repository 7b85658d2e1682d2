#pragma once

#include "support/XTestClient.h"

#include <xcb/damage.h>

#include <cstdlib>
#include <memory>

namespace velmo::test {

/// What is painted into a window, by the X server's own account.
class PaintDamage {
public:
    PaintDamage(XTestClient& client, xcb_window_t window) : client_(client) {
        xcb_connection_t* x11 = client.xcb();
        std::free(xcb_damage_query_version_reply(x11, xcb_damage_query_version(x11, 1, 1), nullptr));
        first_ = xcb_get_extension_data(x11, &xcb_damage_id)->first_event;
        id_ = xcb_generate_id(x11);
        xcb_damage_create(x11, id_, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        client.sync();
        read();
        events = 0;
        pixels = 0;
    }
    ~PaintDamage() { xcb_damage_destroy(client_.xcb(), id_); }
    PaintDamage(const PaintDamage&) = delete;
    PaintDamage& operator=(const PaintDamage&) = delete;

    void read() {
        client_.sync();
        while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(client_.xcb()),
                                                                                      &std::free}) {
            if ((event->response_type & 0x7f) == first_ + XCB_DAMAGE_NOTIFY) {
                const auto* notify = reinterpret_cast<const xcb_damage_notify_event_t*>(event.get());
                ++events;
                pixels += notify->area.width * notify->area.height;
            }
        }
    }
    int events = 0;
    int pixels = 0;

private:
    XTestClient& client_;
    std::uint8_t first_ = 0;
    xcb_damage_damage_t id_ = 0;
};

} // namespace velmo::test
