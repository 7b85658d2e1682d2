#include "platform/x11/internal/InputWatcher.h"

#include <bit>
#include <cmath>

namespace velmo::x11 {
namespace {

constexpr int kLeftButton = 1;
constexpr int kWheelUp = 4;
constexpr int kWheelDown = 5;
constexpr int kWheelRight = 7;
constexpr double kWholeClick = 1e-6;

constexpr std::uint32_t kRawEvents = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                                     XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
constexpr std::uint32_t kDeviceEvents = XCB_INPUT_XI_EVENT_MASK_HIERARCHY | XCB_INPUT_XI_EVENT_MASK_DEVICE_CHANGED;
constexpr std::uint32_t kPinchEvents =
    1U << XCB_INPUT_GESTURE_PINCH_BEGIN | 1U << XCB_INPUT_GESTURE_PINCH_UPDATE | 1U << XCB_INPUT_GESTURE_PINCH_END;

bool isWheel(std::uint32_t button) {
    return button >= kWheelUp && button <= kWheelRight;
}

double number(xcb_input_fp3232_t value) {
    return value.integral + static_cast<double>(value.frac) / 4294967296.0;
}

xcb_screen_t* screenWithNumber(xcb_connection_t* connection, int wanted) {
    auto each = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < wanted && each.rem > 1; ++i) {
        xcb_screen_next(&each);
    }
    return each.data;
}

GestureSum::Tell into(InputSink& sink) {
    return [&sink](const InputGesture& gesture) { sink.gestureMade(gesture); };
}

std::uint32_t modifierFlags(std::uint32_t state) {
    return (state & XCB_MOD_MASK_1) != 0 ? kOptionModifier : 0;
}

} // namespace

std::unique_ptr<InputWatcher> InputWatcher::open(const std::optional<std::string>& displayName, const Clock& clock) {
    int screenNumber = 0;
    xcb_connection_t* const connection = xcb_connect(displayName ? displayName->c_str() : nullptr, &screenNumber);
    std::unique_ptr<InputWatcher> watcher(new InputWatcher(connection, clock));
    return watcher->prepare(screenNumber) ? std::move(watcher) : nullptr;
}

InputWatcher::InputWatcher(xcb_connection_t* connection, const Clock& clock)
    : connection_(connection), clock_(clock), axes_(connection) {}

InputWatcher::~InputWatcher() {
    xcb_disconnect(connection_);
}

bool InputWatcher::prepare(int screenNumber) {
    if (lost()) {
        return false;
    }
    const auto* extension = xcb_get_extension_data(connection_, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    opcode_ = extension->major_opcode;
    const auto version =
        take(xcb_input_xi_query_version_reply, connection_, xcb_input_xi_query_version(connection_, 2, 4));
    if (!version || version->major_version < 2 || (version->major_version == 2 && version->minor_version < 1)) {
        return false;
    }
    hasGestures_ = version->major_version > 2 || version->minor_version >= 4;
    root_ = screenWithNumber(connection_, screenNumber)->root;
    marker_ = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, marker_, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return xcb_flush(connection_) > 0;
}

void InputWatcher::select(std::uint16_t device, std::uint32_t mask) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{{device, 1}, mask};
    xcb_input_xi_select_events(connection_, root_, 1, &selection.head);
}

void InputWatcher::listen(bool on) {
    if (on == listens_) {
        return;
    }
    listens_ = on;
    axes_.forget();
    gestures_ = {};
    select(XCB_INPUT_DEVICE_ALL, on ? kDeviceEvents : 0);
    select(XCB_INPUT_DEVICE_ALL_MASTER, on ? kRawEvents : 0);
    if (on && hasGestures_) {
        // By itself: another program may hold the pinches of the root window, and the server then refuses all of it.
        select(XCB_INPUT_DEVICE_ALL_MASTER, kRawEvents | kPinchEvents);
    }
    xcb_flush(connection_);
}

void InputWatcher::calibrate() {
    const double before = seconds();
    xcb_change_property(connection_, XCB_PROP_MODE_APPEND, marker_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    // The reply comes after the notice, which therefore lies in the queue by then.
    const auto reply = take(xcb_get_input_focus_reply, connection_, xcb_get_input_focus(connection_));
    const double after = seconds();
    calibration_ = reply ? std::optional(std::pair(before, after)) : std::nullopt;
}

void InputWatcher::deliver(InputSink& sink) {
    modifiers_.reset();
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        handle(*event, sink);
    }
    gestures_.rest(seconds(), into(sink));
    xcb_flush(connection_);
}

std::optional<double> InputWatcher::secondsToDelivery() const {
    const auto at = gestures_.restsAt();
    return at ? std::optional(*at - seconds()) : std::nullopt;
}

