#pragma once

#include "base/Result.h"
#include "platform/x11/internal/XReply.h"

#include <memory>
#include <optional>
#include <string>

namespace velmo::x11 {

struct XAtoms {
    xcb_atom_t wmState = 0;
    xcb_atom_t wmOpacity = 0;
    xcb_atom_t wmPid = 0;
    xcb_atom_t wmName = 0;
    xcb_atom_t utf8String = 0;
    xcb_atom_t rootPixmap = 0;
    xcb_atom_t compositingManager = 0; ///< the selection that it owns
};

/// First event numbers; an absent optional extension has 0.
struct XEvents {
    std::uint8_t damage = 0;
    std::uint8_t shape = 0;
    std::uint8_t fixes = 0;
    std::uint8_t randr = 0;
};

/// A connection of one's own to the X server, with the extensions that capture needs. One thread at a time.
/// Errors of single requests never end anything; `lost()` tells when the server has gone.
class XConnection {
public:
    /// Fails with `kStreamErrorFailedToStart` when there is no display, an extension is missing or pixels are not
    /// 32 bits of 8-bit RGB.
    static Result<std::unique_ptr<XConnection>> open(const std::optional<std::string>& displayName);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    xcb_connection_t* xcb() const { return connection_; }
    xcb_window_t root() const { return screen_->root; }
    const xcb_screen_t& screen() const { return *screen_; }
    const XAtoms& atoms() const { return atoms_; }
    const XEvents& events() const { return events_; }
    bool hasSharedMemory() const { return hasSharedMemory_; }
    bool hasClientIds() const { return hasClientIds_; }
    bool hasRandr() const { return events_.randr != 0; }
    /// XInput 2, with its major opcode.
    std::optional<std::uint8_t> inputOpcode() const { return inputOpcode_; }
    bool lost() const { return xcb_connection_has_error(connection_) != 0; }

private:
    XConnection() = default;
    Result<void> prepare(int screenNumber);
    bool negotiateRequired();
    void negotiateOptional();
    void internAtoms(int screenNumber);

    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
    XAtoms atoms_;
    XEvents events_;
    bool hasSharedMemory_ = false;
    bool hasClientIds_ = false;
    std::optional<std::uint8_t> inputOpcode_;
};

} // namespace velmo::x11
