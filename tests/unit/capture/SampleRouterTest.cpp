#include "capture/internal/SampleRouter.h"

#include "ArmedTimeline.h"
#include "support/FakeScreenCapture.h"
#include "support/ManualClock.h"
#include "support/ManualQueue.h"
#include "support/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo {
namespace {

using internal::RecordingTimeline;
using internal::SampleRouter;
using test::at;
using test::frame;
using test::sound;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SampleRouterTest : public testing::Test {
protected:
    SampleRouterTest() {
        test::arm(timeline, writers);
        zoom.configure({0, 0, 64, 48});
    }

    /// On the queue where such samples come, then all that follows from it.
    void deliver(const Sample& sample, StreamOutput type = StreamOutput::screen) {
        SerialQueue& on = type == StreamOutput::screen ? videoQueue : queue;
        on.sync([&] { router.streamDidOutput(mainStream, sample, type); });
        queue.run();
    }
    void tickAt(double seconds) {
        clock.set(seconds);
        videoQueue.sync([&] { router.tick(); });
        queue.run();
    }
    /// The pointer away from the middle: the compositor is animating, but no effect is live.
    void letItAnimateWithoutEffect() { zoom.update({10, 10}, {}); }

    test::FakeTrack& video() { return writers.file().videoTrack; }

    test::ManualClock clock{100.0};
    test::ManualQueue queue{"velmo.capture"};
    test::ManualQueue videoQueue{"velmo.capture.video"};
    test::FakeAssetWriterFactory writers;
    ZoomProcessor zoom{clock};
    ClickSuppressor clicks;
    RecordingTimeline timeline{clock};
    int failures = 0;
    SampleRouter router{{zoom, clicks, timeline, clock, queue, videoQueue, [this] { ++failures; }}};

    test::FakeScreenCapture capture;
    std::shared_ptr<test::FakeStreamState> mainState = std::make_shared<test::FakeStreamState>();
    std::shared_ptr<test::FakeStreamState> overlayState = std::make_shared<test::FakeStreamState>();
    test::FakeCaptureStream mainStream{capture, mainState};
    test::FakeCaptureStream overlayStream{capture, overlayState};
};

TEST_F(SampleRouterTest, AFrameWithoutEffectsGoesToTheFileAsItCame) {
    const Sample sample = frame(100.0);
    deliver(sample);

    ASSERT_THAT(video().samples, SizeIs(1));
    EXPECT_EQ(video().samples[0].image, sample.image);
    EXPECT_EQ(zoom.motion().lastStep(), 100.0);
}

TEST_F(SampleRouterTest, AFrameThatIsNotCompleteIsIgnoredAndMovesNothing) {
    for (const FrameStatus status : {FrameStatus::idle, FrameStatus::blank, FrameStatus::suspended}) {
        Sample sample = frame(100.0);
        sample.status = status;
        deliver(sample);
    }
    EXPECT_THAT(video().samples, IsEmpty());
    EXPECT_EQ(zoom.motion().lastStep(), std::nullopt);
}

TEST_F(SampleRouterTest, AFrameWithoutPictureOrTimeIsIgnored) {
    deliver(frame(100.0, nullptr));
    deliver(frame(MediaTime::invalid()));
    EXPECT_THAT(video().samples, IsEmpty());
    EXPECT_EQ(zoom.motion().lastStep(), std::nullopt);
}

TEST_F(SampleRouterTest, AFrameWithALiveEffectGoesThroughTheCompositor) {
    zoom.setEnabled(true);
    deliver(frame(100.0));
    const Sample second = frame(100.05);
    deliver(second);

    ASSERT_THAT(video().samples, SizeIs(2));
    const Sample& written = video().samples[1];
    EXPECT_NE(written.image, second.image);
    EXPECT_EQ(written.image->width(), second.image->width());
    EXPECT_EQ(written.presentation(), at(0.05));
    EXPECT_EQ(written.timing.duration, second.timing.duration);
}

TEST_F(SampleRouterTest, AFrameThatTheCompositorLeavesAloneGoesAsItCame) {
    zoom.setEnabled(true); // processing is wanted, but the first step has not moved anything yet
    const Sample sample = frame(100.0);
    deliver(sample);
    EXPECT_EQ(video().samples[0].image, sample.image);
}

TEST_F(SampleRouterTest, OverlayPicturesGoToTheCompositorAndNotIntoTheFile) {
    router.addOverlay(overlayStream, 1, 2.0);
    BubbleInfo bubble;
    bubble.key = 1;
    zoom.update({32, 24}, {bubble});
    EXPECT_FALSE(zoom.isAnimating());
    router.streamDidOutput(overlayStream, frame(MediaTime::invalid()), StreamOutput::screen);
    queue.run();

    EXPECT_TRUE(zoom.isAnimating()) << "the compositor has a picture for the bubble";
    EXPECT_THAT(video().samples, IsEmpty());
    EXPECT_EQ(zoom.motion().lastStep(), std::nullopt);
}

TEST_F(SampleRouterTest, AnOverlayPictureThatIsNotCompleteIsIgnored) {
    router.addOverlay(overlayStream, 1, 2.0);
    BubbleInfo bubble;
    bubble.key = 1;
    zoom.update({32, 24}, {bubble});
    Sample idle = frame(100.0);
    idle.status = FrameStatus::idle;
    router.streamDidOutput(overlayStream, idle, StreamOutput::screen);
    router.streamDidOutput(overlayStream, frame(100.0, nullptr), StreamOutput::screen);
    EXPECT_FALSE(zoom.isAnimating());
}

TEST_F(SampleRouterTest, KnowsTheScaleOfEachOverlay) {
    router.addOverlay(overlayStream, 1, 2.0);
    EXPECT_EQ(router.overlayScale(1), 2.0);
    EXPECT_EQ(router.overlayScale(0), std::nullopt);
    router.addOverlay(mainStream, 1, 1.5);
    EXPECT_EQ(router.overlayScale(1), 1.5);
}

TEST_F(SampleRouterTest, SoundBeforeTheFirstFrameIsNotWritten) {
    deliver(sound(99.0), StreamOutput::audio);
    deliver(sound(99.0), StreamOutput::microphone);
    deliver(frame(100.0));
    EXPECT_THAT(writers.file().audioTracks[0].samples, IsEmpty());
    EXPECT_THAT(writers.file().audioTracks[1].samples, IsEmpty());
}

TEST_F(SampleRouterTest, EachSoundGoesToItsTrackAndOnlyTheMicrophoneIsDucked) {
    deliver(frame(100.0));
    clicks.note(100.1);
    const Sample system = sound(100.1);
    deliver(system, StreamOutput::audio);
    deliver(sound(100.1), StreamOutput::microphone);

    ASSERT_THAT(writers.file().audioTracks[0].samples, SizeIs(1));
    EXPECT_EQ(writers.file().audioTracks[0].samples[0].audio, system.audio);
    ASSERT_THAT(writers.file().audioTracks[1].samples, SizeIs(1));
    EXPECT_FLOAT_EQ(writers.file().audioTracks[1].samples[0].audio->floats()[0], 0.04f);
}

TEST_F(SampleRouterTest, SoundWithoutABufferIsIgnored) {
    deliver(frame(100.0));
    Sample empty;
    empty.timing.presentation = at(100.1);
    deliver(empty, StreamOutput::audio);
    EXPECT_THAT(writers.file().audioTracks[0].samples, IsEmpty());
}

TEST_F(SampleRouterTest, MotionAndTheLastPictureStayCurrentDuringAPause) {
    deliver(frame(100.0));
    timeline.pause();
    zoom.setPaused(true);
    const Sample during = frame(102.0);
    deliver(during);
    EXPECT_THAT(video().samples, SizeIs(1));
    EXPECT_EQ(zoom.motion().lastStep(), 102.0);

    clock.set(103.0);
    timeline.resume();
    zoom.setPaused(false);
    letItAnimateWithoutEffect();
    videoQueue.sync([&] { zoom.stepTo(102.0); });
    tickAt(103.1);
    ASSERT_THAT(video().samples, SizeIs(2));
    EXPECT_EQ(video().samples[1].image, during.image);
}

TEST_F(SampleRouterTest, TheTimerMakesNoFrameBeforeTheScreenGaveOne) {
    zoom.setColumn(true, true);
    tickAt(101.0);
    EXPECT_THAT(video().samples, IsEmpty());
}

TEST_F(SampleRouterTest, TheTimerMakesNoFrameWhileNothingMoves) {
    deliver(frame(100.0));
    for (int i = 1; i <= 300; ++i) {
        tickAt(100.0 + i / 30.0);
    }
    EXPECT_THAT(video().samples, SizeIs(1));
}

TEST_F(SampleRouterTest, TheTimerMakesNoFrameDuringAPause) {
    deliver(frame(100.0));
    zoom.setColumn(true, true);
    zoom.setPaused(true);
    tickAt(101.0);
    EXPECT_THAT(video().samples, SizeIs(1));
    EXPECT_EQ(zoom.motion().lastStep(), 100.0);
}

TEST_F(SampleRouterTest, TheTimerMakesNoFrameWithinOneAndAFifthFrameDurations) {
    videoQueue.sync([&] { router.setFrameDuration(MediaTime(1, 25)); }); // 1.2 of it are 48 ms
    deliver(frame(100.0));
    zoom.setColumn(true, true);
    tickAt(100.04);
    EXPECT_THAT(video().samples, SizeIs(1));
    EXPECT_EQ(zoom.motion().lastStep(), 100.0);
    tickAt(100.0481);
    EXPECT_THAT(video().samples, SizeIs(2));
}

TEST_F(SampleRouterTest, AFrameOfTheTimerHasTheTimeOfTheTickAndTheFrameDuration) {
    deliver(frame(100.0));
    zoom.setEnabled(true);
    tickAt(100.05);

    ASSERT_THAT(video().samples, SizeIs(2));
    EXPECT_EQ(video().samples[1].presentation(), at(0.05));
    EXPECT_EQ(video().samples[1].timing.duration, MediaTime(1, 30));
    EXPECT_NE(video().samples[1].image, video().samples[0].image);
    EXPECT_EQ(zoom.motion().lastStep(), clock.now().seconds());
}

TEST_F(SampleRouterTest, APictureThatTheFileShowsAlreadyIsNotRepeatedWhateverThePointerDoes) {
    deliver(frame(100.0));
    letItAnimateWithoutEffect();
    deliver(frame(100.01));
    ASSERT_TRUE(zoom.isAnimating());
    for (int i = 1; i <= 300; ++i) {
        tickAt(100.01 + i / 30.0);
    }
    EXPECT_THAT(video().samples, SizeIs(2));
}

TEST_F(SampleRouterTest, ThePlainPictureFollowsOnceWhenTheLastEffectHasEnded) {
    deliver(frame(100.0));
    zoom.setSpotlight(true);
    tickAt(100.1);
    ASSERT_NE(video().samples.back().image, video().samples.front().image);
    zoom.setSpotlight(false);
    letItAnimateWithoutEffect();
    for (int i = 1; i <= 60; ++i) {
        tickAt(100.1 + i / 10.0);
    }
    EXPECT_EQ(video().samples.back().image, video().samples.front().image);
    const auto settled = video().samples.size();
    tickAt(110.0);
    EXPECT_EQ(video().samples.size(), settled);
}

TEST_F(SampleRouterTest, APictureThatCameDuringAPauseIsInTheFileSoonAfterIt) {
    deliver(frame(100.0));
    zoom.setPaused(true);
    timeline.pause();
    clock.set(101.0);
    const Sample turned = frame(101.0);
    deliver(turned);
    clock.set(105.0);
    timeline.resume();
    zoom.setPaused(false);
    tickAt(105.03);
    ASSERT_THAT(video().samples, SizeIs(2));
    EXPECT_EQ(video().samples[1].image, turned.image);
    tickAt(106.0);
    EXPECT_THAT(video().samples, SizeIs(2));
}

TEST_F(SampleRouterTest, APictureThatABusyEncoderRefusedIsHandedInAgain) {
    deliver(frame(100.0));
    video().ready = false;
    const Sample turned = frame(100.1);
    deliver(turned);
    video().ready = true;
    tickAt(100.2);
    ASSERT_THAT(video().samples, SizeIs(2));
    EXPECT_EQ(video().samples[1].image, turned.image);
}

TEST_F(SampleRouterTest, AFrameOfTheTimerCountsAsTheLastFrame) {
    deliver(frame(100.0));
    zoom.setColumn(true, true);
    tickAt(100.05);
    tickAt(100.08);
    tickAt(100.1);
    EXPECT_THAT(video().samples, SizeIs(3));
}

TEST_F(SampleRouterTest, APictureTakenBeforeAFrameOfTheTimerButDeliveredAfterItFollowsIt) {
    deliver(frame(100.0));
    zoom.setEnabled(true);
    tickAt(100.041);
    const double scale = zoom.scale();
    deliver(frame(100.035));

    ASSERT_THAT(video().samples, SizeIs(3));
    EXPECT_EQ(video().samples[2].presentation(), at(0.042));
    EXPECT_EQ(zoom.motion().lastStep(), 100.042);
    EXPECT_GT(zoom.scale(), scale);
}

TEST_F(SampleRouterTest, APlainPictureFollowsAFrameOfTheTimerToo) {
    deliver(frame(100.0));
    zoom.setSpotlight(true);
    tickAt(100.041);
    zoom.setSpotlight(false);
    letItAnimateWithoutEffect();
    for (int i = 1; i <= 10; ++i) {
        tickAt(100.1 + i / 10.0);
    }
    const auto written = video().samples.size();
    const Sample late = frame(100.05);
    deliver(late);
    ASSERT_EQ(video().samples.size(), written + 1);
    EXPECT_EQ(video().samples.back().image, late.image);
    EXPECT_GT(video().samples.back().presentation(), video().samples[written - 1].presentation());
}

TEST_F(SampleRouterTest, AFailedWriterIsReportedOnce) {
    deliver(frame(100.0));
    writers.file().status = WriterStatus::failed;
    deliver(frame(100.1));
    deliver(sound(100.1), StreamOutput::audio);
    deliver(frame(100.2));
    EXPECT_EQ(failures, 1);
    EXPECT_THAT(video().samples, SizeIs(1));
}

TEST_F(SampleRouterTest, AFailedWriterIsNoticedBySoundAloneToo) {
    deliver(frame(100.0));
    writers.file().status = WriterStatus::failed;
    deliver(sound(100.1), StreamOutput::microphone);
    EXPECT_EQ(failures, 1);
}

} // namespace
} // namespace velmo
