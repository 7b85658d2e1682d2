#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace velmo {

/// Lets calls of others' code through until it is closed. Any thread.
class CallGate {
public:
    /// True when the call may go ahead; then `leave` must follow on the same thread.
    bool enter() {
        const std::lock_guard guard(lock_);
        if (!closed_) {
            inside_.push_back(std::this_thread::get_id());
        }
        return !closed_;
    }

    void leave() {
        {
            const std::lock_guard guard(lock_);
            std::erase(inside_, std::this_thread::get_id());
        }
        left_.notify_all();
    }

    /// No call goes through after this.
    void close() {
        const std::lock_guard guard(lock_);
        closed_ = true;
    }

    /// Closes, and waits for the calls of other threads that are under way.
    void closeAndWait() {
        std::unique_lock guard(lock_);
        closed_ = true;
        left_.wait(guard, [this] { return std::erase(inside_, std::this_thread::get_id()), inside_.empty(); });
    }

private:
    std::mutex lock_;
    std::condition_variable left_;
    // protected by lock_
    bool closed_ = false;
    std::vector<std::thread::id> inside_;
};

} // namespace velmo
