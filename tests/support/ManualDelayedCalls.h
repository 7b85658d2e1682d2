#pragma once

#include "platform/DelayedCalls.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmo::test {

/// Delayed calls on a time that a test advances.
class ManualDelayedCalls final : public DelayedCalls {
public:
    void after(double seconds, std::function<void()> call) override {
        calls_.push_back({now_ + seconds, std::move(call)});
    }

    /// Makes the calls that are due within `seconds`, earliest first, each at its own time.
    void advance(double seconds) {
        const double until = now_ + seconds;
        while (true) {
            const auto next = std::ranges::min_element(calls_, {}, &Call::due);
            if (next == calls_.end() || next->due > until + kRounding) {
                break;
            }
            const Call call = std::move(*next);
            calls_.erase(next);
            now_ = std::max(now_, call.due);
            call.function();
        }
        now_ = until;
    }

    std::size_t waiting() const { return calls_.size(); }

private:
    static constexpr double kRounding = 1e-9; // sums of decimal seconds are not exact

    struct Call {
        double due;
        std::function<void()> function;
    };

    double now_ = 0;
    std::vector<Call> calls_;
};

} // namespace velmo::test
