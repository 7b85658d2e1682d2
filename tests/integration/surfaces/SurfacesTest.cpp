#include "platform/desktop/XInputPointerMotion.h"
#include "session/QtTimers.h"
#include "support/PaintDamage.h"
#include "support/WaitUntil.h"
#include "support/XTestClient.h"
#include "surfaces/RegionPicker.h"
#include "surfaces/SpotlightOverlay.h"
#include "surfaces/internal/PickerPanel.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <optional>
#include <vector>

namespace velmo {
namespace {

using namespace std::chrono_literals;
using test::pass;
using test::waitUntil;

constexpr std::uint8_t kEscape = 9; // X key codes
constexpr double kHeight = 1080;

/// The real mouse; counts how often it is looked at.
class Mouse final : public PointerPort {
public:
    Point location() const override {
        ++looks;
        return {static_cast<double>(QCursor::pos().x()), kHeight - QCursor::pos().y()};
    }
    mutable int looks = 0;
};

class Surfaces : public testing::Test {
protected:
    Surfaces() { moveMouse(960, 540); }

    void moveMouse(int x, int y) {
        client.movePointer(x, y);
        client.sync();
    }
    void button(bool down) {
        xcb_test_fake_input(client.xcb(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, 0, client.root(), 0, 0, 0);
        client.sync();
    }
    void key(std::uint8_t code) {
        xcb_test_fake_input(client.xcb(), XCB_KEY_PRESS, code, 0, client.root(), 0, 0, 0);
        xcb_test_fake_input(client.xcb(), XCB_KEY_RELEASE, code, 0, client.root(), 0, 0, 0);
        client.sync();
    }
    /// By the server's word and by Qt's, which hears of it later.
    bool hasKeyboard(const QWidget& window) { return client.focus() == window.winId() && window.isActiveWindow(); }
    std::uint32_t pixel(int x, int y) { return client.rootPixels({x, y, 1, 1}).front(); }
    void circle(double seconds) {
        for (int i = 0; i <= 52; ++i) {
            const double angle = 2 * std::numbers::pi * i / 40;
            moveMouse(static_cast<int>(960 + 120 * std::cos(angle)), static_cast<int>(540 + 120 * std::sin(angle)));
            pass(std::chrono::milliseconds(static_cast<int>(seconds * 1000 / 52)));
        }
    }

    test::XTestClient client{qEnvironmentVariable("DISPLAY").toStdString()};
    const Screen screen{1, {0, 0, 1920, kHeight}, 1};
    const HostClock& clock = HostClock::shared();
    QtTimers timers;
    Mouse mouse;
    XInputPointerMotion motion;
    std::vector<double> circles;
    SpotlightOverlay overlay{
        {clock, timers, mouse, motion, [] { return std::vector<Color>{Color::fromHex(0xB6F000)}; }}};
    RegionPicker picker;
};

TEST_F(Surfaces, AClickGoesThroughTheOverlayToTheWindowBelow) {
    test::XTestClient::WindowOptions light;
    light.color = 0xffc8c8c8;
    const xcb_window_t below = client.create({0, 0, 1920, 1080}, light);
    const std::uint32_t mask = XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_change_window_attributes(client.xcb(), below, XCB_CW_EVENT_MASK, &mask);
    client.map(below);
    overlay.start(screen, true);
    overlay.setSpotlight(true);
    ASSERT_TRUE(waitUntil([&] { return pixel(100, 100) == 0x4c4c4c; })) << "the screen is dim there";
    EXPECT_TRUE(waitUntil([&] { return pixel(960, 540) == 0xc8c8c8; })) << "and light in the spot";
    moveMouse(100, 100);
    button(true);
    button(false);
    bool clicked = false;
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(client.xcb()),
                                                                                  &std::free}) {
        clicked = clicked || (event->response_type & 0x7f) == XCB_BUTTON_PRESS;
    }
    EXPECT_TRUE(clicked);
}

TEST_F(Surfaces, ASpotlightThatRestsPaintsNothing) {
    overlay.start(screen, true);
    overlay.setSpotlight(true);
    pass(1500ms);
    test::PaintDamage damage(client, static_cast<xcb_window_t>(overlay.view()->spot().winId()));
    pass(3s);
    damage.read();
    EXPECT_EQ(damage.events, 0);
}

TEST_F(Surfaces, AMovingSpotPaintsFarLessThanTheScreen) {
    overlay.start(screen, true);
    overlay.setSpotlight(true);
    pass(1500ms);
    test::PaintDamage damage(client, static_cast<xcb_window_t>(overlay.view()->spot().winId()));
    for (int i = 0; i < 60; ++i) {
        moveMouse(960 + 5 * i, 540);
        pass(16ms);
    }
    damage.read();
    ASSERT_GT(damage.events, 0);
    // At 1.4 discs a tick, 60 ticks are 84 discs; a whole screen each would be 124 million.
    EXPECT_LT(damage.pixels, 35'000'000);
}

TEST_F(Surfaces, AMouseThatRestsIsHardlyLookedAtUntilItMoves) {
    overlay.setOnCircle([this](double time) { circles.push_back(time); });
    overlay.start(screen, true);
    ASSERT_TRUE(waitUntil([&] { return !overlay.isTicking(); }));
    const int looks = mouse.looks;
    pass(1s);
    EXPECT_LE(mouse.looks, looks + 6);
    circle(0.5);
    EXPECT_TRUE(waitUntil([&] { return circles.size() == 1; }));
    EXPECT_TRUE(overlay.view()->bubble().isVisible());
    EXPECT_TRUE(waitUntil([&] { return !overlay.isTicking(); })) << "it rests again when the bubble has gone";
    EXPECT_FALSE(overlay.view()->bubble().isVisible());
}

TEST_F(Surfaces, ThePickerGivesTheRectangleThatWasDragged) {
    std::optional<Rect> picked;
    int ends = 0;
    picker.pick(screen, {}, QStringLiteral("Arrastra"), [&](std::optional<Rect> rect) {
        picked = rect;
        ++ends;
    });
    ASSERT_TRUE(waitUntil([&] { return client.focus() == picker.panel()->winId(); }));
    moveMouse(480, 270);
    button(true);
    for (int i = 1; i <= 10; ++i) {
        moveMouse(480 + 96 * i, 270 + 54 * i);
        pass(10ms);
    }
    button(false);
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    ASSERT_TRUE(picked.has_value());
    EXPECT_NEAR(picked->x, 0.25, 0.001);
    EXPECT_NEAR(picked->y, 0.25, 0.001);
    EXPECT_NEAR(picked->width, 0.5, 0.001);
    EXPECT_NEAR(picked->height, 0.5, 0.001);
}

TEST_F(Surfaces, ThePickerHasTheKeyboardWhileItIsOpenAndGivesItBack) {
    QWidget other;
    other.setGeometry(200, 200, 300, 200);
    other.show();
    other.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(other); }));
    int ends = 0;
    picker.pick(screen, {}, QStringLiteral("Arrastra"), [&](std::optional<Rect> rect) { ends += rect ? 100 : 1; });
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); }));
    key(kEscape);
    EXPECT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_TRUE(waitUntil([&] { return hasKeyboard(other); }));
    pass(200ms);
    EXPECT_EQ(client.focus(), other.winId()) << "and it stays there";
}

