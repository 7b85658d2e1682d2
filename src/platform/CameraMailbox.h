#pragma once

#include "platform/CallGate.h"
#include "platform/CameraCapture.h"

#include <memory>
#include <mutex>
#include <optional>

namespace velmo {

/// The way from a camera's thread to the receiver's queue, which can be shut for good. One picture waits at most: a
/// newer one takes its place. Any thread.
class CameraMailbox : public std::enable_shared_from_this<CameraMailbox> {
public:
    CameraMailbox(SerialQueue& queue, CameraHandlers handlers);

    /// Returns at once; allocates nothing.
    void deliver(Sample picture);
    /// After the picture that waits. The first time counts.
    void end(Error reason);
    /// No call of a handler begins after it; one under way on another thread is waited for.
    void shut();

private:
    void wake();
    void take();

    SerialQueue& queue_;
    const CameraHandlers handlers_;
    CallGate gate_;
    std::mutex lock_;
    // protected by lock_
    std::optional<Sample> picture_;
    std::optional<Error> reason_;
    bool open_ = true;
    bool awake_ = false; // a task is on its way to the queue
};

} // namespace velmo
