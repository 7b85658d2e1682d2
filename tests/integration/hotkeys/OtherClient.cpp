#include "integration/hotkeys/OtherClient.h"

#include <xcb/xtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

namespace velmo {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, Free>;

} // namespace

OtherClient::OtherClient()
    : connection_(xcb_connect(nullptr, nullptr)), screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {}

OtherClient::~OtherClient() {
    xcb_disconnect(connection_);
}

void OtherClient::focusWindow() {
    window_ = xcb_generate_id(connection_);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS}; // no window manager between us and the focus
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0, 200, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    xcb_map_window(connection_, window_);
    xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    XcbReply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

int OtherClient::grab(std::uint8_t keyCode, std::uint16_t modifiers) {
    const auto cookie = xcb_grab_key_checked(connection_, 0, screen_->root, modifiers, keyCode, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    return error ? error->error_code : 0;
}

void OtherClient::ungrab(std::uint8_t keyCode, std::uint16_t modifiers) {
    const XcbReply<xcb_generic_error_t> error(
        xcb_request_check(connection_, xcb_ungrab_key_checked(connection_, keyCode, screen_->root, modifiers)));
}

void OtherClient::send(std::uint8_t type, std::uint8_t keyCode) {
    const XcbReply<xcb_generic_error_t> error(
        xcb_request_check(connection_, xcb_test_fake_input_checked(connection_, type, keyCode, XCB_CURRENT_TIME,
                                                                   screen_->root, 0, 0, 0)));
}

void OtherClient::press(std::uint8_t keyCode) {
    send(XCB_KEY_PRESS, keyCode);
}
void OtherClient::release(std::uint8_t keyCode) {
    send(XCB_KEY_RELEASE, keyCode);
    std::this_thread::sleep_for(std::chrono::milliseconds(3)); // no finger is down again in the same millisecond
}

void OtherClient::tap(std::uint8_t keyCode) {
    press(keyCode);
    release(keyCode);
}

void OtherClient::tapWithControl(std::uint8_t keyCode) {
    tapWith({kControlKey}, keyCode);
}

void OtherClient::tapWith(std::initializer_list<std::uint8_t> held, std::uint8_t keyCode) {
    for (const std::uint8_t key : held) {
        press(key);
    }
    tap(keyCode);
    for (const std::uint8_t key : held) {
        release(key);
    }
}

int OtherClient::heardPresses() {
    int presses = 0;
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        presses += (event->response_type & ~0x80) == XCB_KEY_PRESS ? 1 : 0;
    }
    return presses;
}

} // namespace velmo
