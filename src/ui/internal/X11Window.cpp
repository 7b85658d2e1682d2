#include "ui/internal/X11Window.h"

#include <QGuiApplication>
#include <QRegion>
#include <QWidget>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace velmo::X11Window {

namespace {

xcb_connection_t* connection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

std::optional<xcb_input_device_id_t> mouseDevice() {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return std::nullopt;
    }
    const Reply<xcb_input_xi_get_client_pointer_reply_t> reply(
        xcb_input_xi_get_client_pointer_reply(x11, xcb_input_xi_get_client_pointer(x11, XCB_NONE), nullptr),
        &std::free);
    return reply ? std::optional(reply->deviceid) : std::nullopt;
}

} // namespace

void setInputRegion(const QWidget& window, const QRegion& region) {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return;
    }
    const double ratio = window.devicePixelRatioF();
    const auto pixels = [ratio](int points) { return std::lround(points * ratio); };
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& rect : region) {
        rectangles.push_back({static_cast<std::int16_t>(pixels(rect.x())), static_cast<std::int16_t>(pixels(rect.y())),
                              static_cast<std::uint16_t>(pixels(rect.width())),
                              static_cast<std::uint16_t>(pixels(rect.height()))});
    }
    xcb_shape_rectangles(x11, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window.winId()), 0, 0, static_cast<std::uint32_t>(rectangles.size()),
                         rectangles.data());
}

bool isComposited() {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return true;
    }
    constexpr char kManager[] = "_NET_WM_CM_S0";
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(x11, xcb_intern_atom(x11, 0, sizeof kManager - 1, kManager), nullptr), &std::free);
    if (!atom) {
        return false;
    }
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x11, xcb_get_selection_owner(x11, atom->atom), nullptr), &std::free);
    return owner && owner->owner != XCB_NONE;
}

std::uint32_t keyboardOwner() {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return XCB_NONE;
    }
    const Reply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(x11, xcb_get_input_focus(x11), nullptr),
                                                   &std::free);
    return reply ? reply->focus : static_cast<std::uint32_t>(XCB_NONE);
}

void setKeyboardOwner(std::uint32_t window) {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return;
    }
    const std::uint32_t target = window != XCB_NONE ? window : static_cast<std::uint32_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
    // Without a time, since the key that asks for it may have come over another connection. Errors stay here.
    const Reply<xcb_generic_error_t> error(
        xcb_request_check(x11,
                          xcb_set_input_focus_checked(x11, XCB_INPUT_FOCUS_POINTER_ROOT, target, XCB_CURRENT_TIME)),
        &std::free);
}

// By XInput 2, by which Qt reads the mouse: a grab of the core protocol would keep its events from Qt.
void grabMouse(std::uint32_t window) {
    const auto pointer = mouseDevice();
    if (!pointer) {
        return;
    }
    constexpr std::uint32_t kEvents =
        XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE | XCB_INPUT_XI_EVENT_MASK_MOTION;
    const Reply<xcb_input_xi_grab_device_reply_t> reply(
        xcb_input_xi_grab_device_reply(connection(),
                                       xcb_input_xi_grab_device(connection(), window, XCB_CURRENT_TIME, XCB_NONE,
                                                                *pointer, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                                                XCB_INPUT_GRAB_MODE_22_ASYNC,
                                                                XCB_INPUT_GRAB_OWNER_OWNER, 1, &kEvents),
                                       nullptr),
        &std::free);
}

void releaseMouse() {
    if (const auto pointer = mouseDevice()) {
        xcb_input_xi_ungrab_device(connection(), XCB_CURRENT_TIME, *pointer);
        xcb_flush(connection());
    }
}

} // namespace velmo::X11Window
