#include "platform/x11/internal/X11CaptureStream.h"

#include <pthread.h>

#include <utility>

namespace velmo::x11 {
namespace {

Error alreadyRunning() {
    return {kStreamErrorDomain, kStreamErrorFailedToStart, "La captura de la pantalla ya está en marcha."};
}

} // namespace

X11CaptureStream::X11CaptureStream(std::unique_ptr<XConnection> connection, std::optional<std::string> displayName,
                                   ContentFilter filter, const StreamConfiguration& configuration,
                                   StreamDelegate* delegate, AudioInputService* audio, const Clock& clock)
    : displayName_(std::move(displayName)), filter_(std::move(filter)), delegate_(delegate), audio_(audio),
      clock_(clock), connection_(std::move(connection)), configuration_(configuration) {}

X11CaptureStream::~X11CaptureStream() {
    { // a start that is still under way on another thread, whose completion ends us on the capture thread
        const std::lock_guard guard(lock_);
    }
    if (outputs_ != nullptr) {
        outputs_->reports().closeAndWait();
        mailbox_->requestStop({});
        outputs_->samples().closeAndWait();
        joinOrLeave(std::move(thread_));
    }
}

/// The thread holds all that it still needs, so it may run out by itself when it is the one that ends us.
void X11CaptureStream::joinOrLeave(std::thread thread) {
    if (thread.get_id() == std::this_thread::get_id()) {
        thread.detach();
    } else if (thread.joinable()) {
        thread.join();
    }
}

Result<void> X11CaptureStream::addOutput(StreamOutputHandler& handler, StreamOutput type, SerialQueue& queue) {
    const std::lock_guard guard(lock_);
    StreamOutputs::Receiver& receiver = receivers_[static_cast<std::size_t>(type)];
    if (receiver.handler != nullptr) {
        return Error{kStreamErrorDomain, kStreamErrorFailedToStart, "La captura ya tiene un destino de este tipo."};
    }
    receiver = {&handler, &queue};
    return {};
}

Result<std::unique_ptr<XConnection>> X11CaptureStream::takeConnection() {
    if (connection_ != nullptr) {
        return std::move(connection_);
    }
    return XConnection::open(displayName_);
}

void X11CaptureStream::start(Completion completion) {
    std::optional<Error> refusal;
    std::thread previous;
    {
        const std::lock_guard guard(lock_);
        if (mailbox_ != nullptr && !mailbox_->isOver()) {
            refusal = alreadyRunning();
        } else if (auto connection = takeConnection(); !connection) {
            refusal = connection.error();
        } else {
            previous = std::move(thread_);
            outputs_ = std::make_shared<StreamOutputs>(*this, receivers_, delegate_);
            mailbox_ = std::make_shared<CaptureMailbox>();
            CaptureRun::Context context{
                std::move(connection).value(), filter_, configuration_, audio_, &clock_, outputs_, mailbox_};
            thread_ = std::thread([context = std::move(context), completion]() mutable {
                pthread_setname_np(pthread_self(), "velmo.x11.capt");
                CaptureRun(std::move(context)).run(completion);
            });
        }
    }
    joinOrLeave(std::move(previous)); // not under the lock: what it still calls may call us
    if (refusal && completion) {
        completion(*refusal);
    }
}

void X11CaptureStream::stop(Completion completion) {
    std::shared_ptr<CaptureMailbox> mailbox;
    {
        const std::lock_guard guard(lock_);
        mailbox = mailbox_;
        if (outputs_ != nullptr) {
            outputs_->reports().close();
        }
    }
    if (mailbox != nullptr) {
        mailbox->requestStop(std::move(completion));
    } else if (completion) {
        completion({});
    }
}

void X11CaptureStream::updateConfiguration(const StreamConfiguration& configuration, Completion completion) {
    std::shared_ptr<CaptureMailbox> mailbox;
    {
        const std::lock_guard guard(lock_);
        configuration_ = configuration;
        mailbox = mailbox_;
    }
    if (mailbox != nullptr) {
        mailbox->requestUpdate(configuration, std::move(completion));
    } else if (completion) {
        completion({});
    }
}

} // namespace velmo::x11
