#pragma once

#include "base/Clock.h"

namespace velmo::test {

/// Stands still until a test moves it.
class ManualClock final : public Clock {
public:
    explicit ManualClock(double seconds = 0) : now_(MediaTime::fromSeconds(seconds)) {}

    MediaTime now() const override { return now_; }
    void set(MediaTime time) { now_ = time; }
    void set(double seconds) { now_ = MediaTime::fromSeconds(seconds); }
    void advance(double seconds) { now_ += MediaTime::fromSeconds(seconds); }

private:
    MediaTime now_;
};

} // namespace velmo::test