TEST_F(Surfaces, EscapeLeavesThePickerAlsoAfterTheKeyboardHasGoneElsewhere) {
    const xcb_window_t other = client.create({200, 200, 300, 200}, {});
    client.map(other);
    int ends = 0;
    picker.pick(screen, {}, QStringLiteral("Arrastra"), [&](std::optional<Rect> rect) { ends += rect ? 100 : 1; });
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); }));
    pass(300ms); // the moment in which it looks whether it has come up with the keyboard is over
    const auto takeAway = [&] {
        xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, other, XCB_CURRENT_TIME);
        client.sync();
    };
    takeAway();
    EXPECT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); })) << "it comes back once by itself";
    takeAway();
    pass(300ms);
    EXPECT_EQ(client.focus(), other) << "but does not fight for it";
    moveMouse(960, 540);
    button(true);
    button(false);
    EXPECT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); })) << "it comes with a click";
    key(kEscape);
    EXPECT_TRUE(waitUntil([&] { return ends == 1; }));
}

TEST_F(Surfaces, ThePickerComesUpAlthoughTheOneWhoHadTheKeyboardHasGone) {
    auto other = std::make_unique<QWidget>();
    other->setGeometry(200, 200, 300, 200);
    other->show();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(*other); }));
    int ends = 0;
    picker.pick(screen, {}, QStringLiteral("Arrastra"), [&](std::optional<Rect>) { ++ends; });
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); }));
    other.reset();
    pass(100ms);
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(*picker.panel()); }));
    key(kEscape);
    EXPECT_TRUE(waitUntil([&] { return ends == 1; }));
}

} // namespace
} // namespace velmo
