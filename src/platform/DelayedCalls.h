#pragma once

#include <functional>

namespace velmo {

/// Calls that are due later, on the main thread's event loop. Injected, so that tests advance the time.
class DelayedCalls {
public:
    virtual ~DelayedCalls() = default;
    /// Main thread. `call` runs once on the main thread, `seconds` from now, never inside this function.
    virtual void after(double seconds, std::function<void()> call) = 0;
};

} // namespace velmo
