#include "capture/ScreenRecorder.h"

#include "capture/RecorderError.h"
#include "support/FakeAssetWriter.h"
#include "support/FakeScreenCapture.h"
#include "support/ManualClock.h"
#include "support/ManualQueues.h"
#include "support/Samples.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo {
namespace {

using test::at;
using test::frame;
using test::sound;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Error kBroken{"SCStreamErrorDomain", kStreamErrorFailedToStart, "no se pudo"};

struct Options {
    Size size{1920, 1080};
    int fps = 30;
    bool systemAudio = true;
    std::optional<std::string> microphone = "mic";
};

class ScreenRecorderTest : public testing::Test {
protected:
    void start(const Options& options = {}) {
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

    test::FakeStreamState& mainStream() { return capture.stream(0); }
    test::FakeFile& file() { return writers.file(); }
    test::ManualQueue& videoQueue() { return queues["velmo.capture.video"]; }

    test::TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "clase.mp4";
    DiagLog diagLog{folder.path() / "app.log"};
    test::ManualClock clock{100.0};
    test::FakeScreenCapture capture;
    test::FakeAssetWriterFactory writers;
    test::ManualQueues queues;
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

TEST_F(ScreenRecorderTest, LivesOnFourQueues) {
    EXPECT_EQ(queues.count(), 4u);
    for (const char* label :
         {"velmo.capture", "velmo.capture.video", "velmo.capture.burbujas", "velmo.capture.control"}) {
        EXPECT_TRUE(queues.has(label)) << label;
    }
}

TEST_F(ScreenRecorderTest, NoOperationDoesAnythingOnTheCallersThread) {
    recorder->start(filter, {640, 480}, 30, true, {}, path,
                    [this](Result<void> result) { started.push_back(std::move(result)); });
    EXPECT_THAT(writers.files, IsEmpty());
    EXPECT_THAT(capture.streams, IsEmpty());
    queues.runAll();
    stop();
    recorder->resizeOverlay(0, {1, 1});
    EXPECT_EQ(mainStream().stops, 0);
    EXPECT_THAT(stopped, IsEmpty());
}

TEST_F(ScreenRecorderTest, ConfiguresTheMainStream) {
    start({.size = {1920.9, 1080.9}, .fps = 60});

    ASSERT_THAT(started, SizeIs(1));
    EXPECT_TRUE(started[0].ok());
    EXPECT_EQ(mainStream().filter, filter);
    StreamConfiguration expected;
    expected.width = 1920;
    expected.height = 1080;
    expected.minimumFrameInterval = MediaTime(1, 60);
    expected.queueDepth = 6;
    expected.pixelFormat = PixelFormat::nv12;
    expected.showsCursor = true;
    expected.capturesAudio = true;
    expected.excludesCurrentProcessAudio = true;
    expected.sampleRate = 48000;
    expected.channelCount = 2;
    expected.microphoneDeviceID = "mic";
    EXPECT_EQ(mainStream().configuration, expected);
    EXPECT_THAT(mainStream().outputTypes(),
                ElementsAre(StreamOutput::screen, StreamOutput::audio, StreamOutput::microphone));
    EXPECT_EQ(mainStream().outputs[0].queue->label(), "velmo.capture.video");
    EXPECT_EQ(mainStream().outputs[1].queue->label(), "velmo.capture");
    EXPECT_EQ(mainStream().outputs[2].queue->label(), "velmo.capture");
    EXPECT_NE(mainStream().delegate, nullptr);
    ASSERT_EQ(videoQueue().timerCount(), 1u);
    EXPECT_DOUBLE_EQ(videoQueue().timerInterval(), 1.0 / 60);
}

TEST_F(ScreenRecorderTest, ConfiguresTheWriter) {
    start();
    EXPECT_EQ(file().path, path);
    EXPECT_EQ(file().video.width, 1920);
    EXPECT_EQ(file().video.height, 1080);
    EXPECT_EQ(file().video.averageBitRate, 9331200); // 1920 * 1080 * 30 * 0.15
    EXPECT_EQ(file().video.expectedSourceFrameRate, 30);
    EXPECT_EQ(file().video.maxKeyFrameInterval, 60);
    ASSERT_THAT(file().audio, SizeIs(2));
    EXPECT_EQ(file().audio[0].sampleRate, 48000);
    EXPECT_EQ(file().audio[0].channels, 2);
    EXPECT_EQ(file().audio[0].bitRate, 160000);
    EXPECT_THAT(file().sessions, IsEmpty()) << "the session begins with the first frame";
}

TEST_F(ScreenRecorderTest, AsksForAtLeastSixMillionBits) {
    start({.size = {640, 480}});
    EXPECT_EQ(file().video.averageBitRate, 6000000);
}

TEST_F(ScreenRecorderTest, ReplacesAFileAtThePath) {
    std::ofstream(path) << "old";
    start();
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ScreenRecorderTest, WithoutSoundThereIsOneTrackAndOneOutput) {
    start({.systemAudio = false, .microphone = std::nullopt});
    EXPECT_THAT(file().audio, IsEmpty());
    EXPECT_THAT(mainStream().outputTypes(), ElementsAre(StreamOutput::screen));
    EXPECT_FALSE(mainStream().configuration.capturesAudio);
    EXPECT_EQ(mainStream().configuration.microphoneDeviceID, std::nullopt);
}

TEST_F(ScreenRecorderTest, ASoundTrackThatTheWriterRefusesSimplyDoesNotExist) {
    writers.refusesAudio = true;
    start();
    EXPECT_TRUE(started[0].ok());
    EXPECT_THAT(mainStream().outputTypes(), ElementsAre(StreamOutput::screen));
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderTest, APictureThatTheWriterRefusesIsAnError) {
    writers.refusesVideo = true;
    start();
    ASSERT_THAT(started, SizeIs(1));
    EXPECT_EQ(started[0].error(), RecorderError::writer("Formato de video no admitido."));
    EXPECT_THAT(capture.streams, IsEmpty());
    EXPECT_FALSE(file().writerIsAlive);
}

TEST_F(ScreenRecorderTest, AWriterThatCannotStartSaysWhy) {
    writers.startError = Error{"posix", 13, "Permiso denegado"};
    start();
    EXPECT_EQ(started[0].error(), RecorderError::writer("Permiso denegado"));
    EXPECT_TRUE(file().cancelled);
    EXPECT_THAT(capture.streams, IsEmpty());
}

TEST_F(ScreenRecorderTest, AWriterThatCannotBeMadeGivesItsErrorAsItIs) {
    writers.makeError = kBroken;
    start();
    EXPECT_EQ(started[0].error(), kBroken);
}

TEST_F(ScreenRecorderTest, AStreamThatCannotBeMadeLeavesNoFile) {
    capture.makeError = kBroken;
    start();
    EXPECT_EQ(started[0].error(), kBroken);
    EXPECT_TRUE(file().cancelled);
    EXPECT_FALSE(file().writerIsAlive);
}

TEST_F(ScreenRecorderTest, AnOutputThatIsRefusedEndsTheStart) {
    capture.addOutputError = kBroken;
    capture.refusedOutput = StreamOutput::audio;
    start();
    EXPECT_EQ(started[0].error(), kBroken);
    EXPECT_THAT(mainStream().outputTypes(), ElementsAre(StreamOutput::screen));
    EXPECT_FALSE(mainStream().alive);
    EXPECT_TRUE(file().cancelled);
}

TEST_F(ScreenRecorderTest, ACaptureThatDoesNotStartGivesItsErrorAndLeavesNoFile) {
    capture.startError = kBroken;
    start();
    ASSERT_THAT(started, SizeIs(1));
    EXPECT_EQ(started[0].error(), kBroken);
    EXPECT_FALSE(mainStream().alive);
    EXPECT_TRUE(file().cancelled);
    EXPECT_EQ(videoQueue().timerCount(), 0u);
}

TEST_F(ScreenRecorderTest, ASecondStartIsRefused) {
    start();
    start();
    ASSERT_THAT(started, SizeIs(2));
    EXPECT_TRUE(started[0].ok());
    EXPECT_FALSE(started[1].ok());
    EXPECT_THAT(capture.streams, SizeIs(1));
}

TEST_F(ScreenRecorderTest, AnOverlayIsAStreamOfItsWindowAlone) {
    capture.scale = 2;
    start({.fps = 60});
    addOverlay(1, {100.6, 50.2});

    ASSERT_THAT(overlays, SizeIs(1));
    EXPECT_TRUE(overlays[0].ok());
    const test::FakeStreamState& overlay = capture.stream(1);
    EXPECT_EQ(overlay.filter.asWindow(), 41u);
    EXPECT_EQ(overlay.delegate, nullptr);
    EXPECT_EQ(overlay.configuration.width, 201);
    EXPECT_EQ(overlay.configuration.height, 100);
    EXPECT_EQ(overlay.configuration.minimumFrameInterval, MediaTime(1, 60));
    EXPECT_EQ(overlay.configuration.pixelFormat, PixelFormat::bgra);
    EXPECT_EQ(overlay.configuration.queueDepth, 3);
    EXPECT_FALSE(overlay.configuration.showsCursor);
    EXPECT_FALSE(overlay.configuration.capturesAudio);
    EXPECT_THAT(overlay.outputTypes(), ElementsAre(StreamOutput::screen));
    EXPECT_EQ(overlay.outputs[0].queue->label(), "velmo.capture.burbujas");
}

TEST_F(ScreenRecorderTest, AnOverlayIsAtLeastTwoPixelsWideAndHigh) {
    start();
    addOverlay(0, {0.4, 0});
    EXPECT_EQ(capture.stream(1).configuration.width, 2);
    EXPECT_EQ(capture.stream(1).configuration.height, 2);
}

TEST_F(ScreenRecorderTest, OverlayPicturesDoNotReachTheFile) {
    start();
    addOverlay(2);
    capture.stream(1).emit(frame(100.0), StreamOutput::screen);
    queues.runAll();
    EXPECT_THAT(file().videoTrack.samples, IsEmpty());
    EXPECT_EQ(recorder->zoom().motion().lastStep(), std::nullopt);
}

TEST_F(ScreenRecorderTest, AnOverlayIsKnownBeforeItStarts) {
    start();
    capture.whileStarting = [this](test::FakeStreamState& overlay) {
        overlay.emit(frame(100.0), StreamOutput::screen);
        queues["velmo.capture.burbujas"].run();
    };
    addOverlay(0);
    queues.runAll();
    EXPECT_TRUE(overlays.at(0).ok());
    EXPECT_THAT(file().videoTrack.samples, IsEmpty());
}

TEST_F(ScreenRecorderTest, AnOverlayThatFailsConcernsItselfOnly) {
    start();
    capture.makeError = kBroken;
    addOverlay(0);
    capture.makeError = std::nullopt;
    capture.addOutputError = kBroken;
    addOverlay(1);
    capture.addOutputError = std::nullopt;
    capture.startError = kBroken;
    addOverlay(2);

    ASSERT_THAT(overlays, SizeIs(3));
    for (const auto& result : overlays) {
        EXPECT_EQ(result.error(), kBroken);
    }
    show(100.0);
    EXPECT_THAT(file().videoTrack.samples, SizeIs(1));
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderTest, AnOverlayIsRefusedWhenNothingIsRecorded) {
    addOverlay(0);
    start();
    stop();
    queues.runAll();
    addOverlay(0);
    ASSERT_THAT(overlays, SizeIs(2));
    EXPECT_FALSE(overlays[0].ok());
    EXPECT_FALSE(overlays[1].ok());
    EXPECT_THAT(capture.streams, SizeIs(1));
}

TEST_F(ScreenRecorderTest, ResizingAnOverlayKeepsTheScaleOfItsStart) {
    capture.scale = 2;
    start();
    addOverlay(1);
    capture.scale = 1;
    recorder->resizeOverlay(1, {300.5, 200});
    queues.runAll();

    ASSERT_THAT(capture.stream(1).updates, SizeIs(1));
    StreamConfiguration expected = capture.stream(1).configuration;
    expected.width = 601;
    expected.height = 400;
    EXPECT_EQ(capture.stream(1).updates[0], expected);
}

TEST_F(ScreenRecorderTest, ResizingAnUnknownOverlayDoesNothing) {
    start();
    addOverlay(1);
    recorder->resizeOverlay(0, {300, 200});
    queues.runAll();
    EXPECT_THAT(capture.stream(1).updates, IsEmpty());
    EXPECT_THAT(mainStream().updates, IsEmpty());
}

TEST_F(ScreenRecorderTest, RecordsPicturesAndBothSounds) {
    start();
    show(100.0);
    mainStream().emit(sound(100.1), StreamOutput::audio);
    mainStream().emit(sound(100.2), StreamOutput::microphone);
    show(100.5);
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.5));
    EXPECT_THAT(file().audioTracks[0].times(), ElementsAre(0.1));
    EXPECT_THAT(file().audioTracks[1].times(), ElementsAre(0.2));
}

TEST_F(ScreenRecorderTest, TheFrameTimerKeepsAnAnimationAliveOverAStillScreen) {
    start();
    show(100.0);
    recorder->zoom().setColumn(true, true);
    clock.set(100.05);
    videoQueue().fireTimers();
    queues.runAll();
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.05));
}

