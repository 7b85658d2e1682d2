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
        reason = reason_;
        open_ = open_ && !reason;
    }
    if (!gate_.enter()) {
        return;
    }
    if (picture) {
        handlers_.picture(*picture);
    }
    if (reason) {
        handlers_.ended(*reason);
    }
    gate_.leave();
}

void CameraMailbox::shut() {
    std::optional<Sample> late;
    {
        const std::lock_guard guard(lock_);
        open_ = false;
        late = std::exchange(picture_, std::nullopt);
    }
    gate_.closeAndWait();
}

} // namespace velmo
