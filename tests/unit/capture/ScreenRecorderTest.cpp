#include "RecorderFixture.h"

#include "capture/RecorderError.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::frame;
using test::kBroken;
using test::sound;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using ScreenRecorderTest = test::RecorderFixture;

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

} // namespace
} // namespace velmo
