#pragma once

#include <functional>
#include <memory>

namespace velmo {

/// Those who want to hear of a change. Any thread.
class ChangeListeners {
public:
    ChangeListeners();
    ~ChangeListeners();

    /// `changed` is called by `tell` as long as what comes back is kept, which may be longer than this object lives.
    /// Letting go of it waits for a call that is under way on another thread.
    [[nodiscard]] std::shared_ptr<void> add(std::function<void()> changed);
    /// Calls all of them, one after the other.
    void tell();

private:
    struct Core;
    std::shared_ptr<Core> core_;
};

} // namespace velmo
