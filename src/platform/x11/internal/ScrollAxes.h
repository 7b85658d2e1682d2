#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <optional>

namespace velmo::x11 {

/// The vertical scroll axes of the devices, asked of the server once for each. The connection's own thread.
class ScrollAxes {
public:
    struct Axis {
        std::uint16_t valuator = 0;
        double increment = 0; ///< of one click, downwards; negative where the axis is turned round
    };

    explicit ScrollAxes(xcb_connection_t* connection) : connection_(connection) {}

    /// Absent for a device that has a wheel of buttons only, or none.
    std::optional<Axis> of(std::uint16_t device);
    /// Devices have come, gone or changed.
    void forget() { known_.clear(); }

private:
    xcb_connection_t* connection_;
    std::map<std::uint16_t, std::optional<Axis>> known_;
};

} // namespace velmo::x11
