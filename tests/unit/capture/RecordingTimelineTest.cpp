#include "capture/internal/RecordingTimeline.h"

#include "ArmedTimeline.h"
#include "capture/RecorderError.h"
#include "support/ManualClock.h"
#include "support/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo {
namespace {

using internal::AudioLine;
using internal::RecordingTimeline;
using test::at;
using test::frame;
using test::sound;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Sound = RecordingTimeline::Sound;

class RecordingTimelineTest : public testing::Test {
protected:
    RecordingTimelineTest() { test::arm(timeline, writers); }

    test::FakeFile& file() { return writers.file(); }
    test::FakeTrack& video() { return file().videoTrack; }
    test::FakeTrack& system() { return file().audioTracks[0]; }
    test::FakeTrack& microphone() { return file().audioTracks[1]; }

    void write(double seconds) { timeline.writeVideo(frame(seconds), at(seconds)); }
    /// As the sample callback does it.
    void hear(Sound which, double seconds) {
        if (timeline.wantsSound(which, at(seconds))) {
            timeline.writeSound(which, sound(seconds));
        }
    }
    Result<void> finish() {
        return timeline.finish([this](double seconds) {
            sleeps.push_back(seconds);
            clock.advance(seconds);
        });
    }

    test::ManualClock clock{100.0};
    test::FakeAssetWriterFactory writers;
    RecordingTimeline timeline{clock};
    std::vector<double> sleeps;
};

TEST_F(RecordingTimelineTest, TheFirstFrameBecomesTheZeroOfTheFile) {
    write(100.0);

    EXPECT_THAT(file().sessions, ElementsAre(MediaTime::zero()));
    ASSERT_THAT(video().samples, SizeIs(1));
    EXPECT_EQ(video().samples[0].presentation(), MediaTime::zero());
}

TEST_F(RecordingTimelineTest, TheSessionBeginsOnce) {
    write(100.0);
    write(100.1);
    EXPECT_THAT(file().sessions, SizeIs(1));
    EXPECT_THAT(video().times(), ElementsAre(0.0, 0.1));
}

TEST_F(RecordingTimelineTest, SoundBeforeTheFirstFrameIsNotWanted) {
    EXPECT_FALSE(timeline.wantsSound(Sound::system, at(100.0)));
    EXPECT_FALSE(timeline.wantsSound(Sound::microphone, at(100.0)));
}

TEST_F(RecordingTimelineTest, SoundFromBeforeTheFirstFrameIsDroppedAndLaterSoundKeepsItsDistance) {
    write(100.0);
    hear(Sound::system, 99.9);
    hear(Sound::system, 100.1);

    ASSERT_THAT(system().samples, SizeIs(1));
    EXPECT_EQ(system().samples[0].presentation(), MediaTime(1, 10));
    EXPECT_EQ(timeline.counters(), RecordingTimeline::Counters{});
}

TEST_F(RecordingTimelineTest, SoundWithoutATimeIsDropped) {
    write(100.0);
    timeline.writeSound(Sound::system, sound(MediaTime::invalid()));
    EXPECT_THAT(system().samples, IsEmpty());
}

TEST_F(RecordingTimelineTest, SoundOfATrackThatDoesNotExistIsNotWanted) {
    RecordingTimeline bare(clock);
    auto writer = writers.makeWriter("/nowhere/bare.mp4");
    const RecordingTimeline::Inputs inputs{writer.value()->addVideoInput({}), nullptr, nullptr};
    ASSERT_TRUE(writer.value()->startWriting().ok());
    bare.arm(std::move(writer).value(), inputs);
    bare.writeVideo(frame(100.0), at(100.0));

    EXPECT_FALSE(bare.wantsSound(Sound::system, at(100.1)));
    EXPECT_FALSE(bare.wantsSound(Sound::microphone, at(100.1)));
    EXPECT_TRUE(bare.finish([](double) {}).ok());
}

TEST_F(RecordingTimelineTest, TheDecodeTimeMovesWithThePresentation) {
    write(100.0);
    Sample sample = frame(100.5);
    sample.timing.decode = at(100.4);
    timeline.writeVideo(sample, at(100.5));

    EXPECT_EQ(video().samples[1].timing.decode, MediaTime(4, 10));
    EXPECT_EQ(video().samples[1].timing.duration, MediaTime(1, 30));
    EXPECT_FALSE(video().samples[0].timing.decode.isValid());
}

TEST_F(RecordingTimelineTest, APauseIsCutOutOfTheFile) {
    write(100.0);
    write(101.0);
    clock.set(101.0);
    timeline.pause();
    clock.advance(4);
    timeline.resume();
    write(105.02);
    hear(Sound::microphone, 105.03);

    EXPECT_EQ(video().samples.back().presentation(), at(1.02));
    EXPECT_EQ(microphone().samples.back().presentation(), at(1.03));
}

TEST_F(RecordingTimelineTest, PausesAddUp) {
    write(100.0);
    clock.set(101.0);
    timeline.pause();
    clock.set(103.0);
    timeline.resume();
    clock.set(104.0);
    timeline.pause();
    clock.set(107.5);
    timeline.resume();
    write(108.0);

    EXPECT_EQ(video().samples.back().presentation(), at(8.0 - 2.0 - 3.5));
}

TEST_F(RecordingTimelineTest, PausingTwiceCountsFromTheFirstTime) {
    write(100.0);
    clock.set(101.0);
    timeline.pause();
    clock.set(102.0);
    timeline.pause();
    clock.set(103.0);
    timeline.resume();
    write(103.5);

    EXPECT_EQ(video().samples.back().presentation(), at(1.5));
}

TEST_F(RecordingTimelineTest, ResumingWithoutAPauseChangesNothing) {
    write(100.0);
    clock.set(105.0);
    timeline.resume();
    write(101.0); // would be refused if the resume had counted

    EXPECT_THAT(video().times(), ElementsAre(0.0, 1.0));
}

TEST_F(RecordingTimelineTest, NothingIsWrittenDuringAPause) {
    write(100.0);
    timeline.pause();
    write(100.5);
    hear(Sound::system, 100.5);

    EXPECT_THAT(video().times(), ElementsAre(0.0));
    EXPECT_THAT(system().samples, IsEmpty());
    EXPECT_EQ(timeline.counters(), RecordingTimeline::Counters{});
}

TEST_F(RecordingTimelineTest, WhatWasUnderWayBeforeTheResumeIsDroppedOnAllTracks) {
    write(100.0);
    clock.set(101.0);
    timeline.pause();
    clock.set(103.0);
    timeline.resume();
    write(102.99);
    hear(Sound::system, 102.99);
    hear(Sound::microphone, 102.99);
    EXPECT_THAT(video().times(), ElementsAre(0.0));
    EXPECT_THAT(system().samples, IsEmpty());
    EXPECT_THAT(microphone().samples, IsEmpty());

    write(103.0);
    EXPECT_THAT(video().times(), ElementsAre(0.0, 1.0));
}

TEST_F(RecordingTimelineTest, APauseBeforeTheFirstFrameLeavesTheZeroAlone) {
    timeline.pause();
    write(100.5);
    clock.set(104.0);
    timeline.resume();
    write(104.2);

    EXPECT_THAT(video().times(), ElementsAre(0.0));
    hear(Sound::system, 104.3);
    EXPECT_EQ(system().samples[0].presentation(), at(104.3) - at(104.2));
}

TEST_F(RecordingTimelineTest, AFrameAtTheTimeOfTheLastOneIsDroppedAndNotCounted) {
    write(100.0);
    write(100.5);
    write(100.5);
    write(100.4);

    EXPECT_THAT(video().times(), ElementsAre(0.0, 0.5));
    EXPECT_EQ(timeline.counters().droppedVideo, 0);
}

TEST_F(RecordingTimelineTest, AFrameFromBeforeTheZeroIsDroppedAndNotCounted) {
    write(100.0);
    write(99.0);
    EXPECT_THAT(video().times(), ElementsAre(0.0));
    EXPECT_EQ(timeline.counters().droppedVideo, 0);
}

TEST_F(RecordingTimelineTest, AFrameForABusyInputIsLostAndCounted) {
    write(100.0);
    video().ready = false;
    write(100.1);
    video().ready = true;
    write(100.2);

    EXPECT_THAT(video().times(), ElementsAre(0.0, 0.2));
    EXPECT_EQ(timeline.counters().droppedVideo, 1);
}

TEST_F(RecordingTimelineTest, AFrameThatTheInputRefusesMovesNoTime) {
    write(100.0);
    video().takes = false;
    write(100.1);
    video().takes = true;
    write(100.1);

    EXPECT_THAT(video().times(), ElementsAre(0.0, 0.1));
    EXPECT_EQ(timeline.counters().droppedVideo, 0);
}

TEST_F(RecordingTimelineTest, SoundWaitsForABusyInputAndGoesInItsOrder) {
    write(100.0);
    system().ready = false;
    hear(Sound::system, 100.1);
    hear(Sound::system, 100.2);
    EXPECT_THAT(system().samples, IsEmpty());
    system().ready = true;
    hear(Sound::system, 100.3);

    EXPECT_THAT(system().times(), ElementsAre(0.1, 0.2, 0.3));
    EXPECT_EQ(timeline.counters().waitedAudio, 2);
    EXPECT_EQ(timeline.counters().droppedAudio, 0);
}

TEST_F(RecordingTimelineTest, SoundNotLaterThanTheLastIsDroppedAndNotCounted) {
    write(100.0);
    hear(Sound::system, 100.2);
    hear(Sound::system, 100.2);
    hear(Sound::system, 100.1);
    hear(Sound::microphone, 100.1);

    EXPECT_THAT(system().times(), ElementsAre(0.2));
    EXPECT_THAT(microphone().times(), ElementsAre(0.1));
    EXPECT_EQ(timeline.counters().droppedAudio, 0);
}

TEST_F(RecordingTimelineTest, SoundThatTheInputRefusesIsCountedAndMovesNoTime) {
    write(100.0);
    system().takes = false;
    hear(Sound::system, 100.1);
    system().takes = true;
    hear(Sound::system, 100.1);

    EXPECT_THAT(system().times(), ElementsAre(0.1));
    EXPECT_EQ(timeline.counters().droppedAudio, 1);
}

TEST_F(RecordingTimelineTest, OfFourHundredAndOneWaitingSamplesTheOldestIsLost) {
    write(100.0);
    system().ready = false;
    for (int i = 1; i <= 401; ++i) {
        hear(Sound::system, 100.0 + i);
        EXPECT_EQ(timeline.counters().droppedAudio, i == 401 ? 1 : 0);
    }
    system().ready = true;
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(system().samples, SizeIs(400));
    EXPECT_EQ(system().samples.front().presentation(), MediaTime(2, 1));
    EXPECT_EQ(system().samples.back().presentation(), MediaTime(401, 1));
}

TEST_F(RecordingTimelineTest, EachTrackHasALineOfItsOwn) {
    write(100.0);
    system().ready = false;
    microphone().ready = false;
    for (int i = 1; i <= 400; ++i) {
        hear(Sound::system, 100.0 + i);
        hear(Sound::microphone, 100.0 + i);
    }
    EXPECT_EQ(timeline.counters().droppedAudio, 0);
}

TEST_F(RecordingTimelineTest, TheVideoIsExtendedToTheStopWithItsLastPicture) {
    write(100.0);
    write(100.5);
    clock.set(160.0);
    ASSERT_TRUE(finish().ok());

    ASSERT_THAT(video().samples, SizeIs(3));
    const Sample& last = video().samples.back();
    EXPECT_EQ(last.presentation(), MediaTime(60, 1));
    EXPECT_FALSE(last.timing.duration.isValid());
    EXPECT_FALSE(last.timing.decode.isValid());
    EXPECT_EQ(last.image, video().samples[1].image);
}

TEST_F(RecordingTimelineTest, StoppingDuringAPauseEndsTheVideoAtThePause) {
    write(100.0);
    clock.set(103.0);
    timeline.pause();
    clock.set(110.0);
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(video().times(), ElementsAre(0.0, 3.0));
}

TEST_F(RecordingTimelineTest, TheExtensionLeavesEarlierPausesOut) {
    write(100.0);
    clock.set(103.0);
    timeline.pause();
    clock.set(108.0);
    timeline.resume();
    clock.set(110.0);
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(video().times(), ElementsAre(0.0, 5.0));
}

TEST_F(RecordingTimelineTest, AStopNotLaterThanTheLastFrameExtendsNothing) {
    write(100.0);
    clock.set(100.0);
    ASSERT_TRUE(finish().ok());
    EXPECT_THAT(video().times(), ElementsAre(0.0));
}

TEST_F(RecordingTimelineTest, ABusyVideoInputIsNotExtended) {
    write(100.0);
    clock.set(105.0);
    video().ready = false;
    ASSERT_TRUE(finish().ok());
    EXPECT_THAT(video().times(), ElementsAre(0.0));
    EXPECT_EQ(timeline.counters().droppedVideo, 0);
}

TEST_F(RecordingTimelineTest, AFrameThatTheBusyInputLostIsStillTheLastPicture) {
    write(100.0);
    video().ready = false;
    const Sample lost = frame(100.5);
    timeline.writeVideo(lost, at(100.5));
    video().ready = true;
    clock.set(101.0);
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(video().times(), ElementsAre(0.0, 1.0));
    EXPECT_EQ(video().samples.back().image, lost.image);
}

TEST_F(RecordingTimelineTest, TheEndFinishesEveryInput) {
    write(100.0);
    ASSERT_TRUE(finish().ok());
    EXPECT_TRUE(video().finished);
    EXPECT_TRUE(system().finished);
    EXPECT_TRUE(microphone().finished);
    EXPECT_FALSE(file().cancelled);
}

TEST_F(RecordingTimelineTest, NothingIsTakenAfterTheEnd) {
    write(100.0);
    ASSERT_TRUE(finish().ok());
    const auto frames = video().samples.size();
    write(101.0);
    EXPECT_FALSE(timeline.wantsSound(Sound::system, at(101.0)));
    EXPECT_EQ(video().samples.size(), frames);
}

TEST_F(RecordingTimelineTest, TheEndWaitsForSoundThatAnInputTakesLate) {
    write(100.0);
    system().ready = false;
    hear(Sound::system, 100.1);
    hear(Sound::system, 100.2);
    system().readyAfter = 3;
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(system().times(), ElementsAre(0.1, 0.2));
    EXPECT_THAT(sleeps, ElementsAre(0.005, 0.005));
    EXPECT_EQ(timeline.counters().droppedAudio, 0);
}

TEST_F(RecordingTimelineTest, TheEndGivesABusySoundInputUpAfterTwoHundredRounds) {
    write(100.0);
    system().ready = false;
    microphone().ready = false;
    hear(Sound::system, 100.1);
    hear(Sound::microphone, 100.1);
    hear(Sound::microphone, 100.2);
    ASSERT_TRUE(finish().ok());

    EXPECT_THAT(sleeps, SizeIs(400));
    EXPECT_EQ(timeline.counters().droppedAudio, 3);
    EXPECT_TRUE(system().finished);
}

TEST_F(RecordingTimelineTest, TheEndWithoutWaitingSoundWaitsForNothing) {
    write(100.0);
    hear(Sound::system, 100.1);
    ASSERT_TRUE(finish().ok());
    EXPECT_THAT(sleeps, IsEmpty());
}

TEST_F(RecordingTimelineTest, AnEndBeforeAnyFrameCancelsTheFile) {
    const auto result = finish();
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(), RecorderError::noFrames());
    EXPECT_TRUE(file().cancelled);
    EXPECT_FALSE(video().finished);
}

