#include "base/SerialQueue.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <vector>

namespace velmo {

namespace {

using SteadyClock = std::chrono::steady_clock;

// A ring that grows by doubling and never shrinks: after the first busy moments handing over allocates nothing.
class TaskRing {
public:
    bool isEmpty() const { return count_ == 0; }

    void push(InlineTask task) {
        if (count_ == slots_.size()) {
            grow();
        }
        slots_[(head_ + count_++) % slots_.size()] = std::move(task);
    }

    InlineTask pop() {
        InlineTask task = std::move(slots_[head_]);
        head_ = (head_ + 1) % slots_.size();
        --count_;
        return task;
    }

private:
    void grow() {
        std::vector<InlineTask> bigger(slots_.size() * 2);
        for (std::size_t i = 0; i < count_; ++i) {
            bigger[i] = std::move(slots_[(head_ + i) % slots_.size()]);
        }
        slots_ = std::move(bigger);
        head_ = 0;
    }

    std::vector<InlineTask> slots_ = std::vector<InlineTask>(64);
    std::size_t head_ = 0;
    std::size_t count_ = 0;
};

struct Timer {
    SerialQueue::TimerId id;
    SteadyClock::time_point due;
    SteadyClock::duration interval;
    std::shared_ptr<std::function<void()>> tick;
};

} // namespace

struct ThreadQueue::Core {
    std::string label;
    std::thread thread;

    std::mutex lock;
    std::condition_variable changed;
    // protected by lock
    TaskRing tasks;
    std::vector<Timer> timers;
    TimerId nextTimer = 1;
    bool closing = false;

    Timer* firstDue() {
        const auto first = std::min_element(timers.begin(), timers.end(),
                                            [](const Timer& a, const Timer& b) { return a.due < b.due; });
        return first == timers.end() ? nullptr : &*first;
    }

    void run() {
        pthread_setname_np(pthread_self(), label.substr(label.size() > 15 ? label.size() - 15 : 0).c_str());
        std::unique_lock guard(lock);
        bool timerRanLast = false; // a tick that takes longer than its interval must not starve the tasks
        while (true) {
            Timer* timer = firstDue();
            const bool timerIsDue = timer != nullptr && timer->due <= SteadyClock::now();
            if (timerIsDue && (!timerRanLast || tasks.isEmpty())) {
                runTimer(*timer, guard);
                timerRanLast = true;
            } else if (!tasks.isEmpty()) {
                runTask(guard);
                timerRanLast = false;
            } else if (closing) {
                return;
            } else if (timer != nullptr) {
                changed.wait_until(guard, SteadyClock::time_point(timer->due));
            } else {
                changed.wait(guard);
            }
        }
    }

    void runTask(std::unique_lock<std::mutex>& guard) {
        InlineTask task = tasks.pop();
        guard.unlock();
        task();
        task = {};
        guard.lock();
    }

    void runTimer(Timer& timer, std::unique_lock<std::mutex>& guard) {
        const auto now = SteadyClock::now();
        timer.due += timer.interval * ((now - timer.due) / timer.interval + 1);
        const auto tick = timer.tick;
        guard.unlock();
        (*tick)();
        guard.lock();
    }
};

ThreadQueue::ThreadQueue(std::string label) : core_(std::make_unique<Core>()) {
    core_->label = std::move(label);
    core_->thread = std::thread([core = core_.get()] { core->run(); });
}

ThreadQueue::~ThreadQueue() {
    assert(!isCurrent());
    {
        const std::lock_guard guard(core_->lock);
        core_->timers.clear();
        core_->closing = true;
    }
    core_->changed.notify_all();
    core_->thread.join();
}

const std::string& ThreadQueue::label() const {
    return core_->label;
}

void ThreadQueue::async(InlineTask task) {
    {
        const std::lock_guard guard(core_->lock);
        core_->tasks.push(std::move(task));
    }
    core_->changed.notify_one();
}

void ThreadQueue::sync(InlineTask task) {
    assert(!isCurrent());
    std::mutex doneLock;
    std::condition_variable done;
    bool finished = false;
    async([&] {
        task();
        const std::lock_guard guard(doneLock);
        finished = true;
        done.notify_one();
    });
    std::unique_lock guard(doneLock);
    done.wait(guard, [&] { return finished; });
}

bool ThreadQueue::isCurrent() const {
    return std::this_thread::get_id() == core_->thread.get_id();
}

SerialQueue::TimerId ThreadQueue::startTimer(double seconds, std::function<void()> tick) {
    const auto interval = std::chrono::duration_cast<SteadyClock::duration>(std::chrono::duration<double>(seconds));
    TimerId id = 0;
    {
        const std::lock_guard guard(core_->lock);
        id = core_->nextTimer++;
        core_->timers.push_back(
            {id, SteadyClock::now() + interval, interval, std::make_shared<std::function<void()>>(std::move(tick))});
    }
    core_->changed.notify_one();
    return id;
}

void ThreadQueue::cancelTimer(TimerId timer) {
    const std::lock_guard guard(core_->lock);
    std::erase_if(core_->timers, [timer](const Timer& each) { return each.id == timer; });
}

std::unique_ptr<SerialQueue> makeThreadQueue(std::string label) {
    return std::make_unique<ThreadQueue>(std::move(label));
}

} // namespace velmo
