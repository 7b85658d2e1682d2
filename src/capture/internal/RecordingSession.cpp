#include "capture/internal/RecordingSession.h"

#include "capture/RecorderError.h"

#include <utility>

namespace velmo::internal {

namespace {

constexpr double kProgressInterval = 0.5; // seconds

StreamConfiguration mainConfiguration(Size size, int fps, bool systemAudio, std::optional<std::string> microphoneID) {
    StreamConfiguration configuration;
    configuration.width = static_cast<int>(size.width);
    configuration.height = static_cast<int>(size.height);
    configuration.minimumFrameInterval = {1, fps};
    configuration.queueDepth = 6;
    configuration.pixelFormat = PixelFormat::nv12;
    configuration.showsCursor = true;
    configuration.capturesAudio = systemAudio;
    configuration.excludesCurrentProcessAudio = true;
    configuration.sampleRate = 48000;
    configuration.channelCount = 2;
    configuration.microphoneDeviceID = std::move(microphoneID);
    return configuration;
}

} // namespace

RecordingSession::RecordingSession(const RecorderServices& services, ZoomProcessor& zoom, ClickSuppressor& clicks)
    : services_(services), control_(services.makeQueue("velmo.capture.control")),
      queue_(services.makeQueue("velmo.capture")), videoQueue_(services.makeQueue("velmo.capture.video")),
      overlayQueue_(services.makeQueue("velmo.capture.burbujas")), timeline_(services.clock),
      router_({zoom, clicks, timeline_, services.clock, *queue_, *videoQueue_,
               [this] { writerInterrupted(timeline_.writer()->error().value_or(RecorderError::writer(""))); }}),
      overlays_(services.capture, router_, *overlayQueue_) {}

RecordingSession::~RecordingSession() {
    // First whatever calls from outside: the streams, then the writer. What is left then is on the own queues, where
    // nothing begins anew once `closing_` is set; after the last round they are empty.
    control_->sync([this] {
        closing_ = true;
        videoQueue_->cancelTimer(frameTimer_);
        queue_->cancelTimer(progressTimer_);
        stream_.reset();
        overlays_.clear();
    });
    overlayQueue_->sync([] {});
    videoQueue_->sync([] {});
    queue_->sync([this] { timeline_.dropWriter(); });
    queue_->sync([] {});
    control_->sync([] {});
}

void RecordingSession::start(StartRequest request) {
    // Boxed, since it is more than a queue carries in itself.
    control_->async([this, boxed = std::make_unique<StartRequest>(std::move(request))] {
        if (phase_ != Phase::idle) {
            boxed->completion(RecorderError::noFrames());
            return;
        }
        request_ = std::move(*boxed);
        begin();
    });
}

void RecordingSession::begin() {
    phase_ = Phase::starting;
    auto setup = setUpWriter(
        services_.writers,
        {request_.path, request_.size, request_.fps, request_.systemAudio, request_.microphoneID.has_value()},
        [this](const Error& error) { writerInterrupted(error); });
    if (!setup) {
        failStart(setup.error());
        return;
    }
    const RecordingTimeline::Inputs inputs = setup.value().inputs;
    queue_->async([this, inputs, writer = std::move(setup.value().writer)]() mutable {
        timeline_.arm(std::move(writer), inputs);
    });
    auto stream = makeMainStream(inputs);
    if (!stream) {
        failStart(stream.error());
        return;
    }
    stream_ = std::move(stream).value();
    stream_->start([this](Result<void> result) {
        control_->async([this, result = std::move(result)] { captureStarted(result); });
    });
}

Result<std::unique_ptr<CaptureStream>> RecordingSession::makeMainStream(const RecordingTimeline::Inputs& inputs) {
    auto made = services_.capture.makeStream(
        request_.filter, mainConfiguration(request_.size, request_.fps, request_.systemAudio, request_.microphoneID),
        this);
    if (!made) {
        return made;
    }
    struct Output {
        bool wanted;
        StreamOutput type;
        SerialQueue* queue;
    };
    const Output outputs[] = {
        {true, StreamOutput::screen, videoQueue_.get()},
        {inputs.system != nullptr, StreamOutput::audio, queue_.get()},
        {inputs.microphone != nullptr, StreamOutput::microphone, queue_.get()},
    };
    for (const Output& output : outputs) {
        if (!output.wanted) {
            continue;
        }
        if (auto added = made.value()->addOutput(router_, output.type, *output.queue); !added) {
            return added.error();
        }
    }
    return made;
}

void RecordingSession::captureStarted(const Result<void>& result) {
    if (closing_) {
        return;
    }
    if (!result) {
        stream_.reset();
        failStart(result.error());
        return;
    }
    const MediaTime frameDuration{1, request_.fps};
    videoQueue_->async([this, frameDuration] { router_.setFrameDuration(frameDuration); });
    frameTimer_ = videoQueue_->startTimer(1.0 / request_.fps, [this] { router_.tick(); });
    progressTimer_ = queue_->startTimer(kProgressInterval, [this] { timeline_.noteProgress(); });
    phase_ = Phase::running;
    completeStart({});
    if (!stopCompletions_.empty()) {
        beginStop();
    }
}

void RecordingSession::failStart(const Error& error) {
    queue_->async([this, error = error] {
        timeline_.abandon();
        timeline_.dropWriter();
        control_->async([this, error = error] {
            completeStart(error);
            end(error);
        });
    });
}

void RecordingSession::completeStart(const Result<void>& result) {
    if (const Completion completion = std::exchange(request_.completion, nullptr); completion && !closing_) {
        completion(result);
    }
}

void RecordingSession::addOverlay(OverlayRequest request) {
    control_->async([this, request = std::move(request)]() mutable {
        if (phase_ != Phase::running) {
            request.completion(RecorderError::noFrames());
            return;
        }
        overlays_.add(request.key, request.window, request.size, request_.fps,
                      [this, completion = std::move(request.completion)](Result<void> result) {
                          control_->async([this, completion, result = std::move(result)] {
                              if (!closing_) {
                                  completion(result);
                              }
                          });
                      });
    });
}

void RecordingSession::resizeOverlay(int key, Size size) {
    control_->async([this, key, size] { overlays_.resize(key, size, request_.fps); });
}

void RecordingSession::pause() {
    queue_->async([this] { timeline_.pause(); });
}

void RecordingSession::resume() {
    queue_->async([this] { timeline_.resume(); });
}

void RecordingSession::noteMark(RecordingMark mark) {
    queue_->async([this, mark = std::move(mark)] { timeline_.noteMark(mark); });
}

void RecordingSession::stop(StopCompletion completion) {
    control_->async([this, completion = std::move(completion)]() mutable {
        stopCompletions_.push_back(std::move(completion));
        if (phase_ == Phase::ended) {
            end(*outcome_);
        } else if (phase_ == Phase::idle || phase_ == Phase::running) {
            beginStop();
        }
        // While starting or stopping, what is under way sees to it.
    });
}

void RecordingSession::beginStop() {
    phase_ = Phase::stopping;
    if (!stream_) {
        mainStreamStopped();
        return;
    }
    stream_->stop([this](const Result<void>&) { control_->async([this] { mainStreamStopped(); }); });
}

void RecordingSession::mainStreamStopped() {
    if (closing_) {
        return;
    }
    stream_.reset();
    overlays_.stop([this] { control_->async([this] { overlaysStopped(); }); });
}

void RecordingSession::overlaysStopped() {
    if (closing_) {
        return;
    }
    overlays_.clear();
    // Through the video queue, so that the frame in hand there is written first.
    videoQueue_->async([this] { queue_->async([this] { closeFile(); }); });
}

void RecordingSession::closeFile() {
    videoQueue_->cancelTimer(frameTimer_);
    queue_->cancelTimer(progressTimer_);
    if (const auto finished = timeline_.finish(services_.sleep); !finished) {
        timeline_.dropWriter();
        control_->async([this, error = finished.error()] { end(error); });
        return;
    }
    services_.log.append(timeline_.summary());
    timeline_.writer()->finishWriting([this] { queue_->async([this] { fileClosed(); }); });
}

void RecordingSession::fileClosed() {
    const AssetWriter* writer = timeline_.writer();
    if (writer == nullptr) {
        return; // the recorder is going away
    }
    Result<std::filesystem::path> outcome = writer->outputPath();
    if (writer->status() != WriterStatus::completed) {
        outcome = writer->error().value_or(RecorderError::writer(""));
    }
    timeline_.dropWriter();
    control_->async([this, outcome = std::move(outcome)]() mutable { end(std::move(outcome)); });
}

void RecordingSession::end(Result<std::filesystem::path> outcome) {
    phase_ = Phase::ended;
    outcome_ = std::move(outcome);
    const auto completions = std::exchange(stopCompletions_, {});
    if (closing_) {
        return;
    }
    for (const StopCompletion& completion : completions) {
        completion(*outcome_);
    }
}

void RecordingSession::setOnStop(OnStop onStop) {
    control_->async([this, onStop = std::move(onStop)]() mutable { onStop_ = std::move(onStop); });
}

void RecordingSession::streamDidStop(CaptureStream&, const Error& error) {
    control_->async([this, error = error] {
        if (!std::exchange(streamEndTold_, true)) {
            tellStop(error);
        }
    });
}

void RecordingSession::writerInterrupted(const Error& error) {
    control_->async([this, error = error] {
        if (!std::exchange(writerEndTold_, true)) {
            tellStop(error);
        }
    });
}

void RecordingSession::tellStop(const Error& error) {
    const bool isStillOn = phase_ == Phase::starting || phase_ == Phase::running;
    if (onStop_ && isStillOn && !closing_) {
        onStop_(error);
    }
}

} // namespace velmo::internal
