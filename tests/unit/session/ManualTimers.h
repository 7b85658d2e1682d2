#pragma once

#include "session/MainTimers.h"
#include "support/ManualClock.h"

#include <QCoreApplication>

#include <algorithm>
#include <list>
#include <memory>
#include <utility>

namespace velmo::test {

/// Runs everything that is scheduled on the main thread for now.
inline void settle() {
    for (int round = 0; round < 8; ++round) {
        QCoreApplication::sendPostedEvents();
    }
}

/// Timers that fire when a test advances the time, each at its own moment of the clock.
class ManualTimers final : public MainTimers {
public:
    explicit ManualTimers(ManualClock& clock) : clock_(clock), seconds_(clock.now().seconds()) {}

    std::unique_ptr<MainTimer> repeat(double seconds, std::function<void()> tick) override {
        auto running = std::make_shared<bool>(true);
        entries_.push_back({seconds_ + seconds, seconds, std::move(tick), running});
        return std::make_unique<Timer>(running);
    }
    void after(double seconds, std::function<void()> call) override {
        entries_.push_back({seconds_ + seconds, 0, std::move(call), std::make_shared<bool>(true)});
    }

    void advance(double seconds) {
        settle();
        advanceUnsettled(seconds, [] { settle(); });
    }

    /// What the timers schedule stays in the event loop, unless `between` runs it.
    void advanceUnsettled(
        double seconds, const std::function<void()>& between = [] {}) {
        const double target = seconds_ + seconds;
        for (auto next = earliest(target); next != entries_.end(); next = earliest(target)) {
            moveTo(std::max(seconds_, next->due));
            const std::function<void()> call = next->call;
            if (next->interval > 0) {
                next->due += next->interval;
            } else {
                entries_.erase(next);
            }
            call();
            between();
        }
        moveTo(target);
    }

    int running() const {
        return static_cast<int>(std::count_if(entries_.begin(), entries_.end(),
                                              [](const Entry& entry) { return *entry.running && entry.interval > 0; }));
    }

private:
    struct Entry {
        double due;
        double interval; // 0: once
        std::function<void()> call;
        std::shared_ptr<bool> running;
    };
    struct Timer final : MainTimer {
        explicit Timer(std::shared_ptr<bool> flag) : running(std::move(flag)) {}
        ~Timer() override { *running = false; }
        void invalidate() override { *running = false; }
        std::shared_ptr<bool> running;
    };

    std::list<Entry>::iterator earliest(double limit) {
        entries_.remove_if([](const Entry& entry) { return !*entry.running; });
        auto found = std::min_element(entries_.begin(), entries_.end(),
                                      [](const Entry& a, const Entry& b) { return a.due < b.due; });
        return found != entries_.end() && found->due <= limit ? found : entries_.end();
    }
    void moveTo(double seconds) {
        seconds_ = seconds;
        clock_.set(seconds);
    }

    ManualClock& clock_;
    double seconds_;
    std::list<Entry> entries_;
};

} // namespace velmo::test
