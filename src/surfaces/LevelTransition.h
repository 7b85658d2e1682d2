#pragma once

#include <algorithm>

namespace velmo {

/// The level as the ring shows it: on its way to the last one that was metered for a short time.
class LevelTransition {
public:
    static constexpr double kSeconds = 0.12;

    /// From what is shown at `now` to `level`.
    void moveTo(double level, double now) {
        from_ = at(now);
        to_ = level;
        start_ = now;
    }
    double target() const { return to_; }
    double at(double now) const { return from_ + (to_ - from_) * std::clamp((now - start_) / kSeconds, 0.0, 1.0); }
    bool runs(double now) const { return from_ != to_ && now < start_ + kSeconds; }

private:
    double from_ = 0;
    double to_ = 0;
    double start_ = 0;
};

} // namespace velmo
