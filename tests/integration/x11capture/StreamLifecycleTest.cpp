#include "X11CaptureFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo::test {
namespace {

TEST_F(X11Capture, AServerThatGoesAwayIsReportedOnce) {
    const auto stream = startDisplay();
    server.kill();
    ASSERT_TRUE(probe.waitForStop());
    pauseFor(50);
    ASSERT_EQ(probe.errors().size(), 1u);
    EXPECT_EQ(probe.errors()[0].domain, kStreamErrorDomain);
    EXPECT_EQ(probe.errors()[0].code, kStreamErrorSourceGone);
    EXPECT_FALSE(probe.errors()[0].text.empty());
    stopAndWait(*stream); // still answers
}

TEST_F(X11Capture, AnotherDisplayModeEndsTheStream) {
    const auto stream = startDisplay();
    ChildProcess resize({"xrandr", "--fb", "800x600"}, server.display());
    EXPECT_TRUE(probe.waitForStop());
    ASSERT_EQ(probe.errors().size(), 1u);
    EXPECT_EQ(probe.errors()[0].code, kStreamErrorSourceGone);
}

TEST_F(X11Capture, AfterStopNoHandlerBeginsAndNothingIsReported) {
    const auto window = client.show({0, 0, 1280, 720}, {.color = kRed});
    for (int i = 0; i < 20; ++i) {
        const auto stream = startDisplay();
        client.fill(window, {0, 0, 1280, 720}, i % 2 == 0 ? kGreen : kRed);
        client.sync();
        stopAndWait(*stream);
        const std::size_t count = probe.pictures().size();
        client.fill(window, {0, 0, 100, 100}, kWhite);
        client.sync();
        pauseFor(5);
        EXPECT_EQ(probe.pictures().size(), count);
        probe.forget();
    }
    EXPECT_TRUE(probe.errors().empty());
}

TEST_F(X11Capture, AStreamStartsAgainAfterItsStop) {
    const auto stream = startDisplay();
    for (int i = 0; i < 5; ++i) {
        stopAndWait(*stream);
        probe.forget();
        ASSERT_TRUE(startAndWait(*stream).ok());
        EXPECT_TRUE(probe.waitForPictures(1));
    }
    stopAndWait(*stream);
}

TEST_F(X11Capture, AStopIsHeardThatComesWhileTheStreamTakesAChange) {
    StreamConfiguration configuration;
    configuration.width = 1280;
    configuration.height = 720;
    configuration.showsCursor = false; // on a still screen nothing but the stop wakes the stream
    const auto stream = startDisplay();
    for (int i = 0; i < 100; ++i) {
        std::promise<void> stopped;
        for (int change = 0; change < 40; ++change) { // so that it is found at any of its steps
            stream->updateConfiguration(configuration, {});
        }
        stream->stop([&stopped](const Result<void>&) { stopped.set_value(); });
        ASSERT_EQ(stopped.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready) << i;
        probe.forget();
        ASSERT_TRUE(startAndWait(*stream).ok());
        ASSERT_TRUE(probe.waitForPictures(1));
    }
    stopAndWait(*stream);
}

TEST_F(X11Capture, AStreamMayGoWhileItRuns) {
    const auto window = client.show({0, 0, 1280, 720}, {.color = kRed});
    for (int i = 0; i < 10; ++i) {
        auto stream = startDisplay();
        client.fill(window, {0, 0, 1280, 720}, kGreen);
        client.sync();
        stream.reset();
        probe.forget();
    }
}

TEST_F(X11Capture, AStreamMayGoInItsOwnCompletion) {
    std::promise<void> gone;
    StreamConfiguration configuration;
    configuration.width = 1280;
    configuration.height = 720;
    auto stream = std::move(capture.makeStream(ContentFilter::display(display, {}, {}), configuration, &probe)).value();
    ASSERT_TRUE(stream->addOutput(probe, StreamOutput::screen, probe.queue).ok());
    CaptureStream* raw = stream.get();
    raw->start([&](Result<void>) {
        stream.reset();
        gone.set_value();
    });
    gone.get_future().get();
}

TEST_F(X11Capture, StartingTwiceIsRefused) {
    const auto stream = startDisplay();
    EXPECT_FALSE(startAndWait(*stream).ok());
    stopAndWait(*stream);
}

TEST_F(X11Capture, ADisplayOrWindowThatIsNotThereIsAnError) {
    const auto noDisplay = capture.makeStream(ContentFilter::display(4711, {}, {}), {}, nullptr);
    ASSERT_FALSE(noDisplay.ok());
    EXPECT_EQ(noDisplay.error().code, kStreamErrorNoDisplay);
    EXPECT_EQ(noDisplay.error().text, "No se encontró la pantalla.");
    const auto noWindow = capture.makeStream(ContentFilter::window(4711), {}, nullptr);
    ASSERT_FALSE(noWindow.ok());
    EXPECT_FALSE(noWindow.error().text.empty());
}

TEST(X11CaptureWithout, ADisplayServerGivesAClearError) {
    X11ScreenCapture capture(":4711", nullptr, HostClock::shared());
    const auto stream = capture.makeStream(ContentFilter::display(1, {}, {}), {}, nullptr);
    ASSERT_FALSE(stream.ok());
    EXPECT_THAT(stream.error().text, testing::HasSubstr("servidor gráfico"));
    std::promise<Result<ShareableContent>> answer;
    capture.queryShareableContent([&](Result<ShareableContent> content) { answer.set_value(std::move(content)); });
    EXPECT_FALSE(answer.get_future().get().ok());
}

TEST(X11CaptureWithout, TheCompositeExtensionGivesAClearError) {
    const XTestServer server("640x480x24", {"-extension", "Composite"});
    X11ScreenCapture capture(server.display(), nullptr, HostClock::shared());
    const auto stream = capture.makeStream(ContentFilter::display(1, {}, {}), {}, nullptr);
    ASSERT_FALSE(stream.ok());
    EXPECT_THAT(stream.error().text, testing::HasSubstr("Composite"));
}

TEST(X11CaptureWithout, SharedMemoryTheSamePicturesCome) {
    const XTestServer server("640x480x24", {"-extension", "MIT-SHM"});
    XTestClient client(server.display());
    client.setRootColor(0);
    client.show({0, 0, 640, 100}, {.color = kRed});
    client.show({10, 10, 50, 50}, {.alpha = true, .color = 0xff00ff00});
    client.sync();
    X11ScreenCapture capture(server.display(), nullptr, HostClock::shared());
    std::promise<Result<ShareableContent>> answer;
    capture.queryShareableContent([&](Result<ShareableContent> content) { answer.set_value(std::move(content)); });
    const auto content = answer.get_future().get();
    StreamConfiguration configuration;
    configuration.width = 640;
    configuration.height = 480;
    StreamProbe probe;
    const auto stream =
        std::move(capture.makeStream(ContentFilter::display(content.value().displays[0].displayID, {}, {}),
                                     configuration, &probe))
            .value();
    ASSERT_TRUE(stream->addOutput(probe, StreamOutput::screen, probe.queue).ok());
    ASSERT_TRUE(startAndWait(*stream).ok());
    ASSERT_TRUE(probe.waitForPictures(1));
    EXPECT_EQ(yuvAt(probe.pictures()[0], 600, 50), kRedYuv);
    EXPECT_EQ(yuvAt(probe.pictures()[0], 30, 30), kGreenYuv);
    EXPECT_EQ(yuvAt(probe.pictures()[0], 300, 300), kBlackYuv);
    stopAndWait(*stream);
}

} // namespace
} // namespace velmo::test
