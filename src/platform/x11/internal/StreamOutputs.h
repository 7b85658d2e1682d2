#pragma once

#include "base/Result.h"
#include "base/SerialQueue.h"
#include "media/Sample.h"
#include "platform/CallGate.h"
#include "platform/ScreenCapture.h"

#include <array>
#include <memory>

namespace velmo::x11 {

/// Who receives what of one run of a stream. Shared by the stream, its thread and the tasks on the receivers' queues,
/// so that a task that comes too late finds a closed gate and touches nothing that is gone.
class StreamOutputs : public std::enable_shared_from_this<StreamOutputs> {
public:
    struct Receiver {
        StreamOutputHandler* handler = nullptr;
        SerialQueue* queue = nullptr;
    };
    using Receivers = std::array<Receiver, 3>; ///< by StreamOutput

    StreamOutputs(CaptureStream& stream, const Receivers& receivers, StreamDelegate* delegate)
        : stream_(stream), receivers_(receivers), delegate_(delegate) {}

    const Receiver& receiver(StreamOutput type) const { return receivers_[static_cast<std::size_t>(type)]; }
    /// Hands a picture to its queue. Copies two counts, allocates nothing.
    void postPicture(const Sample& sample);
    /// On the receiver's own queue: calls it.
    void deliver(const Sample& sample, StreamOutput type);
    /// Tells the delegate that the stream has ended by itself.
    void reportStop(const Error& error);

    CallGate& samples() { return samples_; }
    CallGate& reports() { return reports_; }

private:
    CaptureStream& stream_;
    Receivers receivers_;
    StreamDelegate* delegate_;
    CallGate samples_;
    CallGate reports_;
};

} // namespace velmo::x11