TEST_F(ScreenRecorderTest, APauseReachesTheCompositorAtOnceAndTheFileInItsTurn) {
    start();
    show(100.0);
    mainStream().emit(frame(100.5), StreamOutput::screen);
    videoQueue().run(); // its frame is on the way to the file
    clock.set(101.0);
    recorder->pause();
    EXPECT_TRUE(recorder->zoom().isPaused());
    queues.runAll();
    clock.set(105.0);
    recorder->resume();
    EXPECT_FALSE(recorder->zoom().isPaused());
    queues.runAll();
    show(105.02);
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.5, 1.02));
}

TEST_F(ScreenRecorderTest, StoppingGivesTheFinishedFile) {
    start();
    show(100.0);
    clock.set(107.0);
    stop();
    EXPECT_THAT(stopped, IsEmpty());
    queues.runAll();

    ASSERT_THAT(stopped, SizeIs(1));
    ASSERT_TRUE(stopped[0].ok());
    EXPECT_EQ(stopped[0].value(), path);
    EXPECT_EQ(file().status, WriterStatus::completed);
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 7.0));
    EXPECT_FALSE(mainStream().alive);
    EXPECT_FALSE(file().writerIsAlive);
    EXPECT_EQ(videoQueue().timerCount(), 0u);
}

TEST_F(ScreenRecorderTest, StoppingWritesTheCountersToTheLog) {
    start();
    show(100.0);
    file().videoTrack.ready = false;
    show(100.1);
    stop();
    queues.runAll();
    EXPECT_THAT(log(),
                testing::EndsWith("Z grabación: audio en fila 0 veces · audio perdido 0 · cuadros saltados 1\n"));
}

