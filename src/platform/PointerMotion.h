#pragma once

#include <functional>

namespace velmo {

/// Tells when the mouse moves again, so that nobody has to look while it rests. Main thread.
class PointerMotion {
public:
    enum class Watch {
        armed,
        impossible, ///< the system cannot tell: the caller has to look for itself
    };
    virtual ~PointerMotion() = default;
    /// `moved` is called once, from the event loop, at the next movement of any mouse; movements by a program may go
    /// unseen. A watch that is armed already is replaced.
    virtual Watch callOnce(std::function<void()> moved) = 0;
    virtual void cancel() = 0;
};

} // namespace velmo
