#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace velmo {

/// Hands on the mouse and the keyboard: XTEST. Each movement has been made when its call returns.
class Hands {
public:
    Hands();
    ~Hands();
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    void press(std::uint8_t button);
    void release(std::uint8_t button);
    void holdAlt(bool down);
    void moveTo(std::int16_t x, std::int16_t y);
    /// Holds the pointer as a menu does that is open.
    void grabPointer();
    void ungrabPointer();

private:
    void send(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

inline constexpr std::uint8_t kLeftButton = 1;
inline constexpr std::uint8_t kMiddleButton = 2;
inline constexpr std::uint8_t kRightButton = 3;
inline constexpr std::uint8_t kWheelUp = 4;
inline constexpr std::uint8_t kWheelDown = 5;
inline constexpr std::uint8_t kWheelLeft = 6;
inline constexpr std::uint8_t kThumbButton = 8;

} // namespace velmo
