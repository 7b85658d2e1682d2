#pragma once

#include "base/Clock.h"
#include "platform/InputMonitors.h"
#include "platform/x11/internal/GestureSum.h"
#include "platform/x11/internal/ScrollAxes.h"
#include "platform/x11/internal/ServerClock.h"
#include "platform/x11/internal/XReply.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace velmo::x11 {

/// What one event of the server means to the monitors.
class InputSink {
public:
    virtual ~InputSink() = default;
    virtual void buttonMoved(double time) = 0;
    virtual void leftPressed() = 0;
    virtual void gestureMade(const InputGesture& gesture) = 0;
};

/// Hears the raw events of all pointers over a connection of its own. One thread at a time.
///
/// Raw events come for every window and in spite of grabs, and take nothing away from anybody. Pinches are not raw
/// events: they come where the server has XInput 2.4, and only where no window under the pointer asks for them itself.
class InputWatcher {
public:
    /// Null without a server or without XInput 2.1, the first version whose raw events ignore grabs.
    static std::unique_ptr<InputWatcher> open(const std::optional<std::string>& displayName, const Clock& clock);
    ~InputWatcher();
    InputWatcher(const InputWatcher&) = delete;
    InputWatcher& operator=(const InputWatcher&) = delete;

    int file() const { return xcb_get_file_descriptor(connection_); }
    bool lost() const { return xcb_connection_has_error(connection_) != 0; }

    /// Whether the server tells of input; at first it does not.
    void listen(bool on);
    /// Measures the server's clock once: a short exchange.
    void calibrate();
    /// Tells `sink` of all that has come. Waits for nothing but the state of the modifier keys.
    void deliver(InputSink& sink);
    /// Seconds until `deliver` has something to tell though nothing more comes. Absent for never.
    std::optional<double> secondsToDelivery() const;

private:
    InputWatcher(xcb_connection_t* connection, const Clock& clock);
    bool prepare(int screenNumber);
    void select(std::uint16_t device, std::uint32_t mask);
    void handle(const xcb_generic_event_t& event, InputSink& sink);
    void handleRaw(const xcb_input_raw_button_press_event_t& event, InputSink& sink);
    void handlePinch(const xcb_input_gesture_pinch_begin_event_t& event, InputSink& sink);
    void scroll(int device, double clicks, InputSink& sink);
    std::optional<double> scrolledClicks(const xcb_input_raw_motion_event_t& event);
    std::uint32_t modifiersNow();
    double seconds() const { return clock_.now().seconds(); }

    xcb_connection_t* connection_;
    const Clock& clock_;
    ScrollAxes axes_;
    ServerClock serverClock_;
    std::uint8_t opcode_ = 0;
    bool hasGestures_ = false;
    bool listens_ = false;
    xcb_window_t root_ = 0;
    xcb_window_t marker_ = 0;                              ///< never shown: its property tells the server's time
    std::optional<std::pair<double, double>> calibration_; ///< host seconds round an exchange whose stamp is to come
    std::optional<std::uint32_t> modifiers_;               ///< asked once for the events that came together
    double pinchScale_ = 1;
    GestureSum gestures_;
};

} // namespace velmo::x11
