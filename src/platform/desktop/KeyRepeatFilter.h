#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace velmo {

/// Tells a finger's press from the presses that the X server makes up while the key is held: those come as a release
/// and a press with the same server time, or, where the server leaves out such releases, as presses alone.
/// Times are X server times in milliseconds, which wrap.
class KeyRepeatFilter {
public:
    /// True for the first press only.
    bool isFirstPress(std::uint8_t keyCode, std::uint32_t time) {
        Key& key = keys_[keyCode];
        const bool held = key.isDown && time - key.lastPress <= kLongestRepeatGap;
        const bool repeated = held || key.lastRelease == time;
        key = {true, time, std::nullopt};
        return !repeated;
    }
    void release(std::uint8_t keyCode, std::uint32_t time) {
        keys_[keyCode].isDown = false;
        keys_[keyCode].lastRelease = time;
    }
    /// A key that is no longer watched has no release to wait for.
    void forget(std::uint8_t keyCode) { keys_[keyCode] = {}; }

private:
    /// No keyboard waits so long for its next repeat: a key down for longer has lost its release to another grab.
    static constexpr std::uint32_t kLongestRepeatGap = 2000;

    struct Key {
        bool isDown = false;
        std::uint32_t lastPress = 0;
        std::optional<std::uint32_t> lastRelease;
    };
    std::array<Key, 256> keys_;
};

} // namespace velmo
