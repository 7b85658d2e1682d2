#include "base/Clock.h"
#include "platform/desktop/QtScreens.h"
#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/CameraPictures.h"
#include "support/MemoryDefaultsStore.h"
#include "support/PaintCount.h"
#include "support/PaintDamage.h"
#include "support/WaitUntil.h"
#include "support/XTestClient.h"
#include "surfaces/BubbleController.h"

#include <QApplication>
#include <QMenu>

#include <gmock/gmock.h>

#include <chrono>

namespace velmo {
namespace {

using namespace std::chrono_literals;
using test::pass;
using test::waitUntil;

constexpr std::uint32_t kDesk = 0x405060;

/// A bubble of a white camera on a private desktop, at 300, 300 in X's coordinates; its panel is 264 wide.
class Bubble : public testing::Test {
protected:
    Bubble() {
        test::XTestClient::WindowOptions desk;
        desk.color = 0xff000000U | kDesk;
        client.show({0, 0, 1920, 1080}, desk);
        moveMouse(1800, 100);
        prefs.ringStyle = RingStyle::none;
        store.setReal(QStringLiteral("bubbleX"), 300);
        store.setReal(QStringLiteral("bubbleY"), 1080 - 300 - 264);
        feed.publish(test::flatCameraPicture({1280, 720}, Qt::white));
        bubble.show();
        const bool shown = waitUntil([this] { return pixel(432, 432) == 0xffffffU; });
        EXPECT_TRUE(shown);
    }

