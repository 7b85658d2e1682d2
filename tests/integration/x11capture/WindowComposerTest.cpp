#include "ComposerProbe.h"
#include "OtherProcess.h"
#include "support/XTestClient.h"
#include "support/XTestServer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace velmo::test {
namespace {

constexpr x11::PixelRect kScreen{0, 0, 1280, 720};
constexpr std::uint32_t kRed = 0xffff0000;
constexpr std::uint32_t kGreen = 0xff00ff00;
constexpr std::uint32_t kBlue = 0xff0000ff;

constexpr std::uint32_t rgb(std::uint32_t color) {
    return color & 0xffffff;
}

class WindowComposer : public testing::Test {
protected:
    XTestServer server;
    XTestClient client{server.display()};
};

TEST_F(WindowComposer, ShowsTheRootsOwnColourWhereNoWindowLies) {
    client.setRootColor(0x00123456);
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_EQ(probe.at(0, 0), 0x123456u);
    EXPECT_EQ(probe.at(1279, 719), 0x123456u);
}

TEST_F(WindowComposer, ShowsTheAnnouncedWallpaperAndItsChange) {
    client.setWallpaper({0, 0, 100, 50}, rgb(kRed), rgb(kGreen));
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_EQ(probe.at(10, 10), rgb(kGreen));
    EXPECT_EQ(probe.at(60, 60), rgb(kRed));
    EXPECT_EQ(probe.at(1230, 719), rgb(kGreen));
    EXPECT_EQ(probe.pixels(), client.rootPixels({0, 0, 1280, 720}));

    client.setWallpaper({0, 0, 100, 50}, rgb(kBlue), rgb(kGreen));
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(60, 60), rgb(kBlue));
}

TEST_F(WindowComposer, AWindowThatIsMappedMovedAndUnmappedLeavesNoTrace) {
    client.setRootColor(0);
    ComposerProbe probe(server.display(), kScreen);
    const auto window = client.show({100, 100, 200, 100}, {.color = kRed});
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(100, 100), rgb(kRed));
    EXPECT_EQ(probe.at(299, 199), rgb(kRed));
    EXPECT_EQ(probe.at(300, 100), 0u);

    client.move(window, 500, 300);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(100, 100), 0u);
    EXPECT_EQ(probe.at(500, 300), rgb(kRed));

    client.unmap(window);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(500, 300), 0u);
}

TEST_F(WindowComposer, OnlyWhatWasPaintedIsPaintedAgain) {
    const auto window = client.show({100, 100, 400, 300}, {.color = kRed});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    client.fill(window, {10, 20, 30, 40}, kGreen);
    client.sync();
    EXPECT_EQ(probe.update(), x11::Region(x11::PixelRect{110, 120, 30, 40}));
    EXPECT_TRUE(probe.update().isEmpty());
    EXPECT_EQ(probe.at(110, 120), rgb(kGreen));
    EXPECT_EQ(probe.at(109, 120), rgb(kRed));
}

TEST_F(WindowComposer, PaintingUnderAnOpaqueWindowPaintsNothing) {
    const auto below = client.show({100, 100, 400, 300}, {.color = kRed});
    client.show({50, 50, 600, 500}, {.color = kGreen});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    client.fill(below, {10, 20, 30, 40}, kBlue);
    client.sync();
    EXPECT_TRUE(probe.update().isEmpty());
}

TEST_F(WindowComposer, WhatIsToldOfAsPaintedIsPaintedThoughItNeverStopsBeingSo) {
    const auto window = client.show({0, 0, 1280, 720}, {.color = kRed});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    std::atomic<bool> ending = false;
    std::thread painter([&] {
        for (std::uint32_t n = 0; !ending; ++n) {
            client.fill(window, {0, 0, 64, 64}, kRed + n);
            client.sync();
        }
    });
    int empty = 0;
    for (int told = 0; told < 300;) {
        if (probe.handleEvents()) {
            ++told;
            empty += probe.compose().isEmpty() ? 1 : 0;
        }
    }
    ending = true;
    painter.join();
    EXPECT_EQ(empty, 0);
}

