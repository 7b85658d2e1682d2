#include "ui/internal/X11Window.h"

#include <QGuiApplication>
#include <QRegion>
#include <QWidget>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace velmo::X11Window {

namespace {

xcb_connection_t* connection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

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

void grabMouse(std::uint32_t window) {
    xcb_connection_t* x11 = connection();
    if (x11 == nullptr) {
        return;
    }
    constexpr std::uint16_t kEvents =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    constexpr std::uint8_t kOtherWindowsGetTheirs = 1;
    const Reply<xcb_grab_pointer_reply_t> reply(
        xcb_grab_pointer_reply(x11,
                               xcb_grab_pointer(x11, kOtherWindowsGetTheirs, window, kEvents, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                               nullptr),
        &std::free);
}

void releaseMouse() {
    if (xcb_connection_t* x11 = connection()) {
        xcb_ungrab_pointer(x11, XCB_CURRENT_TIME);
        xcb_flush(x11);
    }
}

} // namespace velmo::X11Window
