#pragma once

#include <cstdint>
#include <functional>

namespace velmo {

/// Keys that work whichever application is in front. Main thread.
///
/// Key codes are virtual key codes of the ANSI layout (by place, not by letter); modifiers are the sum of
/// their masks: 256 Super, 512 Shift, 2048 Alt, 4096 Control.
class HotKeyService {
public:
    using Status = int; ///< 0 is success; anything else is the system's own number
    virtual ~HotKeyService() = default;

    /// One handler for all keys; it only hears the id.
    virtual void installHandler(std::function<void(std::uint32_t id)> pressed) = 0;
    /// Fails at once for a key that another program holds.
    virtual Status registerHotKey(std::uint32_t id, int keyCode, std::uint32_t modifiers) = 0;
    virtual void unregisterHotKey(std::uint32_t id) = 0;
};

inline constexpr std::uint32_t kControlModifier = 4096;

} // namespace velmo
