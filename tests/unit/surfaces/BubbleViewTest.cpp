#include "surfaces/BubbleView.h"

#include "BubbleDesk.h"

#include <QMouseEvent>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::BubbleDesk;
using test::PaintCount;

struct Shown : BubbleDesk {
    Shown() {
        bubble.show();
        pass(1);
        givePicture();
    }
    BubbleView& view = bubble.view();
    PaintCount count{view};
};

TEST(BubbleView, IsPaintedOnceForEachPictureWhileTheRingRests) {
    Shown desk;
    desk.prefs.ringStyle = RingStyle::fine;
    desk.bubble.applyPrefs();
    desk.pass(1);
    desk.count.paints = 0;
    for (int i = 0; i < 30; ++i) {
        desk.givePicture();
        desk.pass(1.0 / 30);
    }
    EXPECT_EQ(desk.count.paints, 30);
    EXPECT_FALSE(desk.view.isAnimating());
    desk.pass(5);
    EXPECT_EQ(desk.count.paints, 30) << "and not at all without pictures";
}

TEST(BubbleView, AMovingRingRidesOnThePicturesOfTheCamera) {
    Shown desk;
    desk.count.paints = 0;
    for (int i = 0; i < 30; ++i) {
        desk.givePicture();
        desk.pass(1.0 / 30);
    }
    EXPECT_TRUE(desk.view.isAnimating());
    EXPECT_EQ(desk.count.paints, 30);
}

TEST(BubbleView, AMovingRingStepsThirtyTimesASecondWithoutPictures) {
    Shown desk;
    desk.pass(1);
    desk.count.paints = 0;
    for (int i = 0; i < 120; ++i) {
        desk.pass(1.0 / 120);
    }
    EXPECT_NEAR(desk.count.paints, 30, 1);
}

TEST(BubbleView, NothingRunsWhileItIsHiddenConcealedOrHasLentItsPicture) {
    Shown desk;
    ASSERT_GT(desk.timers.running(), 0);
    desk.view.setConcealed(true);
    desk.pass(0.1);
    EXPECT_EQ(desk.timers.running(), 0);
    desk.view.setConcealed(false);
    EXPECT_TRUE(desk.view.isAnimating());
    desk.view.lendPreview();
    EXPECT_FALSE(desk.view.isAnimating());
    desk.view.takeBackPreview();
    EXPECT_TRUE(desk.view.isAnimating());
    desk.bubble.hide();
    desk.pass(0.1);
    EXPECT_EQ(desk.timers.running(), 0);
    desk.count.paints = 0;
    desk.givePicture();
    desk.pass(1);
    EXPECT_EQ(desk.count.paints, 0);
}

TEST(BubbleView, APictureThatIsLentIsNotTouched) {
    Shown desk;
    CameraPreview& preview = desk.view.lendPreview();
    const qint64 image = preview.image({900, 500}).cacheKey();
    desk.pass(0.5);
    desk.view.repaint();
    EXPECT_EQ(preview.image({900, 500}).cacheKey(), image);
    desk.view.takeBackPreview();
    desk.view.takeBackPreview();
    EXPECT_FALSE(desk.view.isLent());
}

TEST(BubbleView, ALevelMovesTheRingForAMomentOnly) {
    Shown desk;
    desk.prefs.ringStyle = RingStyle::classic;
    desk.bubble.applyPrefs();
    desk.pass(1);
    desk.count.paints = 0;
    desk.bubble.setLevel(0.6);
    desk.bubble.setLevel(0.6);
    EXPECT_TRUE(desk.view.isAnimating());
    for (int i = 0; i < 60; ++i) {
        desk.pass(1.0 / 60);
    }
    EXPECT_FALSE(desk.view.isAnimating());
    EXPECT_GE(desk.count.paints, 3);
    EXPECT_LE(desk.count.paints, 6);
    EXPECT_EQ(desk.namesMade, 0) << "without laying anything out";
}

TEST(BubbleView, TheNameIsMadeAgainOnlyWhenItChanges) {
    Shown desk;
    desk.giveName();
    desk.bubble.applyPrefs();
    EXPECT_EQ(desk.namesMade, 1);
    desk.prefs.ringStyle = RingStyle::classic;
    desk.bubble.applyPrefs();
    desk.view.reconnect();
    desk.bubble.hide();
    desk.bubble.show();
    EXPECT_EQ(desk.namesMade, 1);
    desk.prefs.presenterRole = QStringLiteral("Cálculo II");
    desk.bubble.applyPrefs();
    EXPECT_EQ(desk.namesMade, 2);
}

TEST(BubbleView, TheNameStandsTwoPointsAboveThePanelsLowerEdge) {
    Shown desk;
    desk.giveName();
    desk.bubble.applyPrefs();
    EXPECT_EQ(desk.view.nameFrame(), QRectF(132 - 45, 264 - 2 - 30, 90, 30));
}

TEST(BubbleView, AClickOfTwoIsADoubleClickAndEveryPressCountsAsHovering) {
    Shown desk;
    int doubles = 0;
    std::vector<bool> hovers;
    desk.view.onDoubleClick = [&] { ++doubles; };
    desk.view.onHover = [&](bool inside) { hovers.push_back(inside); };
    const auto send = [&](QEvent::Type type, Qt::MouseButton button) {
        QMouseEvent event(type, QPointF(130, 130), QPointF(130, 130), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&desk.view, &event);
    };
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::LeftButton);
    send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::LeftButton);
    send(QEvent::MouseButtonPress, Qt::LeftButton); // the third
    send(QEvent::MouseButtonRelease, Qt::LeftButton);
    send(QEvent::MouseButtonDblClick, Qt::RightButton);
    EXPECT_EQ(doubles, 1);
    EXPECT_EQ(hovers, (std::vector<bool>{true, true, true}));
}

} // namespace
} // namespace velmo