    void moveMouse(int x, int y) {
        client.movePointer(x, y);
        client.sync();
    }
    void button(int number, bool down) {
        xcb_test_fake_input(client.xcb(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE,
                            static_cast<std::uint8_t>(number), 0, client.root(), 0, 0, 0);
        client.sync();
    }
    void click(int number = 1) {
        button(number, true);
        button(number, false);
    }
    std::uint32_t pixel(int x, int y) { return client.rootPixels({x, y, 1, 1}).front() & 0xffffff; }
    bool hasControls() { return bubble.controls() != nullptr && bubble.controls()->isVisible(); }

    test::XTestClient client{qEnvironmentVariable("DISPLAY").toStdString()};
    test::MemoryDefaultsStore store;
    Prefs prefs{store};
    QtScreens screens;
    QtTimers timers;
    CameraFeed feed;
    BubbleController bubble{
        {prefs, screens, HostClock::shared(), timers, feed, [](auto&&...) { return std::optional<NameTag::Image>(); }},
        {[] { return true; }, {}}};
};

TEST_F(Bubble, LeavesTheDesktopAtItsCornersAndTakesNoMouseThere) {
    EXPECT_EQ(pixel(301, 301), kDesk);
    EXPECT_EQ(pixel(562, 562), kDesk);
    bool hovered = false;
    bubble.view().onHover = [&](bool) { hovered = true; };
    moveMouse(328, 328); // inside the panel, outside the circle
    pass(200ms);
    EXPECT_FALSE(hovered);
    moveMouse(432, 432);
    EXPECT_TRUE(waitUntil([&] { return hovered; }));
}

TEST_F(Bubble, IsDraggedByAnyOfItsPointsAndComesUpThereAgain) {
    moveMouse(400, 380);
    button(1, true);
    for (int i = 1; i <= 20; ++i) {
        moveMouse(400 + 20 * i, 380 + 10 * i);
        pass(5ms);
    }
    button(1, false);
    ASSERT_TRUE(waitUntil([&] { return bubble.view().pos() == QPoint(700, 500); }));
    ASSERT_TRUE(waitUntil([&] { return pixel(832, 632) == 0xffffffU; }));
    EXPECT_TRUE(waitUntil([&] { return pixel(400, 360) == kDesk; })) << "and has left where it was";
    EXPECT_TRUE(waitUntil([&] { return store.real(QStringLiteral("bubbleX")) == 700; }));
    bubble.hide();
    bubble.show();
    EXPECT_EQ(bubble.view().pos(), QPoint(700, 500));
}

TEST_F(Bubble, GrowsByADoubleClickAroundItsMiddle) {
    moveMouse(432, 380);
    pass(50ms);
    click();
    click();
    EXPECT_TRUE(waitUntil([&] { return bubble.view().geometry() == QRect(250, 250, 364, 364); }));
    EXPECT_EQ(prefs.bubbleSize.value(), BubbleSize::l);
    EXPECT_TRUE(waitUntil([&] { return pixel(432, 285) == 0xffffffU; }));
}

TEST_F(Bubble, OpensItsMenuByTheRightButton) {
    moveMouse(432, 380);
    pass(50ms);
    click(3);
    const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    ASSERT_TRUE(waitUntil([&] { return menu() != nullptr; }));
    const QPoint small = menu()->mapToGlobal(menu()->actionGeometry(menu()->actions().first()).center());
    moveMouse(small.x(), small.y());
    ASSERT_TRUE(waitUntil([&] { return menu()->activeAction() == menu()->actions().first(); }));
    click();
    EXPECT_TRUE(waitUntil([&] { return prefs.bubbleSize.value() == BubbleSize::s; }));
    EXPECT_TRUE(waitUntil([&] { return bubble.view().width() == 194; }));
    EXPECT_TRUE(waitUntil([&] { return menu() == nullptr; }));
}

TEST_F(Bubble, ShowsItsControlsUnderTheMouseAndKeepsThemForALittleWhile) {
    moveMouse(432, 380);
    ASSERT_TRUE(waitUntil([&] { return hasControls(); }));
    moveMouse(1500, 900);
    pass(300ms);
    moveMouse(432, 380);
    pass(900ms);
    EXPECT_TRUE(hasControls());
    const QPoint row = bubble.controls()->geometry().center();
    moveMouse(row.x(), row.y());
    pass(900ms);
    EXPECT_TRUE(hasControls()) << "over the controls themselves";
    moveMouse(1500, 900);
    EXPECT_TRUE(waitUntil([&] { return !hasControls(); }));
}

TEST_F(Bubble, IsPutAwayByTheCrossOfItsControls) {
    moveMouse(432, 380);
    ASSERT_TRUE(waitUntil([&] { return hasControls(); }));
    const BubbleControlsView& controls = *bubble.controls();
    const QPoint cross = controls.mapToGlobal(controls.buttonRect(3).center().toPoint());
    moveMouse(cross.x(), cross.y());
    pass(100ms);
    click();
    EXPECT_TRUE(waitUntil([&] { return !bubble.isVisible() && !hasControls(); }));
    EXPECT_TRUE(bubble.userHidden());
    EXPECT_TRUE(waitUntil([&] { return pixel(432, 432) == kDesk; }));
}

TEST_F(Bubble, LetsTheMouseThroughWhileItIsCovered) {
    bubble.setCoveredByPresenter(true);
    ASSERT_TRUE(waitUntil([&] { return pixel(432, 432) == kDesk; }));
    bool hovered = false;
    bubble.view().onHover = [&](bool) { hovered = true; };
    moveMouse(432, 432);
    pass(200ms);
    EXPECT_FALSE(hovered);
    bubble.setCoveredByPresenter(false);
    EXPECT_TRUE(waitUntil([&] { return pixel(432, 432) == 0xffffffU; }));
}

TEST_F(Bubble, ThatRestsPaintsNothingAndARingPaintsOnlyItself) {
    const auto rests = [this] { // once what came with showing it is through
        test::PaintDamage damage(client, *bubble.windowID());
        pass(1s);
        damage.read();
        return damage.events == 0;
    };
    EXPECT_TRUE(waitUntil(rests));
    prefs.ringStyle = RingStyle::chameleon;
    bubble.applyPrefs();
    pass(500ms);
    test::PaintCount count(bubble.view());
    test::PaintDamage damage(client, *bubble.windowID());
    pass(2s);
    const int paints = count.paints;
    damage.read();
    ASSERT_GT(paints, 0);
    EXPECT_GT(damage.events, 0);
    EXPECT_LT(damage.pixels, (paints + 1) * 264 * 264 * 0.6);
}

TEST_F(Bubble, ThatIsAloneFillsItsRectangleToTheCorners) {
    bubble.enterCameraOnly(screens.all().front());
    ASSERT_TRUE(waitUntil([&] { return bubble.view().size() == QSize(960, 540); }));
    const QRect place = bubble.view().geometry();
    EXPECT_TRUE(waitUntil([&] { return pixel(place.left(), place.top()) == 0xffffffU; }));
    EXPECT_TRUE(waitUntil([&] { return pixel(place.right(), place.bottom()) == 0xffffffU; }));
    bubble.exitCameraOnly();
    EXPECT_TRUE(waitUntil([&] { return pixel(place.left(), place.top()) == kDesk; }));
    EXPECT_EQ(bubble.view().geometry(), QRect(300, 300, 264, 264));
}

} // namespace
} // namespace velmo
