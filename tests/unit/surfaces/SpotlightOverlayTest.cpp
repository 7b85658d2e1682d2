#include "surfaces/SpotlightOverlay.h"

#include "unit/session/ManualTimers.h"
#include "unit/surfaces/FakePointer.h"

#include <QCoreApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace velmo {
namespace {

constexpr double kTick = 1.0 / 60;
const Color kLime = Color::fromHex(0xB6F000);

/// On the screen of the offscreen platform, 800x800.
struct Desk {
    test::ManualClock clock{100};
    test::ManualTimers timers{clock};
    test::FakePointer pointer;
    std::vector<Color> colors{kLime};
    std::vector<double> circles;
    Screen screen{1, {0, 0, 800, 800}, 1};
    SpotlightOverlay overlay{{clock, timers, pointer, pointer, [this] { return colors; }}};

    Desk() {
        pointer.at = {400, 400};
        overlay.setOnCircle([this](double time) { circles.push_back(time); });
    }
    void ticks(int count) { timers.advance(count * kTick + 1e-6); }
    const PointerFXView& view() const { return *overlay.view(); }

    /// Once and a quarter round at `center`, in half a second.
    void circle(Point center = {400, 400}) {
        for (int i = 0; i <= 38; ++i) {
            const double angle = 2 * std::numbers::pi * i / 30;
            pointer.moveTo({center.x + 100 * std::cos(angle), center.y + 100 * std::sin(angle)});
            ticks(1);
        }
    }
    double dimAt(const QPoint& place) const {
        QImage image(800, 800, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        const_cast<QWidget&>(view().spot()).render(&image, {}, {}, QWidget::RenderFlags());
        return image.pixelColor(place).alphaF();
    }
};

TEST(SpotlightOverlay, PreparingMakesTheWindowsWithoutShowingThem) {
    Desk desk;
    desk.overlay.prepare(desk.screen);
    EXPECT_TRUE(desk.view().spot().testAttribute(Qt::WA_WState_Created));
    EXPECT_FALSE(desk.view().spot().isVisible());
    desk.overlay.park();
    EXPECT_FALSE(desk.view().spot().isVisible());
    EXPECT_EQ(desk.timers.running(), 0);
}

TEST(SpotlightOverlay, NothingRunsWithoutSpotlightAndBubbles) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    EXPECT_EQ(desk.timers.running(), 0);
    const int looks = desk.pointer.looks;
    desk.ticks(600);
    EXPECT_EQ(desk.pointer.looks, looks);
    EXPECT_FALSE(desk.pointer.isWatched());
}

TEST(SpotlightOverlay, TheSpotlightComesUpByItsShareEachTickAndStaysBelowOne) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.ticks(1);
    EXPECT_DOUBLE_EQ(desk.view().spotAlpha(), 0.14);
    EXPECT_TRUE(desk.view().spot().isVisible());
    desk.ticks(29);
    EXPECT_NEAR(desk.view().spotAlpha(), 1 - std::pow(0.86, 30), 1e-12);
}

TEST(SpotlightOverlay, SpotAlphaReachesExactlyZeroAfterItIsTurnedOffAndTheWindowGoes) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.ticks(120);
    desk.overlay.setSpotlight(false);
    desk.ticks(38); // 0.86^38 is 0.0032
    EXPECT_GT(desk.view().spotAlpha(), 0);
    EXPECT_TRUE(desk.view().spot().isVisible());
    desk.ticks(1);
    EXPECT_EQ(desk.view().spotAlpha(), 0.0);
    EXPECT_FALSE(desk.view().spot().isVisible());
    EXPECT_EQ(desk.timers.running(), 0) << "nobody needs ticks any more";
}

TEST(SpotlightOverlay, TheSpotDoesNotFlyInFromACorner) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.pointer.at = {700, 100}; // since then
    desk.overlay.setSpotlight(true);
    desk.ticks(1);
    EXPECT_EQ(desk.view().spotCenter(), (Point{700, 100}));
}

TEST(SpotlightOverlay, TheSpotFollowsTheMouseByItsShareEachTick) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.pointer.moveTo({500, 200});
    desk.ticks(1);
    EXPECT_DOUBLE_EQ(desk.view().spotCenter().x, 445);
    EXPECT_DOUBLE_EQ(desk.view().spotCenter().y, 310);
    desk.ticks(1);
    EXPECT_DOUBLE_EQ(desk.view().spotCenter().x, 469.75);
}

