#pragma once

#include <functional>
#include <memory>

namespace velmo {

/// A running timer. Destroying it stops it.
class MainTimer {
public:
    virtual ~MainTimer() = default;
    /// No firing follows. Calling it again changes nothing.
    virtual void invalidate() = 0;
};

/// Timers of the main thread, injected so that tests advance them. Main thread only; they fire from the event loop,
/// also while menus are open and windows are dragged.
class MainTimers {
public:
    virtual ~MainTimers() = default;
    /// Fires every `seconds`, first after one interval.
    virtual std::unique_ptr<MainTimer> repeat(double seconds, std::function<void()> tick) = 0;
    /// Calls once, `seconds` from now. Cannot be taken back: `call` checks for itself whether it is still wanted.
    virtual void after(double seconds, std::function<void()> call) = 0;
};

} // namespace velmo
