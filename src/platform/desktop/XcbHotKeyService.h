#pragma once

#include "platform/HotKeyService.h"
#include "platform/desktop/KeyRepeatFilter.h"

#include <QAbstractNativeEventFilter>

#include <array>
#include <cstdint>
#include <functional>
#include <unordered_map>

struct xcb_connection_t;

namespace velmo {

/// Global keys by passive grabs on the root window, over Qt's own connection. Main thread; lives inside the
/// QGuiApplication's life. The destructor releases all keys.
///
/// A key is grabbed with and without Caps Lock and Num Lock, so that neither matters. The status of a key that
/// another program holds is the X error 10 (BadAccess); of a place that the keyboard table does not know, 2 (BadValue);
/// without an X connection, 1 (BadRequest). A held key fires once.
class XcbHotKeyService final : public HotKeyService, public QAbstractNativeEventFilter {
public:
    XcbHotKeyService();
    ~XcbHotKeyService() override;
    XcbHotKeyService(const XcbHotKeyService&) = delete;
    XcbHotKeyService& operator=(const XcbHotKeyService&) = delete;

    void installHandler(std::function<void(std::uint32_t id)> pressed) override;
    Status registerHotKey(std::uint32_t id, int keyCode, std::uint32_t modifiers) override;
    void unregisterHotKey(std::uint32_t id) override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    /// What was grabbed, kept as it was: the place of Num Lock may change while a key is held.
    struct Grab {
        std::uint8_t keyCode = 0;
        std::uint16_t modifiers = 0;
        std::array<std::uint16_t, 4> variants{};
    };

    void ungrab(const Grab& grab, std::size_t variants);
    bool press(std::uint8_t keyCode, std::uint16_t state, std::uint32_t time);

    xcb_connection_t* connection_ = nullptr;
    std::uint32_t root_ = 0;
    std::function<void(std::uint32_t)> pressed_;
    std::unordered_map<std::uint32_t, Grab> grabs_;
    KeyRepeatFilter repeats_;
};

} // namespace velmo
