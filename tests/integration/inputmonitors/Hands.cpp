#include "integration/inputmonitors/Hands.h"

#include <xcb/xtest.h>

#include <cstdlib>
#include <memory>

namespace velmo {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, Free>;

constexpr std::uint8_t kAltKey = 64;

} // namespace

Hands::Hands()
    : connection_(xcb_connect(nullptr, nullptr)),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root) {}

Hands::~Hands() {
    xcb_disconnect(connection_);
}

void Hands::send(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
    const auto cookie = xcb_test_fake_input_checked(connection_, type, detail, XCB_CURRENT_TIME, root_, x, y, 0);
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
}

void Hands::press(std::uint8_t button) {
    send(XCB_BUTTON_PRESS, button);
}
void Hands::release(std::uint8_t button) {
    send(XCB_BUTTON_RELEASE, button);
}

void Hands::holdAlt(bool down) {
    send(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, kAltKey);
}

void Hands::moveTo(std::int16_t x, std::int16_t y) {
    send(XCB_MOTION_NOTIFY, 0, x, y);
}

void Hands::grabPointer() {
    const auto cookie = xcb_grab_pointer(connection_, 0, root_, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const XcbReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(connection_, cookie, nullptr));
}

void Hands::ungrabPointer() {
    xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    const XcbReply<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

} // namespace velmo
