#include "platform/pulse/internal/DeliveryGate.h"

#include <utility>

namespace velmo {

DeliveryGate::DeliveryGate(SerialQueue& queue, AudioInputService::Handler handler)
    : queue_(queue), handler_(std::move(handler)) {}

void DeliveryGate::deliver(Sample sample) {
    {
        const std::lock_guard lock(mutex_);
        if (!open_ || waiting_ >= kMostWaiting) {
            return;
        }
        ++waiting_;
    }
    queue_.async([gate = shared_from_this(), sample = std::move(sample)] { gate->call(sample); });
}

void DeliveryGate::call(const Sample& sample) {
    {
        const std::lock_guard lock(mutex_);
        --waiting_;
        if (!open_) {
            return;
        }
        calling_ = true;
    }
    handler_(sample);
    {
        const std::lock_guard lock(mutex_);
        calling_ = false;
    }
    idle_.notify_all();
}

void DeliveryGate::shut() {
    std::unique_lock lock(mutex_);
    open_ = false;
    if (!queue_.isCurrent()) {
        idle_.wait(lock, [this] { return !calling_; });
    }
}

} // namespace velmo
