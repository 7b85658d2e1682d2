#pragma once

#include "platform/ScreenCapture.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

namespace velmo::test {

/// One fake stream. Outlives it, so that a test can look at it afterwards.
///
/// `emit` from any thread while the stream is alive; the rest is the test's to set before and to read after.
struct FakeStreamState {
    struct Output {
        StreamOutputHandler* handler;
        StreamOutput type;
        SerialQueue* queue;
    };

    ContentFilter filter;
    StreamConfiguration configuration;
    StreamDelegate* delegate = nullptr;
    std::vector<Output> outputs;
    std::vector<StreamConfiguration> updates;
    std::atomic<bool> running = false;
    bool alive = true;
    int stops = 0;
    CaptureStream* stream = nullptr;
    CaptureStream::Completion heldStart; ///< of a stream that was told to take its time

    std::vector<StreamOutput> outputTypes() const {
        std::vector<StreamOutput> types;
        for (const Output& output : outputs) {
            types.push_back(output.type);
        }
        return types;
    }

    /// Hands a sample to the outputs of that type, each on its queue.
    void emit(const Sample& sample, StreamOutput type) {
        for (const Output& output : outputs) {
            if (output.type == type) {
                output.queue->async([this, handler = output.handler, sample = sample, type] {
                    if (running) {
                        handler->streamDidOutput(*stream, sample, type);
                    }
                });
            }
        }
    }
    void die(const Error& error) {
        running = false;
        delegate->streamDidStop(*stream, error);
    }
};

/// Keeps the contract of streams on whatever queues it is given; what it should refuse is scripted.
class FakeScreenCapture final : public ScreenCaptureService {
public:
    // The script, read by each stream as it is made or asked.
    std::optional<Error> makeError;
    std::optional<Error> addOutputError;
    StreamOutput refusedOutput = StreamOutput::screen; ///< of `addOutputError`
    std::optional<Error> startError;
    std::optional<Error> stopError;
    std::function<void(FakeStreamState&)> whileStarting; ///< called inside `start`, before its completion
    bool holdsStart = false;                             ///< `start` completes when the test calls `heldStart`
    double scale = 1;
    ShareableContent content;
    /// Answers for single pictures, called inside `captureImage`; without it there are none.
    std::function<Result<FrameRef>(const ContentFilter&, const StreamConfiguration&)> image;
    std::optional<Error> contentError;

    std::vector<std::shared_ptr<FakeStreamState>> streams; ///< in the order in which they were made

    FakeStreamState& stream(std::size_t index) { return *streams.at(index); }

    void queryShareableContent(ContentCompletion completion) override {
        completion(contentError ? Result<ShareableContent>(*contentError) : Result<ShareableContent>(content));
    }
    double pointPixelScale(const ContentFilter&) const override { return scale; }
    Result<std::unique_ptr<CaptureStream>> makeStream(const ContentFilter& filter,
                                                      const StreamConfiguration& configuration,
                                                      StreamDelegate* delegate) override;
    void captureImage(const ContentFilter& filter, const StreamConfiguration& configuration,
                      ImageCompletion completion) override {
        completion(image ? image(filter, configuration) : Result<FrameRef>(Error{}));
    }
    bool preflightAccess() const override { return true; }
    bool requestAccess() override { return true; }
};

class FakeCaptureStream final : public CaptureStream {
public:
    FakeCaptureStream(FakeScreenCapture& script, std::shared_ptr<FakeStreamState> state)
        : script_(script), state_(std::move(state)) {
        state_->stream = this;
    }
    ~FakeCaptureStream() override {
        state_->running = false;
        for (const auto& output : state_->outputs) {
            output.queue->sync([] {});
        }
        state_->heldStart = nullptr;
        state_->alive = false;
    }

    Result<void> addOutput(StreamOutputHandler& handler, StreamOutput type, SerialQueue& queue) override {
        if (script_.addOutputError && script_.refusedOutput == type) {
            return *script_.addOutputError;
        }
        state_->outputs.push_back({&handler, type, &queue});
        return {};
    }
    void start(Completion completion) override {
        if (script_.holdsStart) {
            state_->heldStart = [state = state_.get(), completion](Result<void> result) {
                state->running = result.ok();
                completion(std::move(result));
            };
        } else {
            state_->running = !script_.startError;
            if (script_.whileStarting) {
                script_.whileStarting(*state_);
            }
            completion(script_.startError ? Result<void>(*script_.startError) : Result<void>());
        }
    }
    void stop(Completion completion) override {
        state_->running = false;
        ++state_->stops;
        passThroughOutputs(0, std::move(completion));
    }
    void updateConfiguration(const StreamConfiguration& configuration, Completion completion) override {
        state_->updates.push_back(configuration);
        completion({});
    }

private:
    /// Behind everything that was handed to the queues before.
    void passThroughOutputs(std::size_t index, Completion completion) {
        if (index == state_->outputs.size()) {
            completion(script_.stopError ? Result<void>(*script_.stopError) : Result<void>());
            return;
        }
        state_->outputs[index].queue->async([this, index, completion = std::move(completion)]() mutable {
            passThroughOutputs(index + 1, std::move(completion));
        });
    }

    FakeScreenCapture& script_;
    std::shared_ptr<FakeStreamState> state_;
};

inline Result<std::unique_ptr<CaptureStream>> FakeScreenCapture::makeStream(const ContentFilter& filter,
                                                                            const StreamConfiguration& configuration,
                                                                            StreamDelegate* delegate) {
    if (makeError) {
        return *makeError;
    }
    auto state = std::make_shared<FakeStreamState>();
    state->filter = filter;
    state->configuration = configuration;
    state->delegate = delegate;
    streams.push_back(state);
    return std::unique_ptr<CaptureStream>(std::make_unique<FakeCaptureStream>(*this, state));
}

} // namespace velmo::test
