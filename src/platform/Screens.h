#pragma once

#include "base/Geometry.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace velmo {

/// A display as the windows see it. `frame` in global points, origin at the lower left of the primary display, y up.
struct Screen {
    std::uint32_t displayID = 0;
    Rect frame;
    double backingScaleFactor = 1;
    friend bool operator==(const Screen&, const Screen&) = default;
};

/// Main thread.
class Screens {
public:
    virtual ~Screens() = default;
    /// The main screen first. Empty only when the display server has gone.
    virtual std::vector<Screen> all() const = 0;
};

/// Flags of one step of a change of the displays.
inline constexpr std::uint32_t kDisplayBeginConfiguration = 1;

/// Reports each step of a change of the displays (plugged, unplugged, mode changed). Main thread.
class DisplayReconfiguration {
public:
    using Callback = std::function<void(std::uint32_t displayID, std::uint32_t flags)>;
    virtual ~DisplayReconfiguration() = default;
    /// Called for the life of the process.
    virtual void registerCallback(Callback callback) = 0;
};

} // namespace velmo
