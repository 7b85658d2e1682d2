#include "RecorderFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::SizeIs;

/// A window that the user makes larger and smaller while it is recorded: the stream's pictures follow a little later.
class OverlayResize : public test::RecorderFixture {
protected:
    OverlayResize() {
        start();
        addOverlay(0, {20, 16});
        recorder->zoom().configure({0, 0, 64, 48});
    }

    /// The teacher's screen has it there, and the tracking tick tells so.
    void stand(const Rect& window) {
        BubbleInfo info;
        info.window = window;
        recorder->zoom().update({32, 24}, {info});
        recorder->resizeOverlay(0, window.size());
        queues.runAll();
    }
    /// An opaque white picture of the window.
    void picture(int width, int height) {
        const FrameRef image = PixelBuffer::create(PixelFormat::bgra, width, height);
        const PlaneView plane = image->plane(0);
        std::fill_n(plane.data, plane.stride * height, std::uint8_t{255});
        capture.stream(1).emit(test::frame(clock.now(), image), StreamOutput::screen);
        queues.runAll();
    }
    /// The next frame of the file is white in the window, y up, and as the screen was beside it.
    void expectWhite(const Rect& window) {
        show(time_ += 0.1);
        const FrameRef& shown = file().videoTrack.samples.back().image;
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 64; ++x) {
                const bool isInside = window.contains({x + 0.5, 47 - y + 0.5});
                ASSERT_EQ(shown->plane(0).row(y)[x], isInside ? 235 : 100) << x << ", " << y;
            }
        }
    }

    double time_ = 100;
};

TEST_F(OverlayResize, APictureOfTheOldSizeFillsTheWindowUntilOneOfTheNewSizeComes) {
    stand({5, 7, 20, 16});
    picture(20, 16);
    expectWhite({5, 7, 20, 16});
    stand({5, 7, 50, 33}); // the stream is still at the old size
    expectWhite({5, 7, 50, 33});
    picture(50, 33);
    expectWhite({5, 7, 50, 33});
    stand({9, 12, 11, 9});
    expectWhite({9, 12, 11, 9});
    picture(11, 9);
    expectWhite({9, 12, 11, 9});
}

TEST_F(OverlayResize, APictureOfTheNewSizeMayComeBeforeTheTick) {
    stand({5, 7, 20, 16});
    picture(40, 32);
    expectWhite({5, 7, 20, 16});
    stand({5, 7, 40, 32});
    expectWhite({5, 7, 40, 32});
}

TEST_F(OverlayResize, EachNewSizeReachesTheStreamInItsOrder) {
    for (int side = 20; side < 40; side += 4) {
        stand({5, 5, static_cast<double>(side), static_cast<double>(side)});
    }
    const auto& updates = capture.stream(1).updates;
    ASSERT_THAT(updates, SizeIs(5));
    for (std::size_t i = 0; i < updates.size(); ++i) {
        EXPECT_EQ(updates[i].width, 20 + 4 * static_cast<int>(i));
        EXPECT_EQ(updates[i].pixelFormat, PixelFormat::bgra);
    }
}

TEST_F(OverlayResize, AnOldPictureInUseStaysWholeWhenTheNextComes) {
    stand({5, 7, 20, 16});
    picture(20, 16);
    const Sample held = [&] {
        expectWhite({5, 7, 20, 16});
        return file().videoTrack.samples.back();
    }();
    picture(40, 32);
    stand({5, 7, 40, 32});
    expectWhite({5, 7, 40, 32});
    EXPECT_EQ(held.image->plane(0).row(47 - 8)[6], 235);
    EXPECT_EQ(held.image->plane(0).row(47 - 30)[40], 100);
}

} // namespace
} // namespace velmo
