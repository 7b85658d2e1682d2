#include "platform/desktop/XcbHotKeyService.h"

#include "platform/desktop/AnsiKeys.h"

#include <QGuiApplication>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>
#include <memory>

namespace velmo {
namespace {

constexpr HotKeyService::Status kNoConnection = 1; // BadRequest
constexpr HotKeyService::Status kUnknownPlace = 2; // BadValue
constexpr xcb_keysym_t kNumLockSymbol = 0xff7f;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, Free>;

struct ModifierPair {
    std::uint32_t mask; ///< of the hot key interface
    std::uint16_t xMask;
};
constexpr ModifierPair kModifiers[] = {
    {256, XCB_MOD_MASK_4}, {512, XCB_MOD_MASK_SHIFT}, {2048, XCB_MOD_MASK_1}, {kControlModifier, XCB_MOD_MASK_CONTROL}};
constexpr std::uint16_t kAllModifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1 | XCB_MOD_MASK_CONTROL;

std::uint16_t xModifiers(std::uint32_t modifiers) {
    std::uint16_t mask = 0;
    for (const ModifierPair& pair : kModifiers) {
        mask = static_cast<std::uint16_t>(mask | ((modifiers & pair.mask) != 0 ? pair.xMask : 0));
    }
    return mask;
}

/// The modifier bits whose keys include one of `codes`.
std::uint16_t modifierOf(xcb_connection_t* connection, const xcb_keycode_t* codes) {
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!mapping) {
        return 0;
    }
    const xcb_keycode_t* table = xcb_get_modifier_mapping_keycodes(mapping.get());
    std::uint16_t mask = 0;
    for (int entry = 0; entry < 8 * mapping->keycodes_per_modifier; ++entry) {
        for (const xcb_keycode_t* code = codes; *code != XCB_NO_SYMBOL; ++code) {
            if (table[entry] == *code) {
                mask = static_cast<std::uint16_t>(mask | (1U << (entry / mapping->keycodes_per_modifier)));
            }
        }
    }
    return mask;
}

std::uint16_t numLockMask(xcb_connection_t* connection) {
    const std::unique_ptr<xcb_key_symbols_t, void (*)(xcb_key_symbols_t*)> symbols(xcb_key_symbols_alloc(connection),
                                                                                   &xcb_key_symbols_free);
    if (!symbols) {
        return 0;
    }
    const XcbReply<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), kNumLockSymbol));
    return codes ? modifierOf(connection, codes.get()) : 0;
}

} // namespace

XcbHotKeyService::XcbHotKeyService() {
    if (const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        connection_ = native->connection();
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        qGuiApp->installNativeEventFilter(this);
    }
}

XcbHotKeyService::~XcbHotKeyService() {
    while (!grabs_.empty()) {
        unregisterHotKey(grabs_.begin()->first);
    }
    qGuiApp->removeNativeEventFilter(this);
}

void XcbHotKeyService::installHandler(std::function<void(std::uint32_t)> pressed) {
    pressed_ = std::move(pressed);
}

HotKeyService::Status XcbHotKeyService::registerHotKey(std::uint32_t id, int keyCode, std::uint32_t modifiers) {
    unregisterHotKey(id);
    const auto code = xKeyCode(keyCode);
    if (!code) {
        return kUnknownPlace;
    }
    if (connection_ == nullptr || xcb_connection_has_error(connection_) != 0) {
        return kNoConnection;
    }
    const auto mask = xModifiers(modifiers);
    const auto numLock = numLockMask(connection_);
    const auto with = [mask](int locks) { return static_cast<std::uint16_t>(mask | locks); };
    const Grab grab{*code, mask, {with(0), with(XCB_MOD_MASK_LOCK), with(numLock), with(XCB_MOD_MASK_LOCK | numLock)}};
    for (std::size_t variant = 0; variant < grab.variants.size(); ++variant) {
        const auto cookie = xcb_grab_key_checked(connection_, 0, root_, grab.variants[variant], grab.keyCode,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        if (const XcbReply<xcb_generic_error_t> error{xcb_request_check(connection_, cookie)}) {
            ungrab(grab, variant);
            return error->error_code;
        }
    }
    grabs_.emplace(id, grab);
    return 0;
}

void XcbHotKeyService::unregisterHotKey(std::uint32_t id) {
    const auto found = grabs_.find(id);
    if (found == grabs_.end()) {
        return;
    }
    ungrab(found->second, found->second.variants.size());
    repeats_.forget(found->second.keyCode);
    grabs_.erase(found);
}

void XcbHotKeyService::ungrab(const Grab& grab, std::size_t variants) {
    for (std::size_t variant = 0; variant < variants; ++variant) {
        xcb_ungrab_key(connection_, grab.keyCode, root_, grab.variants[variant]);
    }
    xcb_flush(connection_);
}

bool XcbHotKeyService::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (grabs_.empty() || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & ~0x80;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) {
        return false;
    }
    const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
    const bool isOurs = key->event == root_; // only a grab reports to the root window
    if (type == XCB_KEY_RELEASE) {
        repeats_.release(key->detail, key->time); // a menu that took the keyboard meanwhile gets the release
        return isOurs;
    }
    return isOurs && press(key->detail, key->state, key->time);
}

bool XcbHotKeyService::press(std::uint8_t keyCode, std::uint16_t state, std::uint32_t time) {
    for (const auto& [id, grab] : grabs_) {
        if (grab.keyCode == keyCode && (state & kAllModifiers) == grab.modifiers) {
            if (repeats_.isFirstPress(keyCode, time) && pressed_) {
                pressed_(id);
            }
            return true;
        }
    }
    return false;
}

} // namespace velmo