TEST_F(WindowComposer, TheBorderOfAWindowBelongsToIt) {
    client.show({100, 100, 50, 50}, {.border = 5, .color = kRed});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_EQ(probe.at(100, 100), 0xffffffu);
    EXPECT_EQ(probe.at(105, 105), rgb(kRed));
    EXPECT_EQ(probe.at(159, 159), 0xffffffu);
    EXPECT_EQ(probe.pixels(), client.rootPixels({0, 0, 1280, 720}));
}

TEST_F(WindowComposer, ATranslucentWindowIsBlendedWithWhatIsUnderIt) {
    const auto below = client.show({0, 0, 400, 400}, {.color = kGreen});
    client.show({100, 100, 100, 100}, {.alpha = true, .color = 0x80800000});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_EQ(probe.at(150, 150), 0x807f00u);
    client.fill(below, {0, 0, 400, 400}, kBlue);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(150, 150), 0x80007fu);
}

TEST_F(WindowComposer, OpacityOfAWindowIsFollowed) {
    client.setRootColor(0);
    const auto window = client.show({100, 100, 100, 100}, {.color = 0xffc8c8c8});
    client.setOpacity(window, 0.5);
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_NEAR(static_cast<int>(probe.at(150, 150) & 0xff), 100, 1);
    client.setOpacity(window, 0);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(150, 150), 0u);
    client.setOpacity(window, 1);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(150, 150), 0xc8c8c8u);
}

TEST_F(WindowComposer, AShapedWindowShowsOnlyItsShape) {
    client.setRootColor(0);
    const auto window = client.show({100, 100, 100, 100}, {.color = kRed});
    client.shape(window, {{0, 0, 20, 100}, {50, 50, 50, 50}});
    client.sync();
    ComposerProbe probe(server.display(), kScreen);
    EXPECT_EQ(probe.at(110, 110), rgb(kRed));
    EXPECT_EQ(probe.at(130, 110), 0u);
    EXPECT_EQ(probe.at(160, 160), rgb(kRed));
    client.unshape(window);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(130, 110), rgb(kRed));
}

TEST_F(WindowComposer, AnExcludedProcessIsNotInThePictureAndWhatLiesUnderItIs) {
    client.setRootColor(0);
    client.show({0, 0, 600, 600}, {.color = kGreen});
    client.sync();
    const OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    ComposerProbe probe(server.display(), kScreen, {{other.pid()}, {}});
    EXPECT_EQ(probe.at(150, 150), rgb(kGreen));
    EXPECT_EQ(differences(probe.pixels(), client.rootPixels({0, 0, 1280, 720})), 200 * 200);
}

TEST_F(WindowComposer, AnExceptedWindowOfAnExcludedProcessStays) {
    const OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    ComposerProbe probe(server.display(), kScreen, {{other.pid()}, {other.window()}});
    EXPECT_EQ(probe.at(150, 150), rgb(kRed));
}

TEST_F(WindowComposer, AWindowThatAnExcludedProcessOpensLaterIsLeftOutAsWell) {
    client.setRootColor(0);
    client.sync();
    OtherProcess other(server.display(), {0, 0, 10, 10}, kBlue);
    ComposerProbe probe(server.display(), kScreen, {{other.pid()}, {}});
    other.openAnother();
    const x11::Region painted = probe.update();
    EXPECT_TRUE(painted.isEmpty());
    EXPECT_EQ(differences(probe.pixels(), std::vector<std::uint32_t>(1280 * 720, 0)), 0);
}

TEST_F(WindowComposer, AnExcludedWindowThatIsMovedAsksForNoPicture) {
    const OtherProcess other(server.display(), {100, 100, 100, 100}, kRed);
    const auto own = client.show({300, 100, 100, 100}, {.color = kGreen});
    client.sync();
    ComposerProbe probe(server.display(), kScreen, {{other.pid()}, {}});
    probe.handleEvents(); // of the windows' first appearance
    client.move(other.window(), 120, 140);
    client.sync();
    EXPECT_FALSE(probe.handleEvents());

    client.move(own, 320, 140);
    client.sync();
    EXPECT_TRUE(probe.handleEvents());
}

