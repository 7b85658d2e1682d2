#include "OtherProcess.h"
#include "X11CaptureFixture.h"

#include <gtest/gtest.h>

namespace velmo::test {
namespace {

class StillPicture : public X11Capture {
protected:
    StillPicture() {
        wish.width = 1280;
        wish.height = 720;
        wish.pixelFormat = PixelFormat::bgra;
        wish.showsCursor = false;
    }
    Result<FrameRef> shoot(const ContentFilter& filter) {
        std::promise<Result<FrameRef>> answer;
        capture.captureImage(filter, wish, [&](Result<FrameRef> picture) { answer.set_value(std::move(picture)); });
        return answer.get_future().get();
    }
    static std::uint32_t at(const FrameRef& picture, int x, int y) {
        Sample sample;
        sample.image = picture;
        return bgraAt(sample, x, y) & 0xffffff;
    }
    StreamConfiguration wish;
};

TEST_F(StillPicture, IsTheDisplayAsItIsNow) {
    const auto window = client.show({100, 100, 200, 100}, {.color = kRed});
    client.sync();
    const auto first = shoot(ContentFilter::display(display, {}, {}));
    ASSERT_TRUE(first.ok());
    EXPECT_EQ(at(first.value(), 150, 150), 0xff0000u);
    EXPECT_EQ(at(first.value(), 50, 50), 0u);
    client.fill(window, {0, 0, 200, 100}, kGreen);
    client.sync();
    EXPECT_EQ(at(shoot(ContentFilter::display(display, {}, {})).value(), 150, 150), 0x00ff00u);
    EXPECT_EQ(at(first.value(), 150, 150), 0xff0000u) << "the first is as it was";
}

TEST_F(StillPicture, LeavesOutAProcessButForTheWindowsExcepted) {
    client.show({0, 0, 640, 720}, {.color = kGreen});
    client.sync();
    OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    EXPECT_EQ(at(shoot(ContentFilter::display(display, {other.pid()}, {})).value(), 150, 150), 0x00ff00u);
    EXPECT_EQ(at(shoot(ContentFilter::display(display, {other.pid()}, {other.window()})).value(), 150, 150), 0xff0000u);
}

TEST_F(StillPicture, HasTheSizeAndTheFormatAskedFor) {
    client.show({0, 0, 640, 720}, {.color = kWhite});
    client.sync();
    wish.width = 640;
    wish.height = 360;
    wish.pixelFormat = PixelFormat::nv12;
    const auto picture = shoot(ContentFilter::display(display, {}, {}));
    ASSERT_TRUE(picture.ok());
    EXPECT_EQ(picture.value()->width(), 640);
    Sample sample;
    sample.image = picture.value();
    EXPECT_EQ(yuvAt(sample, 100, 100), kWhiteYuv);
    EXPECT_EQ(yuvAt(sample, 500, 100), kBlackYuv);
}

TEST_F(StillPicture, ShowsThePointerOnlyWhereItIsAskedFor) {
    client.setSquareCursor(20, 0xffff, 0, 0);
    client.warpPointer(400, 300);
    client.sync();
    EXPECT_EQ(at(shoot(ContentFilter::display(display, {}, {})).value(), 400, 300), 0u);
    wish.showsCursor = true;
    EXPECT_EQ(at(shoot(ContentFilter::display(display, {}, {})).value(), 400, 300), 0xff0000u);
}

TEST_F(StillPicture, FailsForADisplayOrAWindowThatIsNotThere) {
    EXPECT_FALSE(shoot(ContentFilter::display(0x7fffff, {}, {})).ok());
    EXPECT_FALSE(shoot(ContentFilter::window(0x7fffff)).ok());
}

TEST_F(StillPicture, TakesNothingFromAStreamThatRuns) {
    const auto window = client.show({100, 100, 200, 100}, {.color = kRed});
    const auto stream = startDisplay();
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(shoot(ContentFilter::display(display, {}, {})).ok());
    }
    client.fill(window, {0, 0, 200, 100}, kGreen);
    EXPECT_EQ(yuvAt(settled(shows(150, 150, kGreenYuv)), 150, 150), kGreenYuv);
    EXPECT_TRUE(probe.errors().empty());
    stopAndWait(*stream);
}

} // namespace
} // namespace velmo::test