TEST(SpotlightOverlay, CountsTheMouseFromTheScreensOwnCorner) {
    Desk desk;
    desk.screen.frame = {1920, -300, 800, 800};
    desk.pointer.at = {2000, 100};
    desk.overlay.start(desk.screen, true);
    EXPECT_EQ(desk.view().spotCenter(), (Point{80, 400}));
}

TEST(SpotlightOverlay, DimsAllButASoftDisc) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.pointer.at = {300, 500}; // 300 from the top
    desk.overlay.setSpotlight(true);
    desk.ticks(60);
    // Inner radius 136, outer 197.2.
    EXPECT_NEAR(desk.dimAt({300, 300}), 0, 0.001);
    EXPECT_NEAR(desk.dimAt({300 + 132, 300}), 0, 0.01);
    EXPECT_NEAR(desk.dimAt({300, 300 - 166}), 0.31, 0.03);
    EXPECT_NEAR(desk.dimAt({300 + 200, 300}), 0.62, 0.004);
    for (const QPoint corner : {QPoint(0, 0), QPoint(799, 0), QPoint(0, 799), QPoint(799, 799)}) {
        EXPECT_NEAR(desk.dimAt(corner), 0.62, 0.004);
    }
}

TEST(SpotlightOverlay, ASpotAtTheEdgeLeavesNoPartUndimmed) {
    for (const Point mouse : {Point{0, 0}, Point{799, 799}, Point{-500, 400}, Point{400, 1600}}) {
        Desk desk;
        desk.pointer.at = mouse;
        desk.overlay.start(desk.screen, false);
        desk.overlay.setSpotlight(true);
        desk.ticks(60);
        for (int y = 5; y < 800; y += 10) {
            for (int x = 5; x < 800; x += 45) {
                const double away = std::hypot(x - mouse.x, 800 - y - mouse.y);
                if (away > 200) {
                    ASSERT_NEAR(desk.dimAt({x, y}), 0.62, 0.004) << x << ", " << y;
                    x += 200;
                }
            }
        }
    }
}

/// What of a widget is painted, by the system's own account.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(const QWidget& widget) { const_cast<QWidget&>(widget).installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) {
                pixels += rect.width() * rect.height();
            }
        }
        return false;
    }
    int paints = 0;
    int pixels = 0;
};

TEST(SpotlightOverlay, AMovementRepaintsNoMoreThanTheDiscBeforeAndAfter) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.ticks(60);
    QCoreApplication::processEvents();
    PaintCounter counter(desk.view().spot());
    desk.pointer.at = {420, 400};
    desk.ticks(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 1);
    EXPECT_LE(counter.pixels, 395 * 405);
    EXPECT_GT(counter.pixels, 300 * 300);
}

TEST(SpotlightOverlay, ASpotlightThatFadesOrRestsRepaintsNothing) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.ticks(2);
    QCoreApplication::processEvents();
    PaintCounter counter(desk.view().spot());
    desk.ticks(60);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
}

TEST(SpotlightOverlay, AQuickCircleShowsTheBubbleAndTellsTheTimeOfTheClock) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.circle();
    ASSERT_EQ(desk.circles.size(), 1u);
    EXPECT_EQ(desk.view().bubbleStart(), desk.circles.front());
    EXPECT_NEAR(desk.circles.front(), 100 + 36 * kTick, 2 * kTick);
    EXPECT_TRUE(desk.view().bubble().isVisible());
    EXPECT_FALSE(desk.view().spot().isVisible());
    EXPECT_EQ(desk.view().bubble().width(), std::ceil(800 * 0.034 * 4.2));
}

TEST(SpotlightOverlay, TheBubbleRidesOnThePointer) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.circle();
    desk.pointer.at = {600, 250};
    desk.ticks(1);
    const QRect place = desk.view().bubble().geometry();
    EXPECT_NEAR(place.x() + place.width() / 2.0, 600, 1);
    EXPECT_NEAR(place.y() + place.height() / 2.0, 550, 1);
}

TEST(SpotlightOverlay, TheBubbleIsGoneAfterItsTimeAndThenTheOverlayRests) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.circle();
    ASSERT_EQ(desk.circles.size(), 1u);
    const double left = desk.circles.front() + 3.4 - desk.clock.now().seconds();
    desk.timers.advance(left - 2 * kTick);
    EXPECT_TRUE(desk.view().bubble().isVisible());
    desk.ticks(3);
    EXPECT_FALSE(desk.view().bubble().isVisible());
    EXPECT_FALSE(desk.view().bubbleStart());
    EXPECT_FALSE(desk.overlay.isTicking());
    EXPECT_TRUE(desk.pointer.isWatched());
}

