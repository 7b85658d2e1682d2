#include "capture/internal/OverlayStreams.h"

#include <algorithm>
#include <atomic>

namespace velmo::internal {

namespace {

constexpr int kQueueDepth = 3;
constexpr int kSmallestSide = 2; // pixels

StreamConfiguration overlayConfig(Size size, double scale, int fps) {
    StreamConfiguration configuration;
    configuration.width = std::max(static_cast<int>(size.width * scale), kSmallestSide);
    configuration.height = std::max(static_cast<int>(size.height * scale), kSmallestSide);
    configuration.minimumFrameInterval = {1, fps};
    configuration.pixelFormat = PixelFormat::bgra;
    configuration.queueDepth = kQueueDepth;
    configuration.showsCursor = false;
    configuration.capturesAudio = false;
    return configuration;
}

} // namespace

OverlayStreams::OverlayStreams(ScreenCaptureService& capture, SampleRouter& router, SerialQueue& queue)
    : capture_(capture), router_(router), queue_(queue) {}

void OverlayStreams::add(int key, WindowId window, Size size, int fps, Completion completion) {
    const ContentFilter filter = ContentFilter::window(window);
    const double scale = capture_.pointPixelScale(filter);
    auto made = capture_.makeStream(filter, overlayConfig(size, scale, fps), nullptr);
    if (!made) {
        completion(made.error());
        return;
    }
    std::unique_ptr<CaptureStream> stream = std::move(made).value();
    if (auto added = stream->addOutput(router_, StreamOutput::screen, queue_); !added) {
        completion(added.error());
        return;
    }
    // Known before it starts: a picture of an unknown stream would be taken for the screen.
    router_.addOverlay(*stream, key, scale);
    CaptureStream& running = *stream;
    streams_.insert_or_assign(key, std::move(stream));
    running.start(std::move(completion));
}

void OverlayStreams::resize(int key, Size size, int fps) {
    const auto found = streams_.find(key);
    const auto scale = router_.overlayScale(key);
    if (found != streams_.end() && scale) {
        found->second->updateConfiguration(overlayConfig(size, *scale, fps), [](const Result<void>&) {});
    }
}

void OverlayStreams::stop(std::function<void()> stopped) {
    if (streams_.empty()) {
        stopped();
        return;
    }
    struct Wait {
        Wait(std::size_t count, std::function<void()> then) : left(count), done(std::move(then)) {}
        std::atomic<std::size_t> left;
        std::function<void()> done;
    };
    const auto wait = std::make_shared<Wait>(streams_.size(), std::move(stopped));
    for (auto& [key, stream] : streams_) {
        stream->stop([wait](const Result<void>&) {
            if (wait->left.fetch_sub(1) == 1) {
                wait->done();
            }
        });
    }
}

} // namespace velmo::internal
