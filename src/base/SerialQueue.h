#pragma once

#include "base/InlineTask.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmo {

/// Runs tasks one after the other, in the order in which they were handed over.
/// Each class that lives on a queue names it in its header and checks `isCurrent()` in debug builds.
class SerialQueue {
public:
    using TimerId = std::uint64_t; // 0 is no timer

    virtual ~SerialQueue() = default;

    virtual const std::string& label() const = 0;
    /// Any thread; returns at once.
    virtual void async(InlineTask task) = 0;
    /// Any thread but the queue's own; returns when the task has run.
    virtual void sync(InlineTask task) = 0;
    virtual bool isCurrent() const = 0;
    /// Calls `tick` on the queue every `seconds`, first after one interval. A tick that comes late is not
    /// made up for: the next one is due at its own time on the original grid.
    virtual TimerId startTimer(double seconds, std::function<void()> tick) = 0;
    /// Any thread. On the queue itself no tick follows; from elsewhere one may still be under way.
    virtual void cancelTimer(TimerId timer) = 0;
};

/// A queue with a thread of its own. The destructor runs what was handed over before it, then joins.
class ThreadQueue final : public SerialQueue {
public:
    explicit ThreadQueue(std::string label);
    ~ThreadQueue() override;
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    const std::string& label() const override;
    void async(InlineTask task) override;
    void sync(InlineTask task) override;
    bool isCurrent() const override;
    TimerId startTimer(double seconds, std::function<void()> tick) override;
    void cancelTimer(TimerId timer) override;

private:
    struct Core;
    std::unique_ptr<Core> core_;
};

/// How a class that owns queues comes by them; tests hand in one that makes manual queues.
using MakeQueue = std::function<std::unique_ptr<SerialQueue>(std::string label)>;

std::unique_ptr<SerialQueue> makeThreadQueue(std::string label);

} // namespace velmo
