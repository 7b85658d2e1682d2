#include "surfaces/SecondBubbleController.h"

#include "BubbleDesk.h"
#include "ui/ScreenPlace.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::BubbleDesk;

struct Shown : BubbleDesk {
    Shown() {
        second.show();
        pass(1);
    }
    Rect frame() { return ScreenPlace::toGlobal(second.view().geometry()); }
};

TEST(SecondBubbleController, ItsHomeIsTheLowerRightCorner) {
    Shown desk;
    EXPECT_EQ(desk.frame(), (Rect{1920 - 337 - 40, 40, 337, 264}));
    desk.second.keep({2, {1920, 0, 1280, 720}, 1});
    EXPECT_EQ(desk.frame(), (Rect{3200 - 337 - 40, 40, 337, 264}));
}

TEST(SecondBubbleController, HasAPlaceOfItsOwnInTheSettings) {
    BubbleDesk desk;
    desk.store.setReal(QStringLiteral("bubble2X"), 300);
    desk.store.setReal(QStringLiteral("bubble2Y"), 310);
    desk.store.setReal(QStringLiteral("bubbleX"), 10);
    desk.store.setReal(QStringLiteral("bubbleY"), 10);
    desk.second.show();
    EXPECT_EQ(ScreenPlace::toGlobal(desk.second.view().geometry()).origin(), (Point{300, 310}));
}

TEST(SecondBubbleController, ARingChosenInTheFirstMenuIsSeenHereAtTheNextApplication) {
    Shown desk;
    const auto menu = desk.bubble.makeMenu();
    for (QAction* item : menu->actions()) {
        if (item->text() == QStringLiteral("Borde")) {
            item->menu()->actions().at(3)->trigger();
        }
    }
    EXPECT_EQ(desk.bubble.view().look().style, RingStyle::classic);
    EXPECT_EQ(desk.second.view().look().style, RingStyle::chameleon);
    desk.second.applyPrefs();
    EXPECT_EQ(desk.second.view().look().style, RingStyle::classic);
}

TEST(SecondBubbleController, NeverShowsAName) {
    Shown desk;
    desk.giveName();
    desk.second.applyPrefs();
    EXPECT_FALSE(desk.second.view().nameFrame());
    const auto info = desk.second.captureInfo();
    ASSERT_TRUE(info);
    EXPECT_FALSE(info->label);
    EXPECT_EQ(info->key, 1);
    EXPECT_FALSE(info->circle);
    EXPECT_EQ(info->window, desk.frame());
    EXPECT_EQ(info->rect, (Rect{desk.frame().x + 15, desk.frame().y + 15, 337 - 30, 264 - 30}));
}

TEST(SecondBubbleController, HasItsOwnSizeShapeAndMirror) {
    Shown desk;
    desk.prefs.bubbleSize = BubbleSize::s;
    desk.prefs.mirror = true;
    desk.second.applyPrefs();
    EXPECT_EQ(desk.frame().width, 337);
    desk.second.view().onDoubleClick();
    desk.pass(1);
    EXPECT_EQ(desk.prefs.secondBubbleSize.value(), BubbleSize::l);
    EXPECT_EQ(desk.frame().size(), (Size{426 + 44, 320 + 44}));
}

TEST(SecondBubbleController, TheUserPutsItAwayAndBringsItBack) {
    Shown desk;
    desk.second.toggleUserVisibility();
    EXPECT_TRUE(desk.second.userHidden());
    EXPECT_FALSE(desk.second.visible());
    EXPECT_FALSE(desk.second.captureInfo());
    desk.hasVideo = false; // it does not ask
    desk.second.toggleUserVisibility();
    EXPECT_TRUE(desk.second.visible());
    EXPECT_FALSE(desk.second.userHidden());
    desk.second.hide();
    EXPECT_FALSE(desk.second.userHidden());
}

TEST(SecondBubbleController, ItsMenuStandsInItsOrder) {
    Shown desk;
    const auto menu = desk.second.makeMenu();
    QStringList lines;
    for (const QAction* item : menu->actions()) {
        lines << (item->isSeparator() ? QStringLiteral("-") : (item->isChecked() ? "*" : "") + item->text());
    }
    EXPECT_EQ(lines, QStringList({"Segunda cámara", "-", "Tamaño S", "*Tamaño M", "Tamaño L", "-", "Círculo",
                                  "*Horizontal", "Vertical", "-", "Espejo", "Ocultar"}));
    EXPECT_FALSE(menu->actions().first()->isEnabled());
    menu->actions().last()->trigger();
    EXPECT_TRUE(desk.second.userHidden());
}

} // namespace
} // namespace velmo