TEST_F(ScreenRecorderTest, StoppingWritesTheFrameInHandFirst) {
    start();
    show(100.0);
    clock.set(100.5);
    mainStream().emit(frame(100.5), StreamOutput::screen);
    videoQueue().run();
    clock.set(100.6);
    stop();
    queues.runAll();
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.5, 0.6));
}

TEST_F(ScreenRecorderTest, AFrameOfTheTimerThatIsInHandAtTheStopIsWritten) {
    start();
    show(100.0);
    recorder->zoom().setColumn(true, true);
    stop();
    for (const char* label :
         {"velmo.capture.control", "velmo.capture.video", "velmo.capture", "velmo.capture.control"}) {
        queues[label].run();
    }
    EXPECT_FALSE(mainStream().alive) << "the streams have ended, the file has not";
    clock.set(100.05);
    videoQueue().fireTimers();
    queues.runAll();

    ASSERT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.05));
    EXPECT_EQ(file().videoTrack.samples[1].timing.duration, MediaTime(1, 30)) << "it is no extension";
}

TEST_F(ScreenRecorderTest, StoppingStopsTheMainStreamBeforeTheOverlays) {
    start();
    addOverlay(0);
    addOverlay(2);
    show(100.0);
    stop();
    queues["velmo.capture.control"].run();
    EXPECT_EQ(mainStream().stops, 1);
    EXPECT_EQ(capture.stream(1).stops, 0);
    queues.runAll();
    EXPECT_EQ(capture.stream(1).stops, 1);
    EXPECT_EQ(capture.stream(2).stops, 1);
    EXPECT_FALSE(capture.stream(1).alive);
    EXPECT_FALSE(capture.stream(2).alive);
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderTest, StreamsThatCannotStopDoNotMatter) {
    capture.stopError = kBroken;
    start();
    addOverlay(0);
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderTest, StoppingBeforeAnyFrameLeavesNoFile) {
    start();
    stop();
    queues.runAll();
    ASSERT_THAT(stopped, SizeIs(1));
    EXPECT_EQ(stopped[0].error(), RecorderError::noFrames());
    EXPECT_TRUE(file().cancelled);
    EXPECT_EQ(log(), "");
}

