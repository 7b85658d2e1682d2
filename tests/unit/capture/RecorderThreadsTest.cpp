#include "capture/ScreenRecorder.h"

#include "support/AllocationCount.h"
#include "support/FakeAssetWriter.h"
#include "support/FakeScreenCapture.h"
#include "support/Samples.h"
#include "support/TemporaryFolder.h"

#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace velmo {
namespace {

using test::frame;
using test::sound;
using testing::SizeIs;

/// A recorder on queues with real threads and the real clock.
class RecorderThreadsTest : public testing::Test {
protected:
    RecorderThreadsTest() {
        capture.streams.reserve(8);
        writers.files.reserve(8);
    }

    Result<void> start(Size size = {64, 48}) {
        std::promise<Result<void>> done;
        recorder->start(ContentFilter::display(1, {}, {}), size, 30, true, "mic", "/nowhere/clase.mp4",
                        [&done](Result<void> result) { done.set_value(std::move(result)); });
        return done.get_future().get();
    }
    Result<void> addOverlay(int key) {
        std::promise<Result<void>> done;
        CaptureWindow window;
        window.frame = {0, 0, 20, 20};
        recorder->addOverlay(key, window, [&done](Result<void> result) { done.set_value(std::move(result)); });
        return done.get_future().get();
    }
    Result<std::filesystem::path> stop() {
        std::promise<Result<std::filesystem::path>> done;
        recorder->stop([&done](Result<std::filesystem::path> result) { done.set_value(std::move(result)); });
        return done.get_future().get();
    }
    /// One frame, all the way into the file.
    void recordAFrame() {
        capture.stream(0).emit(frame(clock.now()), StreamOutput::screen);
        for (const auto& output : capture.stream(0).outputs) {
            output.queue->sync([] {});
        }
    }
    static void expectStrictlyIncreasing(const test::FakeTrack& track) {
        for (std::size_t i = 1; i < track.samples.size(); ++i) {
            ASSERT_GT(track.samples[i].presentation(), track.samples[i - 1].presentation());
        }
    }

    test::TemporaryFolder folder;
    DiagLog diagLog{folder.path() / "app.log"};
    const Clock& clock = HostClock::shared();
    test::FakeScreenCapture capture;
    test::FakeAssetWriterFactory writers;
    std::optional<ScreenRecorder> recorder{
        std::in_place, RecorderServices{.capture = capture, .writers = writers, .clock = clock, .log = diagLog}};
};

TEST_F(RecorderThreadsTest, EveryoneAtOnceStillGivesAWholeFile) {
    std::atomic<int> ends = 0;
    recorder->setOnStop([&ends](const std::optional<Error>&) { ++ends; });
    ASSERT_TRUE(start().ok());
    ASSERT_TRUE(addOverlay(0).ok());
    recordAFrame();

    const auto picture = test::picture();
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < 400; ++i) {
            capture.stream(0).emit(frame(clock.now(), picture), StreamOutput::screen);
            capture.stream(1).emit(frame(clock.now(), picture), StreamOutput::screen);
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 400; ++i) {
            capture.stream(0).emit(sound(clock.now(), 48), StreamOutput::audio);
            capture.stream(0).emit(sound(clock.now(), 48), StreamOutput::microphone);
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 100; ++i) {
            recorder->pause();
            recorder->clicks().note(clock.now().seconds());
            recorder->resume();
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 100; ++i) {
            recorder->zoom().setEnabled(i % 2 == 0);
            recorder->zoom().update({i / 100.0, 0.5}, {});
            recorder->resizeOverlay(0, {20.0 + i, 20});
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    const auto result = stop();

    ASSERT_TRUE(result.ok());
    EXPECT_EQ(ends, 0);
    EXPECT_THAT(writers.file().videoTrack.samples, SizeIs(testing::Ge(2u)));
    expectStrictlyIncreasing(writers.file().videoTrack);
    expectStrictlyIncreasing(writers.file().audioTracks[0]);
    expectStrictlyIncreasing(writers.file().audioTracks[1]);
    recorder.reset();
}

TEST_F(RecorderThreadsTest, StopsFromSeveralThreadsAllGetTheFile) {
    ASSERT_TRUE(start().ok());
    recordAFrame();
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            recorder->pause();
            good += stop().ok() ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, 4);
}

TEST_F(RecorderThreadsTest, DestroyedInTheMiddleOfEverythingItCallsNobodyAfterwards) {
    for (int round = 0; round < 20; ++round) {
        capture.streams.clear();
        recorder.emplace(RecorderServices{.capture = capture, .writers = writers, .clock = clock, .log = diagLog});
        ASSERT_TRUE(start().ok());
        std::atomic<bool> gone = false;
        std::atomic<int> late = 0;
        recorder->setOnStop([&](const std::optional<Error>&) { late += gone ? 1 : 0; });
        for (int i = 0; i < round; ++i) {
            capture.stream(0).emit(frame(clock.now()), StreamOutput::screen);
            capture.stream(0).emit(sound(clock.now()), StreamOutput::audio);
        }
        recorder->stop([&](const Result<std::filesystem::path>&) { late += gone ? 1 : 0; });
        recorder.reset();
        gone = true;
        EXPECT_EQ(late, 0);
        EXPECT_FALSE(writers.file().writerIsAlive);
    }
}

TEST_F(RecorderThreadsTest, TheFramePathTakesNoMemory) {
    constexpr int kRounds = 600;
    writers.reservedSamples = 2 * kRounds + 100;
    ASSERT_TRUE(start({256, 144}).ok());
    recorder->zoom().configure({0, 0, 256, 144});
    recorder->zoom().setEnabled(true);
    test::FakeStreamState& stream = capture.stream(0);
    // What a real stream has at hand: buffers of a pool of its own.
    const std::array pictures{test::picture(256, 144, 40), test::picture(256, 144, 200)};
    const Sample quiet = sound(0.0);

    const auto run = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            const MediaTime now = clock.now();
            stream.emit(frame(now, pictures[static_cast<std::size_t>(i % 2)]), StreamOutput::screen);
            Sample heard = quiet;
            heard.timing.presentation = now;
            stream.emit(heard, StreamOutput::audio);
            stream.emit(heard, StreamOutput::microphone);
            for (const auto& output : stream.outputs) {
                output.queue->sync([] {});
            }
            // The written pictures go back to the pool, as an encoder gives them back.
            stream.outputs[1].queue->sync([this] { writers.file().videoTrack.samples.clear(); });
        }
    };
    run(100);
    const std::size_t before = test::allocationCount();
    run(kRounds);
    EXPECT_EQ(test::allocationCount() - before, 0u);
    EXPECT_GT(recorder->zoom().scale(), 1.002) << "the frames went through the compositor";
    EXPECT_THAT(writers.file().audioTracks[0].samples, SizeIs(testing::Gt(600u)));
    EXPECT_TRUE(stop().ok());
}

} // namespace
} // namespace velmo
