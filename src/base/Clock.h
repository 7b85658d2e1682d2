#pragma once

#include "base/MediaTime.h"

namespace velmo {

/// The clock that capture times, pointer events and pauses are measured on. Injected, so that tests advance it.
class Clock {
public:
    virtual ~Clock() = default;
    /// Any thread. Never goes back.
    virtual MediaTime now() const = 0;
};

/// CLOCK_MONOTONIC in nanoseconds: the host clock of this system.
class HostClock final : public Clock {
public:
    MediaTime now() const override;
    static const HostClock& shared();
};

} // namespace velmo