TEST_F(ScreenRecorderTest, StoppingWithoutAStartSaysThatThereIsNoPicture) {
    stop();
    queues.runAll();
    EXPECT_EQ(stopped[0].error(), RecorderError::noFrames());
}

TEST_F(ScreenRecorderTest, StoppingTwiceGivesTheSameAnswer) {
    start();
    show(100.0);
    stop();
    stop();
    queues.runAll();
    stop();
    queues.runAll();
    ASSERT_THAT(stopped, SizeIs(3));
    for (const auto& each : stopped) {
        ASSERT_TRUE(each.ok());
        EXPECT_EQ(each.value(), path);
    }
    EXPECT_EQ(mainStream().stops, 1);
}

TEST_F(ScreenRecorderTest, AStopDuringTheStartComesAfterIt) {
    capture.holdsStart = true;
    start();
    stop();
    queues.runAll();
    EXPECT_THAT(started, IsEmpty());
    EXPECT_THAT(stopped, IsEmpty());
    mainStream().heldStart({});
    queues.runAll();
    EXPECT_TRUE(started.at(0).ok());
    EXPECT_EQ(stopped.at(0).error(), RecorderError::noFrames());
}

TEST_F(ScreenRecorderTest, AStopDuringAStartThatFailsIsAnsweredToo) {
    capture.holdsStart = true;
    start();
    stop();
    queues.runAll();
    mainStream().heldStart(kBroken);
    queues.runAll();
    EXPECT_EQ(started.at(0).error(), kBroken);
    EXPECT_EQ(stopped.at(0).error(), kBroken);
}

