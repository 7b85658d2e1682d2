#pragma once

#include "base/Clock.h"
#include "platform/AudioInput.h"
#include "platform/ScreenCapture.h"
#include "platform/x11/internal/CaptureMailbox.h"
#include "platform/x11/internal/CaptureSource.h"
#include "platform/x11/internal/CursorLayer.h"
#include "platform/x11/internal/FramePacer.h"
#include "platform/x11/internal/FrameWriter.h"
#include "platform/x11/internal/StreamOutputs.h"
#include "platform/x11/internal/XConnection.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// One run of a stream, from start to stop: the loop that waits for the server, takes pictures and hands them on.
/// All of it is on the thread that calls `run`, which is the stream's own.
class CaptureRun {
public:
    struct Context {
        std::unique_ptr<XConnection> connection;
        ContentFilter filter;
        StreamConfiguration configuration;
        AudioInputService* audio = nullptr;
        const Clock* clock = nullptr;
        std::shared_ptr<StreamOutputs> outputs;
        std::shared_ptr<CaptureMailbox> mailbox;
    };

    explicit CaptureRun(Context context) : context_(std::move(context)) {}

    /// Returns when the run is over. `started` is called once; the gate of the outputs is closed before those who
    /// wait for the stop are told.
    void run(const CaptureStream::Completion& started);

private:
    Result<void> prepare();
    void openSound();
    /// Why the run ended by itself; absent after a stop.
    std::optional<Error> loop();
    void takeRequests();
    Result<void> configure(const StreamConfiguration& configuration);
    void drainEvents();
    bool isDue(std::int64_t time) const;
    void grab();
    bool readPointer();
    void deliver(MediaTime time);
    void waitForWork();
    std::int64_t nanosecondsToWait() const;
    std::int64_t now() const;
    bool showsCursor() const { return context_.configuration.showsCursor; }

    Context context_;
    std::unique_ptr<CaptureSource> source_;
    std::optional<CursorLayer> cursor_;
    std::unique_ptr<FrameWriter> writer_;
    FramePacer pacer_{33'333'333};
    std::vector<std::unique_ptr<AudioInput>> sound_;
    bool buffersAreOut_ = false;
    bool owesPicture_ = true; ///< the next one goes out even if nothing was painted
    std::int64_t nextPointerLook_ = 0;
};

} // namespace velmo::x11
