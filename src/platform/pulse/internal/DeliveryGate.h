#pragma once

#include "base/SerialQueue.h"
#include "platform/AudioInput.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace velmo {

/// The way from the sound server's thread to the receiver's queue, which can be shut for good.
/// Holds at most `kMostWaiting` stretches of sound that the queue has not taken; further ones are dropped.
class DeliveryGate : public std::enable_shared_from_this<DeliveryGate> {
public:
    static constexpr int kMostWaiting = 100; ///< two seconds of 20 ms

    DeliveryGate(SerialQueue& queue, AudioInputService::Handler handler);

    /// Any thread; returns at once.
    void deliver(Sample sample);
    /// Any thread. No call of the handler begins after it; one under way on another thread is waited for.
    void shut();

private:
    void call(const Sample& sample);

    SerialQueue& queue_;
    const AudioInputService::Handler handler_;
    std::mutex mutex_;
    std::condition_variable idle_;
    bool open_ = true;
    bool calling_ = false;
    int waiting_ = 0;
};

} // namespace velmo