TEST_F(WindowComposer, AManagedWindowBelongsToItsClientAndNotToTheFrame) {
    client.setRootColor(0);
    OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    // what a window manager does: a frame, the client in it, the mark
    const auto frame = client.create({90, 80, 220, 230}, {.color = kBlue});
    xcb_reparent_window(client.xcb(), other.window(), frame, 10, 20);
    client.setCardinal(other.window(), "WM_STATE", 1, client.atom("WM_STATE"));
    client.map(frame);
    client.map(other.window());
    client.sync();
    ComposerProbe without(server.display(), kScreen, {{other.pid()}, {}});
    EXPECT_EQ(without.at(95, 95), 0u);
    EXPECT_EQ(without.at(150, 150), 0u);
    ComposerProbe excepted(server.display(), kScreen, {{other.pid()}, {other.window()}});
    EXPECT_EQ(excepted.at(95, 95), rgb(kBlue));
    EXPECT_EQ(excepted.at(150, 150), rgb(kRed));
}

TEST_F(WindowComposer, AClientThatIsFramedLaterIsStillKnown) {
    client.setRootColor(0);
    OtherProcess other(server.display(), {100, 100, 200, 200}, kRed);
    ComposerProbe probe(server.display(), kScreen, {{other.pid()}, {}});
    EXPECT_EQ(probe.at(150, 150), 0u);
    const auto frame = client.show({90, 80, 220, 230}, {.color = kBlue});
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(95, 95), rgb(kBlue));
    xcb_reparent_window(client.xcb(), other.window(), frame, 10, 20);
    client.sync();
    probe.update();
    client.setCardinal(other.window(), "WM_STATE", 1, client.atom("WM_STATE"));
    client.sync();
    probe.update();
    EXPECT_EQ(probe.at(95, 95), 0u);
}

TEST_F(WindowComposer, APartOfTheRootHasItsOwnCorner) {
    client.setRootColor(0);
    client.show({640, 360, 10, 10}, {.color = kRed});
    client.sync();
    ComposerProbe probe(server.display(), {640, 360, 640, 360});
    EXPECT_EQ(probe.picture().width, 640);
    EXPECT_EQ(probe.at(0, 0), rgb(kRed));
    EXPECT_EQ(probe.at(10, 10), 0u);
}

TEST_F(WindowComposer, OneWindowHasItsAlphaAndNothingElse) {
    client.setRootColor(rgb(kBlue));
    const auto window = client.show({100, 100, 60, 40}, {.alpha = true, .color = 0});
    client.fill(window, {10, 10, 20, 20}, 0x80800000);
    client.show({90, 90, 200, 200}, {.color = kGreen}); // over it
    client.sync();
    ComposerProbe probe(server.display(), window);
    EXPECT_EQ(probe.picture().width, 60);
    EXPECT_EQ(probe.at(0, 0), 0u);
    EXPECT_EQ(probe.at(15, 15), 0x80800000u);
}

TEST_F(WindowComposer, OneWindowWithoutAlphaIsOpaqueWithinItsShape) {
    const auto window = client.show({100, 100, 60, 40}, {.color = kRed});
    client.shape(window, {{0, 0, 30, 40}});
    client.sync();
    ComposerProbe probe(server.display(), window);
    EXPECT_EQ(probe.at(10, 10), kRed);
    EXPECT_EQ(probe.at(40, 10), 0u);
}

TEST_F(WindowComposer, OneWindowIsFollowedThroughResizeAndMoves) {
    const auto window = client.show({100, 100, 60, 40}, {.alpha = true, .color = 0x40400000});
    client.sync();
    ComposerProbe probe(server.display(), window);
    const auto before = probe.pixels();
    client.move(window, 300, 200);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.pixels(), before);
    client.resize(window, 200, 90);
    client.sync();
    probe.update();
    EXPECT_EQ(probe.picture().width, 200);
    EXPECT_EQ(probe.picture().height, 90);
    EXPECT_EQ(probe.at(199, 89), 0x40400000u);
    client.destroy(window);
    client.sync();
    EXPECT_TRUE(probe.update().isEmpty());
}

} // namespace
} // namespace velmo::test
