#include "OtherProcess.h"
#include "X11CaptureFixture.h"

#include <gtest/gtest.h>

namespace velmo::test {
namespace {

TEST_F(X11Capture, TheQueryListsDisplaysWindowsAndTheirApplications) {
    const OtherProcess other(server.display(), {100, 120, 200, 50}, kRed);
    const auto mine = client.show({10, 20, 30, 40}, {.border = 2});
    client.setText(mine, "_NET_WM_NAME", "Clase de física");
    client.create({0, 0, 10, 10}, {}); // not shown, so not listed
    client.sync();

    const ShareableContent content = query();

    ASSERT_EQ(content.displays.size(), 1u);
    EXPECT_EQ(content.displays[0].frame, (Rect{0, 0, 1280, 720}));
    EXPECT_EQ(content.displays[0].width, 1280);
    ASSERT_EQ(content.windows.size(), 2u);
    EXPECT_EQ(content.windows[0].windowID, other.window());
    EXPECT_EQ(content.windows[0].owningProcessID, other.pid());
    EXPECT_EQ(content.windows[0].frame, (Rect{100, 720 - 120 - 50, 200, 50}));
    EXPECT_EQ(content.windows[1].windowID, mine);
    EXPECT_EQ(content.windows[1].owningProcessID, getpid());
    EXPECT_EQ(content.windows[1].title, "Clase de física");
    EXPECT_EQ(content.windows[1].frame, (Rect{10, 720 - 20 - 44, 34, 44}));
    ASSERT_EQ(content.applications.size(), 2u);
    EXPECT_EQ(content.applications[1].processID, getpid());
    EXPECT_FALSE(content.applications[1].name.empty());
}

TEST_F(X11Capture, TheFirstPictureComesUnaskedAndThenNoneWhileNothingChanges) {
    client.show({100, 100, 200, 100}, {.color = kRed});
    client.sync();
    const auto before = HostClock::shared().now();
    const auto stream = startDisplay();
    EXPECT_EQ(probe.countAfterQuiet(400), 1u);
    const Sample picture = probe.pictures()[0];
    EXPECT_TRUE(frameIsComplete(picture));
    EXPECT_EQ(yuvAt(picture, 150, 150), kRedYuv);
    EXPECT_EQ(yuvAt(picture, 50, 50), kBlackYuv);
    EXPECT_TRUE(picture.presentation() >= before && picture.presentation() <= HostClock::shared().now());
    EXPECT_EQ(picture.timing.duration, MediaTime(1, 30));
    stopAndWait(*stream);
}

TEST_F(X11Capture, AChangeAfterAPauseIsDeliveredWithinAnInterval) {
    const auto window = client.show({100, 100, 200, 100}, {.color = kRed});
    const auto stream = startDisplay();
    for (int i = 0; i < 10; ++i) {
        pauseFor(120);
        probe.forget();
        client.fill(window, {0, 0, 200, 100}, i % 2 == 0 ? kGreen : kRed);
        client.sync();
        const auto painted = HostClock::shared().now();
        ASSERT_TRUE(probe.waitForPictures(1));
        const double delay = (probe.pictures()[0].presentation() - painted).seconds();
        EXPECT_LT(delay, 1.0 / 30);
        EXPECT_EQ(yuvAt(probe.pictures()[0], 150, 150), i % 2 == 0 ? kGreenYuv : kRedYuv);
    }
    stopAndWait(*stream);
}

TEST_F(X11Capture, PicturesThatAreHeldAreNeverWrittenAgain) {
    const auto window = client.show({0, 0, 1280, 720}, {.color = 0xff000000});
    const auto stream = startDisplay();
    for (int i = 1; i <= 5; ++i) { // the probe holds them all
        client.fill(window, {0, 0, 640, 720}, 0xff000000u | static_cast<std::uint32_t>(i * 40) * 0x010101u);
        client.sync();
        ASSERT_TRUE(probe.waitForPictures(static_cast<std::size_t>(i) + 1));
    }
    const auto pictures = probe.pictures();
    ASSERT_EQ(pictures.size(), 6u);
    for (int i = 1; i <= 5; ++i) {
        const int expected = static_cast<int>(16.5 + i * 40 * 219.0 / 255);
        EXPECT_EQ(yuvAt(pictures[static_cast<std::size_t>(i)], 100, 100).y, expected);
        EXPECT_EQ(yuvAt(pictures[static_cast<std::size_t>(i)], 1000, 100), kBlackYuv);
    }
    stopAndWait(*stream);
}

TEST_F(X11Capture, WhileAllBuffersAreHeldNoneComesAndTheNextShowsEverything) {
    const auto window = client.show({0, 0, 1280, 720}, {.color = 0xff000000});
    const auto stream = startDisplay();
    for (int i = 0; i < 20; ++i) {
        client.fill(window, {i * 20, 0, 10, 10}, kWhite);
        client.sync();
        pauseFor(40);
    }
    EXPECT_EQ(probe.pictures().size(), 6u);
    probe.forget();
    ASSERT_TRUE(probe.waitForPictures(1));
    const Sample last = settled(shows(19 * 20 + 4, 4, kWhiteYuv));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(yuvAt(last, i * 20 + 4, 4), kWhiteYuv) << i;
        EXPECT_EQ(yuvAt(last, i * 20 + 14, 4), kBlackYuv) << i;
    }
    stopAndWait(*stream);
}

TEST_F(X11Capture, ThePointerIsInThePictureAndFollowed) {
    client.setSquareCursor(16, 0xffff, 0, 0);
    client.movePointer(200, 300);
    client.sync();
    const auto stream = startDisplay(true);
    EXPECT_EQ(yuvAt(settled(shows(200, 300, kRedYuv)), 200, 300), kRedYuv);
    client.movePointer(500, 400);
    Sample picture = settled(shows(500, 400, kRedYuv));
    EXPECT_EQ(yuvAt(picture, 200, 300), kBlackYuv);
    EXPECT_EQ(yuvAt(picture, 500, 400), kRedYuv);
    EXPECT_EQ(yuvAt(picture, 494, 394), kRedYuv);
    EXPECT_EQ(yuvAt(picture, 510, 400), kBlackYuv);
    probe.forget();
    client.warpPointer(700, 100); // no event tells of it
    client.sync();
    ASSERT_TRUE(probe.waitForPictures(1));
    picture = settled(shows(700, 100, kRedYuv));
    EXPECT_EQ(yuvAt(picture, 500, 400), kBlackYuv);
    EXPECT_EQ(yuvAt(picture, 700, 100), kRedYuv);
    client.setSquareCursor(16, 0xffff, 0xffff, 0xffff);
    EXPECT_EQ(yuvAt(settled(shows(700, 100, kWhiteYuv)), 700, 100), kWhiteYuv);
    stopAndWait(*stream);
}

TEST_F(X11Capture, ThePointerIsNotInThePictureUnlessAskedFor) {
    client.setSquareCursor(16, 0xffff, 0, 0);
    client.movePointer(200, 300);
    client.sync();
    const auto stream = startDisplay(false);
    EXPECT_EQ(yuvAt(settled(shows(200, 300, kBlackYuv)), 200, 300), kBlackYuv);
    client.movePointer(500, 400);
    client.sync();
    EXPECT_EQ(probe.countAfterQuiet(200), 1u);
    stopAndWait(*stream);
}

TEST_F(X11Capture, AnotherSizeIsScaledTo) {
    const auto window = client.show({0, 0, 640, 720}, {.color = kRed});
    StreamConfiguration configuration;
    configuration.width = 1920;
    configuration.height = 1080;
    configuration.showsCursor = false;
    const auto stream = start(ContentFilter::display(display, {}, {}), configuration);
    Sample picture = settled(shows(950, 1079, kRedYuv));
    EXPECT_EQ(picture.image->width(), 1920);
    EXPECT_EQ(yuvAt(picture, 950, 1079), kRedYuv);
    EXPECT_EQ(yuvAt(picture, 970, 0), kBlackYuv);
    client.fill(window, {100, 100, 40, 40}, kGreen);
    picture = settled(shows(180, 180, kGreenYuv));
    EXPECT_EQ(yuvAt(picture, 180, 180), kGreenYuv);
    EXPECT_EQ(yuvAt(picture, 100, 180), kRedYuv);
    stopAndWait(*stream);
}

TEST_F(X11Capture, ADisplayCanBeHadAsBgra) {
    client.show({0, 0, 640, 720}, {.color = kRed});
    StreamConfiguration configuration;
    configuration.width = 1280;
    configuration.height = 720;
    configuration.pixelFormat = PixelFormat::bgra;
    configuration.showsCursor = false;
    const auto stream = start(ContentFilter::display(display, {}, {}), configuration);
    EXPECT_EQ(bgraAt(settled(shows(10, 10, kRed)), 10, 10), kRed);
    EXPECT_EQ(bgraAt(settled(shows(1270, 10, 0xff000000u)), 1270, 10), 0xff000000u);
    stopAndWait(*stream);
}

TEST_F(X11Capture, AWindowAloneHasItsAlphaAndItsConfiguredSize) {
    const auto window = client.show({100, 100, 60, 40}, {.alpha = true, .color = 0x80008000});
    client.sync();
    StreamConfiguration configuration;
    configuration.width = 60;
    configuration.height = 40;
    configuration.queueDepth = 3;
    configuration.pixelFormat = PixelFormat::bgra;
    configuration.showsCursor = false;
    const auto stream = start(ContentFilter::window(window), configuration);
    EXPECT_EQ(bgraAt(settled(shows(30, 20, 0x80008000u)), 30, 20), 0x80008000u);

    client.resize(window, 120, 80); // scaled into the old size until told
    const Sample picture = settled(shows(59, 39, 0x80008000u));
    EXPECT_EQ(picture.image->width(), 60);
    EXPECT_EQ(bgraAt(picture, 59, 39), 0x80008000u);

    probe.forget();
    configuration.width = 120;
    configuration.height = 80;
    std::promise<void> updated;
    stream->updateConfiguration(configuration, [&](Result<void> result) {
        EXPECT_TRUE(result.ok());
        updated.set_value();
    });
    updated.get_future().get();
    ASSERT_TRUE(probe.waitForPictures(1));
    EXPECT_EQ(probe.pictures().back().image->width(), 120);

    client.fill(window, {0, 0, 120, 80}, 0x40400000);
    EXPECT_EQ(bgraAt(settled(shows(100, 70, 0x40400000u)), 100, 70), 0x40400000u);
    client.destroy(window);
    client.sync();
    const std::size_t count = probe.countAfterQuiet(200);
    EXPECT_EQ(probe.countAfterQuiet(200), count);
    EXPECT_TRUE(probe.errors().empty());
    stopAndWait(*stream);
}

TEST_F(X11Capture, AnExcludedProcessIsLeftOutAndItsPaintingMakesNoPicture) {
    client.show({0, 0, 640, 720}, {.color = kGreen});
    client.sync();
    OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    StreamConfiguration configuration;
    configuration.width = 1280;
    configuration.height = 720;
    configuration.showsCursor = false;
    const auto stream = start(ContentFilter::display(display, {other.pid()}, {}), configuration);
    EXPECT_EQ(yuvAt(settled(shows(150, 150, kGreenYuv)), 150, 150), kGreenYuv);
    const std::size_t count = probe.pictures().size();
    other.openAnother();
    EXPECT_EQ(probe.countAfterQuiet(200), count);
    stopAndWait(*stream);
}

} // namespace
} // namespace velmo::test
