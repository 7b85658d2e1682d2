#pragma once

#include <atomic>
#include <cassert>

namespace velmo::internal {

/// Debug builds stop when two threads are inside at the same time: what lives on one serial queue never is.
class SerialUse {
public:
    class Scope {
    public:
        explicit Scope(SerialUse& use) : use_(use) {
            [[maybe_unused]] const bool wasInUse = use_.inUse_.exchange(true, std::memory_order_relaxed);
            assert(!wasInUse);
        }
        ~Scope() { use_.inUse_.store(false, std::memory_order_relaxed); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        SerialUse& use_;
    };

private:
    std::atomic<bool> inUse_ = false;
};

} // namespace velmo::internal
