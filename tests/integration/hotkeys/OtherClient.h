#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <initializer_list>

namespace velmo {

/// Another program on the same X server, and the hands on the keyboard.
class OtherClient {
public:
    OtherClient();
    ~OtherClient();
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;

    /// Maps a window and gives it the keyboard focus.
    void focusWindow();
    /// The X error of a grab on the root window; 0 when it was granted.
    int grab(std::uint8_t keyCode, std::uint16_t modifiers);
    void ungrab(std::uint8_t keyCode, std::uint16_t modifiers);

    void press(std::uint8_t keyCode);
    void release(std::uint8_t keyCode);
    void tap(std::uint8_t keyCode);
    /// Control and the key, down and up.
    void tapWithControl(std::uint8_t keyCode);
    /// The keys held down before it, and up after it.
    void tapWith(std::initializer_list<std::uint8_t> held, std::uint8_t keyCode);

    /// Key presses that its own window has heard since the last call.
    int heardPresses();

private:
    void send(std::uint8_t type, std::uint8_t keyCode);

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
    xcb_window_t window_ = 0;
};

inline constexpr std::uint8_t kControlKey = 37;
inline constexpr std::uint8_t kAltKey = 64;
inline constexpr std::uint8_t kSuperKey = 133;
inline constexpr std::uint8_t kCapsLockKey = 66;
inline constexpr std::uint8_t kNumLockKey = 77;
inline constexpr std::uint8_t kShiftKey = 50;

} // namespace velmo
