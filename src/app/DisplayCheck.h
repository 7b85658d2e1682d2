#pragma once

#include <memory>
#include <optional>
#include <string>

struct xcb_connection_t;

namespace velmo {

/// Looks for the X server before the QApplication does, which ends the process with a core dump without one. Keep it
/// until the QApplication is made: a server may reset itself when its last client leaves, and be away for a moment.
class DisplayCheck {
public:
    DisplayCheck();

    /// Why there is no X server to work on, in words for the user; absent when there is one.
    std::optional<std::string> missing() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_; ///< null where no server is named
};

} // namespace velmo
