#include "platform/desktop/XInputPointerMotion.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <utility>

namespace velmo {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, Free>;

bool hasRawEvents(xcb_connection_t* connection) {
    const XcbReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 1), nullptr));
    return version && version->major_version >= 2;
}

} // namespace

void XInputPointerMotion::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

XInputPointerMotion::XInputPointerMotion() : connection_(xcb_connect(nullptr, nullptr)) {
    xcb_connection_t* x11 = connection_.get();
    const xcb_query_extension_reply_t* extension =
        xcb_connection_has_error(x11) == 0 ? xcb_get_extension_data(x11, &xcb_input_id) : nullptr;
    if (extension == nullptr || extension->present == 0 || !hasRawEvents(x11)) {
        connection_.reset();
        return;
    }
    opcode_ = extension->major_opcode;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(x11)).data->root;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(x11), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
}

XInputPointerMotion::~XInputPointerMotion() = default;

PointerMotion::Watch XInputPointerMotion::callOnce(std::function<void()> moved) {
    if (!connection_ || xcb_connection_has_error(connection_.get()) != 0) {
        return Watch::impossible;
    }
    if (!std::exchange(moved_, std::move(moved))) {
        select(XCB_INPUT_XI_EVENT_MASK_RAW_MOTION);
    }
    return Watch::armed;
}

void XInputPointerMotion::cancel() {
    if (std::exchange(moved_, {})) {
        select(0);
    }
}

void XInputPointerMotion::select(std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    xcb_input_xi_select_events(connection_.get(), root_, 1, &wanted.head);
    xcb_flush(connection_.get());
}

void XInputPointerMotion::read() {
    bool motion = false;
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        const auto* generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        motion = motion || ((event->response_type & 0x7f) == XCB_GE_GENERIC && generic->extension == opcode_ &&
                            generic->event_type == XCB_INPUT_RAW_MOTION);
    }
    if (xcb_connection_has_error(connection_.get()) != 0) {
        notifier_->setEnabled(false);
        return;
    }
    if (motion && moved_) {
        const auto moved = std::exchange(moved_, {}); // what comes after the deselection finds nobody
        select(0);
        moved();
    }
}

} // namespace velmo
