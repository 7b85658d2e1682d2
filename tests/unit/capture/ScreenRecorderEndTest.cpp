#include "RecorderFixture.h"

#include "capture/RecorderError.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::frame;
using test::kBroken;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using ScreenRecorderEndTest = test::RecorderFixture;

TEST_F(ScreenRecorderEndTest, StoppingGivesTheFinishedFile) {
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

TEST_F(ScreenRecorderEndTest, StoppingWritesTheCountersToTheLog) {
    start();
    show(100.0);
    file().videoTrack.ready = false;
    show(100.1);
    stop();
    queues.runAll();
    EXPECT_THAT(log(),
                testing::EndsWith("Z grabación: audio en fila 0 veces · audio perdido 0 · cuadros saltados 1\n"));
}

TEST_F(ScreenRecorderEndTest, StoppingWritesTheFrameInHandFirst) {
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

TEST_F(ScreenRecorderEndTest, AFrameOfTheTimerThatIsInHandAtTheStopIsWritten) {
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

TEST_F(ScreenRecorderEndTest, StoppingStopsTheMainStreamBeforeTheOverlays) {
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

TEST_F(ScreenRecorderEndTest, StreamsThatCannotStopDoNotMatter) {
    capture.stopError = kBroken;
    start();
    addOverlay(0);
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_TRUE(stopped[0].ok());
}

TEST_F(ScreenRecorderEndTest, StoppingBeforeAnyFrameLeavesNoFile) {
    start();
    stop();
    queues.runAll();
    ASSERT_THAT(stopped, SizeIs(1));
    EXPECT_EQ(stopped[0].error(), RecorderError::noFrames());
    EXPECT_TRUE(file().cancelled);
    EXPECT_EQ(log(), "");
}

TEST_F(ScreenRecorderEndTest, StoppingWithoutAStartSaysThatThereIsNoPicture) {
    stop();
    queues.runAll();
    EXPECT_EQ(stopped[0].error(), RecorderError::noFrames());
}

TEST_F(ScreenRecorderEndTest, StoppingTwiceGivesTheSameAnswer) {
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

TEST_F(ScreenRecorderEndTest, AStopDuringTheStartComesAfterIt) {
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

TEST_F(ScreenRecorderEndTest, AStopDuringAStartThatFailsIsAnsweredToo) {
    capture.holdsStart = true;
    start();
    stop();
    queues.runAll();
    mainStream().heldStart(kBroken);
    queues.runAll();
    EXPECT_EQ(started.at(0).error(), kBroken);
    EXPECT_EQ(stopped.at(0).error(), kBroken);
}

TEST_F(ScreenRecorderEndTest, AFileThatCannotBeFinishedGivesTheWritersError) {
    writers.finishError = Error{"posix", 28, "No queda espacio"};
    start();
    show(100.0);
    stop();
    queues.runAll();
    EXPECT_EQ(stopped[0].error(), *writers.finishError);
}

TEST_F(ScreenRecorderEndTest, AFileThatFailsWithoutAReasonIsAWriterError) {
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

TEST_F(ScreenRecorderEndTest, AStreamThatEndsIsToldAndWhatItGaveIsKept) {
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

TEST_F(ScreenRecorderEndTest, AWriterThatCanTakeNoMoreIsToldAndItsFileIsKept) {
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

TEST_F(ScreenRecorderEndTest, AWriterThatFailsIsToldOnceAndTheStopGivesItsError) {
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

TEST_F(ScreenRecorderEndTest, NobodyIsToldOfAnEndThatWasAskedFor) {
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

TEST_F(ScreenRecorderEndTest, WithoutSomeoneToTellAnEndingStreamIsSilent) {
    start();
    show(100.0);
    mainStream().die(kBroken);
    queues.runAll();
    EXPECT_TRUE(recorder.has_value());
}

TEST_F(ScreenRecorderEndTest, DestroyedWhileRecordingItEndsTheStreamsAndLeavesTheFile) {
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

TEST_F(ScreenRecorderEndTest, DestroyedWhileStartingItCallsNothing) {
    capture.holdsStart = true;
    start();
    recorder.reset();
    EXPECT_THAT(started, IsEmpty());
    EXPECT_FALSE(mainStream().alive);
    EXPECT_FALSE(file().writerIsAlive);
}

TEST_F(ScreenRecorderEndTest, DestroyedWhileStoppingItCallsNothing) {
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

TEST_F(ScreenRecorderEndTest, DestroyedWhileTheFileIsFinishedItCallsNothing) {
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
