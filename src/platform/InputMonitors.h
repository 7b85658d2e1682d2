#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace velmo {

inline constexpr std::uint32_t kOptionModifier = 1U << 19; ///< Option, which this system's keyboards call Alt

/// A turn of the wheel, a scroll of the touchpad or a pinch.
struct InputGesture {
    enum class Type { scrollWheel, magnify };

    Type type = Type::scrollWheel;
    std::uint32_t modifierFlags = 0;
    double magnification = 0;               ///< of a magnify: what the pinch has added to a scale of 1
    double scrollingDeltaY = 0;             ///< of a scroll: upwards is positive; points if precise, else clicks
    bool hasPreciseScrollingDeltas = false; ///< the device scrolls in finer steps than the clicks of a wheel
};

/// One monitor: ends when it is destroyed. A call of its handler that is under way then may still finish.
class InputMonitor {
public:
    virtual ~InputMonitor() = default;
};

/// What mouse and touchpad do, whichever program it is meant for, this one included; nobody is kept from anything.
///
/// `add...` gives a token that the caller keeps for as long as it wants to hear, or null where the system does not let
/// anybody watch. `add...` and the end of tokens on one thread. Handlers are called on a thread of the monitors' own,
/// one at a time, and must be quick; they may outlive what they were made for by the call under way.
class InputMonitors {
public:
    using Token = std::unique_ptr<InputMonitor>;

    virtual ~InputMonitors() = default;

    /// Any mouse button, wheel and scrolling left out, went down or up at `time` in host-clock seconds.
    virtual Token addMouseButtons(std::function<void(double time)> moved) = 0;
    /// The left button went down.
    virtual Token addLeftMouseDown(std::function<void()> pressed) = 0;
    virtual Token addScrollAndMagnify(std::function<void(const InputGesture&)> made) = 0;
};

} // namespace velmo
