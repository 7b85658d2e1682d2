#include "ComposerProbe.h"
#include "OtherProcess.h"
#include "RandomDesktop.h"
#include "support/ChildProcess.h"
#include "support/XTestServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace velmo::test {
namespace {

constexpr x11::PixelRect kScreen{0, 0, 1280, 720};
constexpr int kRounds = 60;

enum class Oracle { freshComposer, freshComposerAndRoot };

/// A compositing manager on `display`, running once this returns.
std::unique_ptr<ChildProcess> startPicom(const std::string& display) {
    XTestClient client(display);
    auto picom = std::make_unique<ChildProcess>(
        std::vector<std::string>{"picom", "--config", "/dev/null", "--backend", "xrender"}, display);
    const xcb_atom_t selection = client.atom("_NET_WM_CM_S0");
    for (int i = 0; i < 200; ++i) {
        std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
            xcb_get_selection_owner_reply(client.xcb(), xcb_get_selection_owner(client.xcb(), selection), nullptr),
            &std::free);
        if (owner != nullptr && owner->owner != XCB_NONE) {
            return picom;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ADD_FAILURE() << "picom did not start";
    return picom;
}

class Incremental : public testing::TestWithParam<unsigned> {
protected:
    /// Random steps with pictures in between; each picture must be what a composer that begins now sees.
    void compare(RandomDesktop& desktop, ComposerProbe& probe, const x11::Exclusion& exclusion, Oracle oracle,
                 int rounds) {
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            for (int i = 0; i < 6; ++i) {
                desktop.step();
                if (i % 2 == 0) {
                    probe.update(); // in the middle of things, with whatever the server has done so far
                }
            }
            desktop.sync();
            probe.update();
            const ComposerProbe fresh(server.display(), kScreen, exclusion);
            EXPECT_EQ(differences(probe.pixels(), fresh.pixels()), 0) << "round " << round;
            if (oracle == Oracle::freshComposerAndRoot) {
                EXPECT_EQ(differences(probe.pixels(), client.rootPixels({0, 0, 1280, 720})), 0) << "round " << round;
            }
        }
    }

    XTestServer server;
    XTestClient client{server.display()};
};

TEST_P(Incremental, EqualsTheScreenItselfWhenAllIsOpaque) {
    client.setWallpaper({0, 0, 90, 70}, 0x203040, 0x405060);
    client.sync();
    RandomDesktop desktop(server.display(), GetParam(), RandomDesktop::Kinds::opaque);
    ComposerProbe probe(server.display(), kScreen);
    compare(desktop, probe, {}, Oracle::freshComposerAndRoot, kRounds);
}

TEST_P(Incremental, EqualsAFreshPictureOfTranslucentAndShapedWindows) {
    client.setRootColor(0x203040);
    client.sync();
    RandomDesktop desktop(server.display(), GetParam(), RandomDesktop::Kinds::all);
    ComposerProbe probe(server.display(), kScreen);
    compare(desktop, probe, {}, Oracle::freshComposer, kRounds);
}

TEST_P(Incremental, EqualsAFreshPictureWithoutAnExcludedProcess) {
    client.setRootColor(0x203040);
    client.sync();
    const OtherProcess other(server.display(), {200, 100, 700, 500}, 0xffff0000);
    const x11::Exclusion exclusion{{other.pid()}, {}};
    RandomDesktop desktop(server.display(), GetParam(), RandomDesktop::Kinds::all);
    ComposerProbe probe(server.display(), kScreen, exclusion);
    compare(desktop, probe, exclusion, Oracle::freshComposer, kRounds);
}

TEST_P(Incremental, EqualsAFreshPictureWithACompositingManagerStartedAndEnded) {
    client.setRootColor(0x203040);
    client.sync();
    RandomDesktop desktop(server.display(), GetParam(), RandomDesktop::Kinds::all);
    ComposerProbe probe(server.display(), kScreen);
    compare(desktop, probe, {}, Oracle::freshComposer, kRounds / 4);
    for (const int signal : {SIGTERM, SIGKILL}) {
        auto picom = startPicom(server.display());
        compare(desktop, probe, {}, Oracle::freshComposer, kRounds / 2);
        picom->end(signal);
        compare(desktop, probe, {}, Oracle::freshComposer, kRounds / 4);
    }
}

TEST_P(Incremental, EqualsAFreshPictureWhenTheCompositingManagerWasThereFirst) {
    auto picom = startPicom(server.display());
    RandomDesktop desktop(server.display(), GetParam(), RandomDesktop::Kinds::all);
    ComposerProbe probe(server.display(), kScreen);
    compare(desktop, probe, {}, Oracle::freshComposer, kRounds / 2);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Incremental, testing::Values(1u, 2u, 3u));

} // namespace
} // namespace velmo::test
