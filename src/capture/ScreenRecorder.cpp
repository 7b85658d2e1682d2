#include "capture/ScreenRecorder.h"

#include "capture/internal/RecordingSession.h"

namespace velmo {

ScreenRecorder::ScreenRecorder(const RecorderServices& services)
    : zoom_(std::make_shared<ZoomProcessor>(services.clock)),
      session_(std::make_unique<internal::RecordingSession>(services, *zoom_, *clicks_)) {}

ScreenRecorder::~ScreenRecorder() = default;

void ScreenRecorder::start(const ContentFilter& filter, Size size, int fps, bool systemAudio,
                           std::optional<std::string> microphoneID, std::filesystem::path path, Completion completion) {
    session_->start({filter, size, fps, systemAudio, std::move(microphoneID), std::move(path), std::move(completion)});
}

void ScreenRecorder::addOverlay(int key, const CaptureWindow& window, Completion completion) {
    session_->addOverlay({key, window.windowID, window.frame.size(), std::move(completion)});
}

void ScreenRecorder::resizeOverlay(int key, Size size) {
    session_->resizeOverlay(key, size);
}

void ScreenRecorder::pause() {
    // The frame timer must know at once; the timeline learns it in its turn.
    zoom_->setPaused(true);
    session_->pause();
}

void ScreenRecorder::resume() {
    zoom_->setPaused(false);
    session_->resume();
}

void ScreenRecorder::noteMark(RecordingMark mark) {
    session_->noteMark(std::move(mark));
}

void ScreenRecorder::stop(StopCompletion completion) {
    session_->stop(std::move(completion));
}

void ScreenRecorder::setOnStop(OnStop onStop) {
    session_->setOnStop(std::move(onStop));
}

} // namespace velmo
