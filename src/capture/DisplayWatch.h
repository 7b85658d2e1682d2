#pragma once

#include "platform/DelayedCalls.h"
#include "platform/Screens.h"

#include <functional>
#include <memory>

namespace velmo {

/// The name under which a change of the displays is announced.
inline constexpr const char* velmoDisplaysChanged = "velmo.pantallasCambiaron";

/// Turns the storm of callbacks of a change of the displays into one calm notification, `velmoDisplaysChanged`,
/// 0.6 s after the first of them. Main thread.
class DisplayWatch {
public:
    /// Keeps an observer listening; letting go of it ends that.
    using Observation = std::shared_ptr<void>;

    /// Both are borrowed and must outlive this object; a callback that comes after it is ignored.
    DisplayWatch(DisplayReconfiguration& displays, DelayedCalls& delayedCalls);
    ~DisplayWatch();
    DisplayWatch(const DisplayWatch&) = delete;
    DisplayWatch& operator=(const DisplayWatch&) = delete;

    /// Begins to watch. Later calls do nothing.
    void start();

    /// `changed` is told of each notification from now on, as long as the observation is kept.
    [[nodiscard]] Observation observe(std::function<void()> changed);

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace velmo