TEST_F(RecordingTimelineTest, AnEndBeforeAnyFrameGivesTheWritersOwnErrorIfItHasOne) {
    const Error full{"writer", 28, "disco lleno"};
    file().error = full;
    EXPECT_EQ(finish().error(), full);
}

TEST_F(RecordingTimelineTest, AFailedWriterIsNotWrittenToAndEndsWithItsError) {
    write(100.0);
    file().status = WriterStatus::failed;
    file().error = Error{"writer", 5, "se rompió"};
    EXPECT_TRUE(timeline.writerHasFailed());
    write(100.5);
    EXPECT_FALSE(timeline.wantsSound(Sound::system, at(100.5)));
    clock.set(101.0);
    const auto result = finish();

    EXPECT_THAT(video().times(), ElementsAre(0.0));
    EXPECT_EQ(result.error(), file().error);
    EXPECT_TRUE(file().cancelled);
}

TEST_F(RecordingTimelineTest, AFailedWriterWithoutAnErrorEndsAsARecordingWithoutFrames) {
    write(100.0);
    file().status = WriterStatus::failed;
    EXPECT_EQ(finish().error(), RecorderError::noFrames());
}

TEST_F(RecordingTimelineTest, TheSummaryTellsTheCounters) {
    write(100.0);
    EXPECT_EQ(timeline.summary(), "grabación: audio en fila 0 veces · audio perdido 0 · cuadros saltados 0");
    video().ready = false;
    write(100.1);
    system().ready = false;
    hear(Sound::system, 100.1);
    hear(Sound::system, 100.2);
    hear(Sound::system, 100.3);
    microphone().takes = false;
    hear(Sound::microphone, 100.3);
    EXPECT_EQ(timeline.summary(), "grabación: audio en fila 2 veces · audio perdido 1 · cuadros saltados 1");
}

TEST_F(RecordingTimelineTest, WaitingSoundHoldsAtMostItsLimit) {
    AudioLine line;
    const Sample one = sound(1.0);
    for (std::size_t i = 0; i < 3 * AudioLine::kLimit; ++i) {
        line.push(one);
        line.dropDownTo(AudioLine::kLimit);
    }
    EXPECT_EQ(line.size(), AudioLine::kLimit);
    EXPECT_EQ(line.dropDownTo(0), static_cast<int>(AudioLine::kLimit));
    EXPECT_TRUE(line.isEmpty());
}

} // namespace
} // namespace velmo
