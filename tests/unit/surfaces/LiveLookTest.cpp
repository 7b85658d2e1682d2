#include "surfaces/LiveLook.h"

#include "BubbleDesk.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

struct Following : test::BubbleDesk {
    Following() {
        LiveLook::follow(prefs, bubble, second);
        bubble.show();
        second.show();
        pass(1);
    }
};

TEST(LiveLook, ALookThatIsChosenInThePanelIsWornAtOnceByBoth) {
    Following desk;
    desk.prefs.ringStyle = RingStyle::classic;
    desk.prefs.ringWeight = RingWeight::thick;
    desk.prefs.ringCustomHex = QStringLiteral("#102030");
    desk.prefs.softShadow = false;
    desk.prefs.cornerFraction = 0.4;
    for (const BubbleLook& look : {desk.bubble.view().look(), desk.second.view().look()}) {
        EXPECT_EQ(look.style, RingStyle::classic);
        EXPECT_EQ(look.weight, factor(RingWeight::thick));
        EXPECT_EQ(look.ringColor, Color::fromHex(0x102030));
        EXPECT_FALSE(look.softShadow);
        EXPECT_EQ(look.corner, 0.4);
    }
}

TEST(LiveLook, ShapeAndSizeAreOfTheBubbleThatTheyBelongTo) {
    Following desk;
    const QSize first = desk.bubble.view().size();
    const QSize second = desk.second.view().size();
    desk.prefs.bubbleShape = BubbleShape::vertical;
    desk.pass(1);
    EXPECT_EQ(desk.bubble.view().look().shape, BubbleShape::vertical);
    EXPECT_NE(desk.bubble.view().size(), first);
    EXPECT_EQ(desk.second.view().size(), second);
    desk.prefs.secondBubbleSize = BubbleSize::l;
    desk.pass(1);
    EXPECT_NE(desk.second.view().size(), second);
}

TEST(LiveLook, ANameIsSeenAsItIsTyped) {
    Following desk;
    desk.prefs.showName = true;
    desk.prefs.presenterName = QStringLiteral("An");
    desk.prefs.presenterName = QStringLiteral("Ana");
    ASSERT_TRUE(desk.bubble.view().look().nameTag);
    EXPECT_EQ(desk.bubble.view().look().nameTag->name, QStringLiteral("Ana"));
    desk.prefs.showName = false;
    EXPECT_FALSE(desk.bubble.view().look().nameTag);
}

TEST(LiveLook, ABubbleThatIsHiddenStaysHidden) {
    Following desk;
    desk.bubble.hide();
    desk.second.hide();
    desk.prefs.ringStyle = RingStyle::none;
    desk.prefs.bubbleSize = BubbleSize::l;
    desk.pass(1);
    EXPECT_FALSE(desk.bubble.view().isVisible());
    EXPECT_FALSE(desk.second.view().isVisible());
}

} // namespace
} // namespace velmo