TEST(SpotlightOverlay, ASecondCircleWhileTheBubbleShowsBeginsItAnew) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.circle();
    desk.ticks(60);
    desk.circle();
    ASSERT_EQ(desk.circles.size(), 2u);
    EXPECT_EQ(desk.view().bubbleStart(), desk.circles.back());
}

TEST(SpotlightOverlay, WithoutBubblesNoCircleIsSeen) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.circle();
    EXPECT_TRUE(desk.circles.empty());
}

TEST(SpotlightOverlay, WithoutColoursTheBubbleStaysEmpty) {
    Desk desk;
    desk.colors.clear();
    desk.overlay.start(desk.screen, true);
    desk.circle();
    ASSERT_EQ(desk.circles.size(), 1u);
    const QImage picture = const_cast<QWidget&>(desk.view().bubble()).grab().toImage();
    EXPECT_EQ(picture.pixelColor(picture.width() / 2, picture.height() / 2).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(picture.width() / 2, picture.height() / 4).alpha(), 0);
}

TEST(SpotlightOverlay, ARestingMouseStopsTheTicksAndAMovementBringsThemBack) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.ticks(40);
    EXPECT_FALSE(desk.overlay.isTicking());
    EXPECT_TRUE(desk.pointer.isWatched());
    const int looks = desk.pointer.looks;
    desk.timers.advance(10);
    EXPECT_NEAR(desk.pointer.looks, looks + 50, 2) << "a mouse that rests is looked at five times a second";
    desk.circle();
    EXPECT_EQ(desk.circles.size(), 1u);
    EXPECT_EQ(desk.timers.running(), 1);
}

TEST(SpotlightOverlay, AMovementThatNoDeviceReportsBringsTheTicksBackWithinAFifthOfASecond) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.ticks(60);
    ASSERT_FALSE(desk.overlay.isTicking());
    desk.pointer.at = {100, 100};
    desk.timers.advance(0.21);
    EXPECT_TRUE(desk.overlay.isTicking());
    EXPECT_EQ(desk.timers.running(), 1);
    EXPECT_FALSE(desk.pointer.isWatched());
}

TEST(SpotlightOverlay, WhereNobodyTellsOfMovementsTheTicksGoOn) {
    Desk desk;
    desk.pointer.canWatch = false;
    desk.overlay.start(desk.screen, true);
    desk.ticks(300);
    EXPECT_EQ(desk.timers.running(), 1);
    desk.circle();
    EXPECT_EQ(desk.circles.size(), 1u);
}

TEST(SpotlightOverlay, StoppingTakesEverythingAwayAtOnce) {
    Desk desk;
    desk.overlay.start(desk.screen, true);
    desk.overlay.setSpotlight(true);
    desk.circle();
    ASSERT_TRUE(desk.view().spot().isVisible());
    ASSERT_TRUE(desk.view().bubble().isVisible());
    desk.overlay.stop();
    EXPECT_FALSE(desk.view().spot().isVisible());
    EXPECT_FALSE(desk.view().bubble().isVisible());
    EXPECT_EQ(desk.view().spotAlpha(), 0);
    EXPECT_FALSE(desk.view().bubbleStart());
    EXPECT_EQ(desk.timers.running(), 0);
    EXPECT_FALSE(desk.pointer.isWatched());
    desk.overlay.start(desk.screen, false);
    desk.ticks(10);
    EXPECT_FALSE(desk.view().spot().isVisible()) << "the next recording begins without the spotlight";
}

TEST(SpotlightOverlay, WhoIsToldOfACircleMayStopTheOverlay) {
    Desk desk;
    desk.overlay.setOnCircle([&](double) { desk.overlay.stop(); });
    desk.overlay.start(desk.screen, true);
    desk.circle();
    EXPECT_FALSE(desk.view().bubble().isVisible());
    EXPECT_EQ(desk.timers.running(), 0);
}

TEST(SpotlightOverlay, TheSpotlightBeforeTheStartIsShownFromTheStartOn) {
    Desk desk;
    desk.overlay.setSpotlight(true);
    EXPECT_EQ(desk.timers.running(), 0);
    desk.overlay.start(desk.screen, false);
    desk.ticks(1);
    EXPECT_TRUE(desk.view().spot().isVisible());
}

TEST(SpotlightOverlay, ParkingARunningOverlayChangesNothing) {
    Desk desk;
    desk.overlay.start(desk.screen, false);
    desk.overlay.setSpotlight(true);
    desk.ticks(5);
    desk.overlay.park();
    EXPECT_TRUE(desk.view().spot().isVisible());
}

} // namespace
} // namespace velmo