TEST_F(ScreenRecorderTest, AFileThatCannotBeFinishedGivesTheWritersError) {
    writers.finishError = Error{"posix", 28, "No queda espacio"};
    start();
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_EQ(stopped[0].error(), *writers.finishError);
}

TEST_F(ScreenRecorderTest, AFileThatFailsWithoutAReasonIsAWriterError) {
    writers.holdsFinish = true;
    start();
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_THAT(stopped, IsEmpty());
    file().heldFinish();
    file().status = WriterStatus::failed;
    queues.runAll();
    EXPECT_EQ(stopped.at(0).error(), RecorderError::writer(""));
}

TEST_F(ScreenRecorderTest, AStreamThatEndsIsToldAndWhatItGaveIsKept) {
    hearOnStop();
    start();
    show(100.0);
    const Error gone{kStreamErrorDomain, kStreamErrorSourceGone, "la pantalla se fue"};
    mainStream().die(gone);
    queues.runAll();
    EXPECT_THAT(ends, ElementsAre(gone));
    clock.set(101.0);
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 1.0));
}

TEST_F(ScreenRecorderTest, AWriterThatCanTakeNoMoreIsToldAndItsFileIsKept) {
    hearOnStop();
    start();
    show(100.0);
    show(100.5);
    const Error full{"posix", 28, "No queda espacio"};
    file().videoTrack.ready = false;
    file().interrupted(full);
    queues.runAll();
    EXPECT_THAT(ends, ElementsAre(full));
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
    EXPECT_FALSE(file().cancelled);
    EXPECT_THAT(file().videoTrack.times(), ElementsAre(0.0, 0.5));
}

