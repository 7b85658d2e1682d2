#pragma once

#include "platform/PointerMotion.h"

#include <QSocketNotifier>

#include <cstdint>
#include <memory>

struct xcb_connection_t;

namespace velmo {

/// Raw motion of XInput 2, over a connection of its own so that Qt's choice of events stays as it is. Selected only
/// while a watch is armed: a moving mouse wakes the process once. Main thread; needs an event loop.
class XInputPointerMotion final : public PointerMotion {
public:
    XInputPointerMotion();
    ~XInputPointerMotion() override;
    XInputPointerMotion(const XInputPointerMotion&) = delete;
    XInputPointerMotion& operator=(const XInputPointerMotion&) = delete;

    Watch callOnce(std::function<void()> moved) override;
    void cancel() override;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };
    void select(std::uint32_t events);
    void read();

    std::unique_ptr<xcb_connection_t, Disconnect> connection_; // null: the server has no XInput 2
    std::unique_ptr<QSocketNotifier> notifier_;
    std::uint32_t root_ = 0;
    std::uint8_t opcode_ = 0;
    std::function<void()> moved_;
};

} // namespace velmo
