#pragma once

#include "capture/RecorderServices.h"
#include "capture/internal/OverlayStreams.h"
#include "capture/internal/RecordingTimeline.h"
#include "capture/internal/SampleRouter.h"
#include "capture/internal/WriterSetup.h"
#include "media/RecordingMark.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo::internal {

/// The plumbing of one recording: queues, streams, writer, and the order of their beginning and end.
///
/// Four serial queues: "velmo.capture" (timeline, writer, sound), "velmo.capture.video" (screen frames, frame timer),
/// "velmo.capture.burbujas" (overlay frames), and "velmo.capture.control", where streams and the writer are made and
/// ended, which may take a while, and where every completion is called. Work is only ever handed on, never waited for,
/// except by the destructor: so no two queues can wait for each other.
class RecordingSession final : private StreamDelegate {
public:
    using Completion = std::function<void(Result<void>)>;
    using StopCompletion = std::function<void(Result<std::filesystem::path>)>;
    using OnStop = std::function<void(std::optional<Error>)>;

    struct StartRequest {
        ContentFilter filter;
        Size size;
        int fps = 30;
        bool systemAudio = false;
        std::optional<std::string> microphoneID;
        std::filesystem::path path;
        Completion completion;
    };
    struct OverlayRequest {
        int key = 0;
        WindowId window = 0;
        Size size;
        Completion completion;
    };

    /// `zoom` and `clicks` are borrowed.
    RecordingSession(const RecorderServices& services, ZoomProcessor& zoom, ClickSuppressor& clicks);
    ~RecordingSession() override;

    // Any thread. See ScreenRecorder.
    void start(StartRequest request);
    void addOverlay(OverlayRequest request);
    void resizeOverlay(int key, Size size);
    void pause();
    void resume();
    void noteMark(RecordingMark mark);
    void stop(StopCompletion completion);
    void setOnStop(OnStop onStop);

private:
    enum class Phase { idle, starting, running, stopping, ended };

    // Control queue.
    void begin();
    Result<std::unique_ptr<CaptureStream>> makeMainStream(const RecordingTimeline::Inputs& inputs);
    void captureStarted(const Result<void>& result);
    void failStart(const Error& error);
    void completeStart(const Result<void>& result);
    void beginStop();
    void mainStreamStopped();
    void overlaysStopped();
    void end(Result<std::filesystem::path> outcome);
    void tellStop(const Error& error);

    // Writer's queue.
    void closeFile();
    void fileClosed();

    void streamDidStop(CaptureStream& stream, const Error& error) override;
    void writerInterrupted(const Error& error);

    RecorderServices services_;
    std::unique_ptr<SerialQueue> control_;
    std::unique_ptr<SerialQueue> queue_;
    std::unique_ptr<SerialQueue> videoQueue_;
    std::unique_ptr<SerialQueue> overlayQueue_;

    RecordingTimeline timeline_; // writer's queue
    SampleRouter router_;

    // control queue
    OverlayStreams overlays_;
    std::unique_ptr<CaptureStream> stream_;
    StartRequest request_; // of the recording that was started; its `fps` holds before as well
    Phase phase_ = Phase::idle;
    SerialQueue::TimerId frameTimer_ = 0;
    SerialQueue::TimerId progressTimer_ = 0;
    OnStop onStop_;
    bool streamEndTold_ = false;
    bool writerEndTold_ = false;
    bool closing_ = false;
    std::vector<StopCompletion> stopCompletions_;
    std::optional<Result<std::filesystem::path>> outcome_;
};

} // namespace velmo::internal