TEST_F(ScreenRecorderTest, AWriterThatFailsIsToldOnceAndTheStopGivesItsError) {
    hearOnStop();
    start();
    show(100.0);
    file().error = Error{"x264", 1, "se rompió"};
    file().status = WriterStatus::failed;
    show(100.1);
    show(100.2);
    EXPECT_THAT(ends, ElementsAre(file().error));
    file().interrupted(*file().error);
    queues.runAll();
    EXPECT_THAT(ends, SizeIs(1));
    stop();
    queues.runAll();
    EXPECT_EQ(stopped[0].error(), file().error);
}

TEST_F(ScreenRecorderTest, NobodyIsToldOfAnEndThatWasAskedFor) {
    hearOnStop();
    start();
    show(100.0);
    mainStream().die(kBroken);
    stop();
    queues["velmo.capture.control"].run();
    const auto heard = ends.size();
    file().interrupted(kBroken);
    queues.runAll();
    EXPECT_EQ(ends.size(), heard);
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderTest, WithoutSomeoneToTellAnEndingStreamIsSilent) {
    start();
    show(100.0);
    mainStream().die(kBroken);
    queues.runAll();
    EXPECT_TRUE(recorder.has_value());
}

TEST_F(ScreenRecorderTest, DestroyedWhileRecordingItEndsTheStreamsAndLeavesTheFile) {
    start();
    addOverlay(0);
    show(100.0);
    mainStream().emit(frame(100.5), StreamOutput::screen);
    recorder.reset();
    EXPECT_FALSE(mainStream().alive);
    EXPECT_FALSE(capture.stream(1).alive);
    EXPECT_FALSE(file().writerIsAlive);
    EXPECT_FALSE(file().cancelled);
}

TEST_F(ScreenRecorderTest, DestroyedWhileStartingItCallsNothing) {
    capture.holdsStart = true;
    start();
    recorder.reset();
    EXPECT_THAT(started, IsEmpty());
    EXPECT_FALSE(mainStream().alive);
    EXPECT_FALSE(file().writerIsAlive);
}

TEST_F(ScreenRecorderTest, DestroyedWhileStoppingItCallsNothing) {
    writers.holdsFinish = true;
    start();
    addOverlay(0);
    show(100.0);
    stop();
    recorder.reset();
    EXPECT_THAT(stopped, IsEmpty());
    EXPECT_FALSE(mainStream().alive);
    EXPECT_FALSE(file().writerIsAlive);
}

TEST_F(ScreenRecorderTest, DestroyedWhileTheFileIsFinishedItCallsNothing) {
    writers.holdsFinish = true;
    start();
    show(100.0);
    stop();
    queues.runAll();
    recorder.reset();
    EXPECT_THAT(stopped, IsEmpty());
    EXPECT_FALSE(file().writerIsAlive);
}

} // namespace
} // namespace velmo