void InputWatcher::handle(const xcb_generic_event_t& event, InputSink& sink) {
    const int type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY && calibration_) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        serverClock_.observe(calibration_->first, notice.time, calibration_->second);
        calibration_.reset();
        return;
    }
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (type != XCB_GE_GENERIC || generic.extension != opcode_) {
        return;
    }
    switch (generic.event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
    case XCB_INPUT_RAW_BUTTON_RELEASE:
    case XCB_INPUT_RAW_MOTION:
        handleRaw(reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event), sink);
        break;
    case XCB_INPUT_GESTURE_PINCH_BEGIN:
    case XCB_INPUT_GESTURE_PINCH_UPDATE:
        handlePinch(reinterpret_cast<const xcb_input_gesture_pinch_begin_event_t&>(event), sink);
        break;
    case XCB_INPUT_GESTURE_PINCH_END:
        gestures_.end(into(sink));
        break;
    case XCB_INPUT_HIERARCHY:
    case XCB_INPUT_DEVICE_CHANGED:
        axes_.forget();
        break;
    default:
        break;
    }
}

void InputWatcher::handleRaw(const xcb_input_raw_button_press_event_t& event, InputSink& sink) {
    if (event.event_type == XCB_INPUT_RAW_MOTION) {
        if (const auto clicks = scrolledClicks(event)) {
            scroll(event.sourceid, *clicks, sink);
        }
        return;
    }
    // The server makes wheel buttons of smooth scrolling for old programs; that scroll has been told already.
    if ((event.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED) != 0) {
        return;
    }
    const bool pressed = event.event_type == XCB_INPUT_RAW_BUTTON_PRESS;
    if (!isWheel(event.detail)) {
        sink.buttonMoved(serverClock_.hostTime(event.time, seconds()));
        if (pressed && event.detail == kLeftButton) {
            sink.leftPressed();
        }
    } else if (pressed && (event.detail == kWheelUp || event.detail == kWheelDown)) {
        scroll(event.sourceid, event.detail == kWheelUp ? 1 : -1, sink);
    }
}

/// Upwards positive. Absent when the event moved no vertical scroll axis.
std::optional<double> InputWatcher::scrolledClicks(const xcb_input_raw_motion_event_t& event) {
    const auto axis = axes_.of(event.sourceid);
    if (!axis) {
        return std::nullopt;
    }
    const std::uint32_t* const mask = xcb_input_raw_button_press_valuator_mask(&event);
    const int words = xcb_input_raw_button_press_valuator_mask_length(&event);
    const int word = axis->valuator / 32;
    const std::uint32_t bit = 1U << (axis->valuator % 32);
    if (word >= words || (mask[word] & bit) == 0) {
        return std::nullopt;
    }
    // Values stand there only for the bits that are set.
    int index = std::popcount(mask[word] & (bit - 1));
    for (int i = 0; i < word; ++i) {
        index += std::popcount(mask[i]);
    }
    return -number(xcb_input_raw_button_press_axisvalues(&event)[index]) / axis->increment;
}

/// Ten points of a fine scroll weigh as much as a click of the wheel, whatever unit the device counts in.
void InputWatcher::scroll(int device, double clicks, InputSink& sink) {
    if (!modifiers_) {
        modifiers_ = modifiersNow();
    }
    InputGesture gesture;
    gesture.type = InputGesture::Type::scrollWheel;
    gesture.modifierFlags = *modifiers_;
    gesture.hasPreciseScrollingDeltas = std::abs(clicks - std::round(clicks)) > kWholeClick;
    gesture.scrollingDeltaY =
        gesture.hasPreciseScrollingDeltas ? clicks * GestureSum::kPointsPerClick : std::round(clicks);
    gestures_.add(device, gesture, seconds(), into(sink));
}

void InputWatcher::handlePinch(const xcb_input_gesture_pinch_begin_event_t& event, InputSink& sink) {
    const double before = event.event_type == XCB_INPUT_GESTURE_PINCH_BEGIN ? 1.0 : pinchScale_;
    pinchScale_ = event.scale / 65536.0;
    InputGesture gesture;
    gesture.type = InputGesture::Type::magnify;
    gesture.modifierFlags = modifierFlags(event.mods.effective);
    gesture.magnification = pinchScale_ - before;
    if (gesture.magnification != 0) {
        gestures_.add(event.sourceid, gesture, seconds(), into(sink));
    }
}

std::uint32_t InputWatcher::modifiersNow() {
    const auto pointer = take(xcb_query_pointer_reply, connection_, xcb_query_pointer(connection_, root_));
    return pointer ? modifierFlags(pointer->mask) : 0;
}

} // namespace velmo::x11
