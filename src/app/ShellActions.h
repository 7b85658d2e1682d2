#pragma once

#include "app/ShellAction.h"

#include <array>
#include <functional>
#include <utility>

namespace velmo {

/// What each action of the menus does. One without a callback belongs to a part that this build does not have;
/// its entry is shown disabled. Main thread.
class ShellActions {
public:
    using Callback = std::function<void()>;

    void set(ShellAction action, Callback callback) { at(action) = std::move(callback); }
    bool has(ShellAction action) const { return static_cast<bool>(callbacks_[index(action)]); }
    /// Does nothing without a callback.
    void perform(ShellAction action) const {
        if (has(action)) {
            callbacks_[index(action)]();
        }
    }

private:
    static constexpr std::size_t index(ShellAction action) { return static_cast<std::size_t>(action); }
    Callback& at(ShellAction action) { return callbacks_[index(action)]; }

    std::array<Callback, static_cast<std::size_t>(ShellAction::count)> callbacks_;
};

} // namespace velmo
