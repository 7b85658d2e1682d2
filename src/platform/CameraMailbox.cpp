#include "platform/CameraMailbox.h"

#include <utility>

namespace velmo {

CameraMailbox::CameraMailbox(SerialQueue& queue, CameraHandlers handlers)
    : queue_(queue), handlers_(std::move(handlers)) {}

void CameraMailbox::deliver(Sample picture) {
    std::optional<Sample> late; // let go of outside the lock
    {
        const std::lock_guard guard(lock_);
        if (!open_ || reason_) {
            return;
        }
        late = std::exchange(picture_, std::move(picture));
        if (std::exchange(awake_, true)) {
            return;
        }
    }
    wake();
}

void CameraMailbox::end(Error reason) {
    {
        const std::lock_guard guard(lock_);
        if (!open_ || reason_) {
            return;
        }
        reason_ = std::move(reason);
        if (std::exchange(awake_, true)) {
            return;
        }
    }
    wake();
}

void CameraMailbox::wake() {
    queue_.async([self = shared_from_this()] { self->take(); });
}

void CameraMailbox::take() {
    std::optional<Sample> picture;
    std::optional<Error> reason;
    {
        const std::lock_guard guard(lock_);
        awake_ = false;
        picture = std::exchange(picture_, std::nullopt);
        if (!open_) {
            return;
        }
        reason = reason_;
        open_ = !reason;
        calling_ = true;
    }
    if (picture) {
        handlers_.picture(*picture);
    }
    if (reason) {
        handlers_.ended(*reason);
    }
    picture.reset();
    {
        const std::lock_guard guard(lock_);
        calling_ = false;
    }
    idle_.notify_all();
}

void CameraMailbox::shut() {
    std::optional<Sample> late;
    std::unique_lock guard(lock_);
    open_ = false;
    late = std::exchange(picture_, std::nullopt);
    if (!queue_.isCurrent()) {
        idle_.wait(guard, [this] { return !calling_; });
    }
    guard.unlock();
}

} // namespace velmo
