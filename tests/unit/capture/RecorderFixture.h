#pragma once

#include "capture/ScreenRecorder.h"
#include "support/FakeAssetWriter.h"
#include "support/FakeScreenCapture.h"
#include "support/ManualClock.h"
#include "support/ManualQueues.h"
#include "support/Samples.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::test {

inline const Error kBroken{"SCStreamErrorDomain", kStreamErrorFailedToStart, "no se pudo"};

struct RecorderOptions {
    Size size{1920, 1080};
    int fps = 30;
    bool systemAudio = true;
    std::optional<std::string> microphone = "mic";
};

/// A recorder over fakes, on queues that are run by hand. The clock stands at 100 s.
class RecorderFixture : public testing::Test {
protected:
    void start(const RecorderOptions& options = {}) {
        recorder->start(filter, options.size, options.fps, options.systemAudio, options.microphone, path,
                        [this](Result<void> result) { started.push_back(std::move(result)); });
        queues.runAll();
    }
    void stop() {
        recorder->stop([this](Result<std::filesystem::path> result) { stopped.push_back(std::move(result)); });
    }
    void addOverlay(int key, Size size = {100, 50}) {
        CaptureWindow window;
        window.windowID = static_cast<WindowId>(40 + key);
        window.frame = {0, 0, size.width, size.height};
        recorder->addOverlay(key, window, [this](Result<void> result) { overlays.push_back(std::move(result)); });
        queues.runAll();
    }
    void show(double seconds) {
        clock.set(seconds);
        mainStream().emit(frame(seconds), StreamOutput::screen);
        queues.runAll();
    }
    void hearOnStop() {
        recorder->setOnStop([this](const std::optional<Error>& error) { ends.push_back(error); });
    }
    std::string log() const {
        std::ifstream stream(diagLog.file());
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    FakeStreamState& mainStream() { return capture.stream(0); }
    FakeFile& file() { return writers.file(); }
    ManualQueue& videoQueue() { return queues["velmo.capture.video"]; }

    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "clase.mp4";
    DiagLog diagLog{folder.path() / "app.log"};
    ManualClock clock{100.0};
    FakeScreenCapture capture;
    FakeAssetWriterFactory writers;
    ManualQueues queues;
    ContentFilter filter = ContentFilter::display(1, {77}, {5});
    std::optional<ScreenRecorder> recorder{std::in_place, RecorderServices{.capture = capture,
                                                                           .writers = writers,
                                                                           .clock = clock,
                                                                           .log = diagLog,
                                                                           .makeQueue = queues.maker(),
                                                                           .sleep = [](double) {}}};
    std::vector<Result<void>> started;
    std::vector<Result<void>> overlays;
    std::vector<Result<std::filesystem::path>> stopped;
    std::vector<std::optional<Error>> ends;
};

} // namespace velmo::test
