#include "surfaces/CameraFeed.h"

#include <QMetaObject>

#include <utility>

namespace velmo {

FrameRef CameraFeed::picture() const {
    const std::lock_guard guard(lock_);
    return picture_;
}

void CameraFeed::publish(FrameRef picture) {
    {
        const std::lock_guard guard(lock_);
        std::swap(picture_, picture);
    }
    if (!announced_.exchange(true)) {
        QMetaObject::invokeMethod(this, &CameraFeed::announce, Qt::QueuedConnection);
    }
}

void CameraFeed::announce() {
    announced_ = false; // first: a picture that comes now has a note of its own
    emit pictureChanged();
}

} // namespace velmo
