#pragma once

#include "platform/x11/internal/CaptureRun.h"

#include <mutex>
#include <thread>

namespace velmo::x11 {

/// A stream with a connection and a thread of its own, "velmo.x11.capture", for each run. Any thread.
class X11CaptureStream final : public CaptureStream {
public:
    /// `connection` is that of the first run; later ones open their own to `displayName`.
    X11CaptureStream(std::unique_ptr<XConnection> connection, std::optional<std::string> displayName,
                     ContentFilter filter, const StreamConfiguration& configuration, StreamDelegate* delegate,
                     AudioInputService* audio, const Clock& clock);
    /// Waits for the thread and for handlers that are under way on other threads. May be called from a handler, a
    /// completion or the delegate.
    ~X11CaptureStream() override;

    Result<void> addOutput(StreamOutputHandler& handler, StreamOutput type, SerialQueue& queue) override;
    void start(Completion completion) override;
    void stop(Completion completion) override;
    void updateConfiguration(const StreamConfiguration& configuration, Completion completion) override;

private:
    Result<std::unique_ptr<XConnection>> takeConnection();
    static void joinOrLeave(std::thread thread);

    std::optional<std::string> displayName_;
    ContentFilter filter_;
    StreamDelegate* delegate_;
    AudioInputService* audio_;
    const Clock& clock_;

    std::mutex lock_;
    // protected by lock_
    std::unique_ptr<XConnection> connection_;
    StreamConfiguration configuration_;
    StreamOutputs::Receivers receivers_;
    std::shared_ptr<StreamOutputs> outputs_;
    std::shared_ptr<CaptureMailbox> mailbox_; ///< of the latest run
    std::thread thread_;
};

} // namespace velmo::x11
