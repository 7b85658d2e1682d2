#include "platform/x11/internal/StreamOutputs.h"

namespace velmo::x11 {

void StreamOutputs::postPicture(const Sample& sample) {
    const Receiver& screen = receiver(StreamOutput::screen);
    if (screen.queue != nullptr) {
        screen.queue->async(
            [self = shared_from_this(), sample = Sample(sample)] { self->deliver(sample, StreamOutput::screen); });
    }
}

void StreamOutputs::deliver(const Sample& sample, StreamOutput type) {
    if (samples_.enter()) {
        receiver(type).handler->streamDidOutput(stream_, sample, type);
        samples_.leave();
    }
}

void StreamOutputs::reportStop(const Error& error) {
    if (delegate_ != nullptr && reports_.enter()) {
        delegate_->streamDidStop(stream_, error);
        reports_.leave();
    }
}

} // namespace velmo::x11
