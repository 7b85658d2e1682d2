#pragma once

#include "base/SerialQueue.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace velmo::test {

/// A queue whose tasks run when the test says so, on the test's own thread.
class ManualQueue final : public SerialQueue {
public:
    explicit ManualQueue(std::string label = "test.manual") : label_(std::move(label)) {}
    /// Like a real queue it runs what was handed over before it goes.
    ~ManualQueue() override {
        timers_.clear();
        run();
    }

    const std::string& label() const override { return label_; }
    void async(InlineTask task) override { tasks_.push_back(std::move(task)); }
    /// Runs what came before, then the task.
    void sync(InlineTask task) override {
        run();
        inside([&] { task(); });
    }
    bool isCurrent() const override { return depth_ > 0; }
    TimerId startTimer(double seconds, std::function<void()> tick) override {
        timers_.push_back({++lastTimer_, seconds, std::move(tick)});
        return lastTimer_;
    }
    void cancelTimer(TimerId timer) override {
        std::erase_if(timers_, [timer](const Timer& each) { return each.id == timer; });
    }

    /// Runs all waiting tasks and those that they add. How many ran.
    int run() {
        int count = 0;
        for (; !tasks_.empty(); ++count) {
            InlineTask task = std::move(tasks_.front());
            tasks_.pop_front();
            inside([&] { task(); });
        }
        return count;
    }
    /// One tick of each running timer; tasks stay where they are.
    void fireTimers() {
        const std::vector<Timer> due = timers_;
        for (const Timer& timer : due) {
            inside([&] { timer.tick(); });
        }
    }

    std::size_t waiting() const { return tasks_.size(); }
    std::size_t timerCount() const { return timers_.size(); }
    /// Seconds between the ticks of the latest timer that runs.
    double timerInterval() const { return timers_.back().interval; }

private:
    struct Timer {
        TimerId id;
        double interval;
        std::function<void()> tick;
    };

    template <typename F>
    void inside(F&& body) {
        ++depth_;
        body();
        --depth_;
    }

    std::string label_;
    std::deque<InlineTask> tasks_;
    std::vector<Timer> timers_;
    TimerId lastTimer_ = 0;
    int depth_ = 0;
};

} // namespace velmo::test
