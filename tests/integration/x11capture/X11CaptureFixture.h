#pragma once

#include "platform/x11/X11ScreenCapture.h"

#include "StreamProbe.h"
#include "support/XTestClient.h"
#include "support/XTestServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace velmo::test {

inline constexpr std::uint32_t kRed = 0xffff0000;
inline constexpr std::uint32_t kGreen = 0xff00ff00;
inline constexpr std::uint32_t kWhite = 0xffffffff;
inline constexpr Yuv kRedYuv{63, 102, 240};
inline constexpr Yuv kGreenYuv{173, 42, 26};
inline constexpr Yuv kWhiteYuv{235, 128, 128};
inline constexpr Yuv kBlackYuv{16, 128, 128};

/// Milliseconds without a picture after which none is on its way.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
inline constexpr int kQuiet = 800;
#else
inline constexpr int kQuiet = 150;
#endif

inline void pauseFor(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

/// A service, a receiver and a client on a server of their own.
class X11Capture : public testing::Test {
protected:
    X11Capture() {
        client.setRootColor(0);
        client.sync();
        display = query().displays.at(0).displayID;
    }

    ShareableContent query() {
        std::promise<Result<ShareableContent>> answer;
        capture.queryShareableContent([&](Result<ShareableContent> content) { answer.set_value(std::move(content)); });
        return answer.get_future().get().value();
    }
    std::unique_ptr<CaptureStream> start(const ContentFilter& filter, const StreamConfiguration& configuration) {
        auto stream = std::move(capture.makeStream(filter, configuration, &probe)).value();
        EXPECT_TRUE(stream->addOutput(probe, StreamOutput::screen, probe.queue).ok());
        EXPECT_TRUE(startAndWait(*stream).ok());
        EXPECT_TRUE(probe.waitForPictures(1));
        return stream;
    }
    std::unique_ptr<CaptureStream> startDisplay(bool cursor = false) {
        StreamConfiguration configuration;
        configuration.width = 1280;
        configuration.height = 720;
        configuration.showsCursor = cursor;
        return start(ContentFilter::display(display, {}, {}), configuration);
    }
    /// What the stream shows once it has come to be as `wanted` and nothing changes any more.
    Sample settled(const std::function<bool(const Sample&)>& wanted) {
        client.sync();
        EXPECT_TRUE(probe.waitForLatest(wanted));
        probe.countAfterQuiet(kQuiet);
        return probe.pictures().back();
    }

    XTestServer server;
    XTestClient client{server.display()};
    StreamProbe probe;
    X11ScreenCapture capture{server.display(), nullptr, HostClock::shared()};
    DisplayId display = 0;
};

} // namespace velmo::test
