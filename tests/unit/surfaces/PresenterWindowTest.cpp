#include "support/FakeScreenCapture.h" // first: "emit" means something else once Qt was read

#include "surfaces/PresenterWindow.h"

#include "settings/Prefs.h"
#include "support/ManualQueue.h"
#include "support/MemoryDefaultsStore.h"
#include "surfaces/internal/PresenterPanel.h"
#include "unit/session/ManualTimers.h"
#include "unit/surfaces/FakePreviewLender.h"

#include <QCoreApplication>
#include <QImage>
#include <QPaintEvent>

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace velmo {
namespace {

using Phase = PresenterState::Phase;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr QColor kCamera(200, 40, 40);

FrameRef picture(PixelFormat format, int width, int height, QColor color) {
    const FrameRef frame = PixelBuffer::create(format, width, height);
    for (int y = 0; y < height && format == PixelFormat::bgra; ++y) {
        std::fill_n(reinterpret_cast<QRgb*>(frame->plane(0).row(y)), width, color.rgb());
    }
    if (format == PixelFormat::nv12) {
        const double luma = 0.2126 * color.red() + 0.7152 * color.green() + 0.0722 * color.blue();
        const auto code = [](double value) { return static_cast<std::uint8_t>(std::lround(value)); };
        const std::uint8_t cb = code(128 + (color.blue() - luma) / 1.8556 * 224 / 255);
        const std::uint8_t cr = code(128 + (color.red() - luma) / 1.5748 * 224 / 255);
        for (int y = 0; y < height; ++y) {
            std::fill_n(frame->plane(0).row(y), width, code(16 + luma * 219 / 255));
        }
        for (int y = 0; y < frame->plane(1).height; ++y) {
            for (int x = 0; x < frame->plane(1).width; ++x) {
                frame->plane(1).row(y)[2 * x] = cb;
                frame->plane(1).row(y)[2 * x + 1] = cr;
            }
        }
    }
    return frame;
}

/// On the screen of the offscreen platform, 800x800.
struct Desk {
    test::MemoryDefaultsStore store;
    Prefs prefs{store};
    test::ManualClock clock{100};
    test::ManualTimers timers{clock};
    test::FakePreviewLender bubble;
    test::FakeScreenCapture capture;
    std::vector<ContentFilter> shots;
    QColor desktop = Qt::white;
    bool shotsFail = false;
    std::optional<WindowId> board;
    test::ManualQueue* queue = new test::ManualQueue; // the window's
    int settles = 0;
    Screen screen{1, {0, 0, 800, 800}, 1};
    PresenterWindow window{
        {prefs, bubble, capture, clock, timers, std::unique_ptr<SerialQueue>(queue), [this] { return board; }, 4711}};

    Desk() {
        bubble.put({40, 30, 100, 100});
        bubble.feed.publish(picture(PixelFormat::nv12, 320, 180, kCamera));
        capture.content.displays = {{1, {0, 0, 800, 800}, 800, 800}};
        capture.image = [this](const ContentFilter& filter,
                               const StreamConfiguration& configuration) -> Result<FrameRef> {
            shots.push_back(filter);
            if (shotsFail) {
                return Error{};
            }
            return picture(PixelFormat::bgra, configuration.width, configuration.height, desktop);
        };
        window.setOnSettled([this] { ++settles; });
        QCoreApplication::processEvents();
    }
    /// Until the window is on the screen, its pictures are made, and nothing more comes of itself.
    void settle() {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            queue->run();
        }
    }
    void enter(PresenterStyle style = PresenterStyle::framed) {
        window.enter(screen, style);
        settle();
    }
    void advance(double seconds) {
        for (double left = seconds; left > 1e-9; left -= 0.05) {
            timers.advance(std::min(left, 0.05));
            settle();
        }
    }
    void show(PresenterStyle style = PresenterStyle::framed) {
        enter(style);
        advance(1);
        bubble.calls.clear();
        settles = 0;
    }
    PresenterPanel& panel() { return const_cast<PresenterPanel&>(*window.panel()); }
    QImage seen() {
        QImage image(800, 800, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        panel().render(&image, {}, {}, QWidget::RenderFlags());
        return image;
    }
    Phase phase() const { return window.state().phase(); }
};

bool near(QColor a, QColor b, int tolerance) {
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance && std::abs(a.alpha() - b.alpha()) <= tolerance;
}

TEST(PresenterWindow, HasNoWindowBeforeItIsPrepared) {
    Desk desk;
    EXPECT_FALSE(desk.window.windowID());
    desk.window.park();
    desk.window.prepare(desk.screen);
    EXPECT_TRUE(desk.window.windowID());
}

TEST(PresenterWindow, IsOnTheScreenUnseenWhileItIsPreparedAndAwayOnceItIsParked) {
    Desk desk;
    desk.window.prepare(desk.screen);
    desk.settle();
    EXPECT_TRUE(desk.panel().isVisible());
    EXPECT_EQ(desk.panel().windowOpacity(), 0);
    EXPECT_EQ(desk.panel().geometry(), QRect(0, 0, 800, 800));
    const auto id = desk.window.windowID();
    desk.window.park();
    EXPECT_FALSE(desk.panel().isVisible());
    desk.enter();
    EXPECT_TRUE(desk.panel().isVisible());
    EXPECT_EQ(desk.panel().windowOpacity(), 1);
    EXPECT_EQ(desk.window.windowID(), id);
}

TEST(PresenterWindow, IsNotPutAwayByParkingWhileItIsUp) {
    Desk desk;
    desk.enter();
    desk.window.park();
    EXPECT_TRUE(desk.panel().isVisible());
}

TEST(PresenterWindow, WithoutABubbleThereIsNoFlight) {
    Desk desk;
    desk.bubble.info.reset();
    desk.enter(PresenterStyle::sideLeft);
    EXPECT_FALSE(desk.window.isFull());
    EXPECT_THAT(desk.bubble.calls, IsEmpty());
    EXPECT_EQ(desk.window.state().style(), PresenterStyle::sideLeft);
    EXPECT_EQ(desk.timers.running(), 0);
}

TEST(PresenterWindow, FliesFromTheBubbleToTheStageOnItsCurve) {
    Desk desk;
    desk.enter();
    EXPECT_EQ(desk.phase(), Phase::entering);
    EXPECT_THAT(desk.bubble.calls, ElementsAre("lend", "cover"));
    EXPECT_EQ(desk.panel().frame().stage, (Rect{40, 30, 100, 100}));
    const auto stage = PresenterLayout::onStage(PresenterStyle::framed, {800, 800});
    const PresenterFlight law(PresenterLayout::atBubble(*desk.bubble.info, {}), stage, PresenterFlight::Way::in);
    desk.timers.advance(0.3001);
    const double flown = std::floor(0.3001 * 60) / 60;
    EXPECT_NEAR(desk.panel().frame().stage.width, law.at(flown).stage.width, 1e-6);
    EXPECT_NEAR(desk.panel().frame().backdrop, law.at(flown).backdrop, 1e-6);
    EXPECT_EQ(desk.settles, 0);
    desk.timers.advance(0.47);
    EXPECT_EQ(desk.phase(), Phase::shown);
    EXPECT_EQ(desk.panel().frame(), stage);
    EXPECT_EQ(desk.settles, 1);
    desk.timers.advance(0.1);
    EXPECT_EQ(desk.timers.running(), 0) << "nothing moves any more";
}

TEST(PresenterWindow, TheBubbleIsCoveredOnlyWhenTheStageIsSeenInItsPlace) {
    Desk desk;
    desk.window.enter(desk.screen, PresenterStyle::framed);
    EXPECT_TRUE(desk.window.isFull());
    EXPECT_FALSE(desk.bubble.covered);
    EXPECT_EQ(desk.panel().windowOpacity(), 0) << "nobody knows what an unpainted window shows";
    desk.settle();
    EXPECT_TRUE(desk.bubble.covered);
    EXPECT_EQ(desk.panel().windowOpacity(), 1);
}

TEST(PresenterWindow, AWindowThatNobodyShowsFliesAllTheSame) {
    Desk desk;
    desk.window.enter(desk.screen, PresenterStyle::framed);
    desk.timers.advanceUnsettled(1.1);
    EXPECT_EQ(desk.phase(), Phase::shown);
    EXPECT_TRUE(desk.bubble.covered);
}

TEST(PresenterWindow, FliesBackAndGivesBackWhatItHas) {
    Desk desk;
    desk.show();
    int gone = 0;
    desk.window.exit([&] {
        ++gone;
        EXPECT_FALSE(desk.bubble.lent);
        EXPECT_EQ(desk.settles, 0) << "who waits is told before";
    });
    EXPECT_EQ(desk.phase(), Phase::leaving);
    EXPECT_FALSE(desk.window.isFull());
    desk.advance(0.74);
    EXPECT_EQ(gone, 0);
    EXPECT_TRUE(desk.panel().isVisible());
    EXPECT_THAT(desk.bubble.calls, IsEmpty());
    desk.advance(0.05);
    EXPECT_EQ(gone, 1);
    EXPECT_EQ(desk.settles, 1);
    EXPECT_THAT(desk.bubble.calls, ElementsAre("take back", "uncover"));
    EXPECT_FALSE(desk.panel().isVisible());
    EXPECT_EQ(desk.phase(), Phase::rest);
    desk.advance(0.1);
    EXPECT_EQ(desk.timers.running(), 0);
}

TEST(PresenterWindow, FliesBackToWhereTheBubbleIsByThen) {
    Desk desk;
    desk.show();
    desk.bubble.put({600, 500, 120, 120});
    desk.window.exit({});
    const PresenterFrame stage = desk.panel().frame();
    const PresenterFlight law(stage, PresenterLayout::atBubble(*desk.bubble.info, {}), PresenterFlight::Way::out);
    desk.timers.advance(0.7001);
    const double flown = std::floor(0.7001 * 60) / 60;
    EXPECT_NEAR(desk.panel().frame().stage.x, law.at(flown).stage.x, 1e-6);
    EXPECT_NEAR(desk.panel().frame().stage.width, law.at(flown).stage.width, 1e-6);
    EXPECT_NEAR(desk.panel().frame().corner, law.at(flown).corner, 1e-6);
}

TEST(PresenterWindow, CountsTheBubblesPlaceFromItsOwnScreensCorner) {
    Desk desk;
    desk.screen.frame = {0, -200, 800, 800};
    desk.enter();
    EXPECT_EQ(desk.panel().frame().stage.origin(), (Point{40, 230}));
}

TEST(PresenterWindow, ExitWhileLeavingCallsThenAtOnceAndDoesNotStartASecondFlight) {
    Desk desk;
    desk.show();
    int first = 0;
    int second = 0;
    desk.window.exit([&] { ++first; });
    desk.advance(0.4);
    desk.window.exit([&] { ++second; });
    EXPECT_EQ(second, 1);
    EXPECT_EQ(first, 0);
    desk.advance(0.4);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(desk.settles, 1);
    EXPECT_EQ(desk.phase(), Phase::rest);
}

TEST(PresenterWindow, ExitAtRestAndWhileEnteringCallsThenAtOnce) {
    Desk desk;
    int calls = 0;
    desk.window.exit([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    desk.enter();
    desk.window.exit([&] { ++calls; });
    desk.window.exit({});
    EXPECT_EQ(calls, 2);
    desk.advance(0.8);
    EXPECT_EQ(desk.phase(), Phase::shown);
}

TEST(PresenterWindow, WithTheStyleFullThereIsNoBackdropNoBorderAndNoShadowAtTheEnd) {
    Desk desk;
    desk.show(PresenterStyle::full);
    EXPECT_THAT(desk.shots, IsEmpty());
    EXPECT_EQ(desk.panel().frame(), (PresenterFrame{{0, 0, 800, 800}, 0, 0, 0, 0}));
    const QImage seen = desk.seen();
    for (const QPoint at : {QPoint(0, 0), QPoint(1, 400), QPoint(400, 798), QPoint(799, 799), QPoint(400, 400)}) {
        EXPECT_TRUE(near(seen.pixelColor(at), kCamera, 4)) << at.x() << ", " << at.y();
    }
}

TEST(PresenterWindow, ClosingTheBubbleWhileThePresenterIsUpMakesTheExitAFade) {
    Desk desk;
    desk.show();
    desk.bubble.info.reset();
    int gone = 0;
    desk.window.exit([&] { ++gone; });
    const PresenterFrame before = desk.panel().frame();
    desk.timers.advance(0.176);
    EXPECT_NEAR(desk.panel().windowOpacity(), 0.5, 0.08);
    EXPECT_EQ(desk.panel().frame(), before) << "the stage stays where it is";
    desk.timers.advance(0.16);
    EXPECT_EQ(gone, 0);
    desk.timers.advance(0.04);
    EXPECT_EQ(gone, 1);
    EXPECT_THAT(desk.bubble.calls, ElementsAre("take back", "uncover"));
    EXPECT_FALSE(desk.panel().isVisible());
    EXPECT_EQ(desk.panel().windowOpacity(), 1);
    EXPECT_EQ(desk.settles, 1);
}

TEST(PresenterWindow, ABubbleClosedInTheFlightChangesNothingUntilTheExit) {
    Desk desk;
    desk.enter();
    desk.advance(0.3);
    desk.bubble.info.reset();
    desk.advance(0.6);
    EXPECT_EQ(desk.phase(), Phase::shown);
    desk.window.exit({});
    desk.advance(0.4);
    EXPECT_EQ(desk.phase(), Phase::rest);
    EXPECT_FALSE(desk.bubble.lent);
}

TEST(PresenterWindow, AnAbsentStyleMeansTheOneOfTheSettingsAndToggleGoesBothWays) {
    Desk desk;
    desk.prefs.presenterStyle = PresenterStyle::sideLeft;
    desk.window.toggle(desk.screen);
    desk.settle();
    desk.advance(0.8);
    EXPECT_EQ(desk.panel().frame(), PresenterLayout::onStage(PresenterStyle::sideLeft, {800, 800}));
    desk.window.toggle(desk.screen);
    EXPECT_EQ(desk.phase(), Phase::leaving);
}

TEST(PresenterWindow, ResetTakesEverythingAwayAtOnceInAnyPhase) {
    for (const double time : {0.0, 0.3, 1.0, 1.3}) {
        Desk desk;
        desk.prefs.showName = true;
        desk.prefs.presenterName = QStringLiteral("Ana");
        desk.enter();
        desk.advance(std::min(time, 1.0));
        int gone = 0;
        if (time > 1) {
            desk.window.exit([&] { ++gone; });
            desk.advance(time - 1);
        }
        desk.window.reset();
        EXPECT_EQ(desk.phase(), Phase::rest);
        EXPECT_FALSE(desk.panel().isVisible());
        EXPECT_FALSE(desk.bubble.lent);
        EXPECT_FALSE(desk.bubble.covered);
        EXPECT_EQ(desk.timers.running(), 0);
        const std::size_t shots = desk.shots.size();
        desk.advance(3);
        EXPECT_EQ(gone, 0);
        EXPECT_EQ(desk.shots.size(), shots);
        EXPECT_FALSE(desk.bubble.covered) << "the old entrance does not come back";
        desk.enter();
        desk.advance(0.8);
        EXPECT_EQ(desk.phase(), Phase::shown);
    }
}

TEST(PresenterWindow, ResetUncoversABubbleThatAnotherSceneHasCovered) {
    Desk desk;
    desk.bubble.covered = true;
    desk.window.reset();
    EXPECT_FALSE(desk.bubble.covered);
}

TEST(PresenterWindow, TakesTheDesktopOnceASecondWhileItIsUpAndNoLonger) {
    Desk desk;
    desk.enter();
    EXPECT_EQ(desk.shots.size(), 1u);
    desk.advance(0.9);
    EXPECT_EQ(desk.shots.size(), 1u);
    desk.advance(0.15);
    EXPECT_EQ(desk.shots.size(), 2u);
    desk.advance(3.3); // a second after the last one was made
    EXPECT_EQ(desk.shots.size(), 5u);
    desk.window.exit({});
    desk.advance(5);
    EXPECT_EQ(desk.shots.size(), 5u);
}

TEST(PresenterWindow, TheBoardShowsThroughTheBackdropAndTheOtherPanelsDoNot) {
    Desk desk;
    desk.board = 77;
    desk.show(PresenterStyle::sideRight);
    EXPECT_EQ(desk.shots.front(), ContentFilter::display(1, {4711}, {77}));
}

TEST(PresenterWindow, StandsOverTheBlurredDesktopUnderItsTint) {
    Desk desk;
    desk.show(PresenterStyle::sideRight);
    // White is 245 after the blur; 22 % of the tint lie over it.
    const QColor ground(193, 198, 196);
    const QImage seen = desk.seen();
    EXPECT_TRUE(near(seen.pixelColor(10, 10), ground, 2));
    EXPECT_TRUE(near(seen.pixelColor(100, 700), ground, 2));
    const Rect stage = desk.panel().frame().stage;
    EXPECT_TRUE(near(seen.pixelColor(int(stage.midX()), int(800 - stage.midY())), kCamera, 4));
    EXPECT_TRUE(near(seen.pixelColor(int(stage.x) + 1, 400), QColor(69, 212, 148), 3)) << "the border";
    EXPECT_LT(seen.pixelColor(int(stage.x) - 6, 400).lightness(), ground.lightness() - 15) << "the shadow";
}

TEST(PresenterWindow, WithoutAPictureOfTheDesktopTheGroundIsPlain) {
    Desk desk;
    desk.shotsFail = true;
    desk.show(PresenterStyle::sideRight);
    EXPECT_TRUE(near(desk.seen().pixelColor(10, 10), QColor(14, 39, 31), 2));
}

TEST(PresenterWindow, AFailedPictureLeavesTheLastOne) {
    Desk desk;
    desk.show(PresenterStyle::sideRight);
    const QColor before = desk.seen().pixelColor(10, 10);
    desk.shotsFail = true;
    desk.advance(2);
    EXPECT_EQ(desk.seen().pixelColor(10, 10), before);
    desk.shotsFail = false;
    desk.desktop = Qt::black;
    desk.advance(2);
    EXPECT_LT(desk.seen().pixelColor(10, 10).lightness(), 20);
}

TEST(PresenterWindow, APictureOfAnEarlierEntranceIsDropped) {
    Desk desk;
    desk.window.enter(desk.screen, PresenterStyle::framed);
    QCoreApplication::processEvents(); // the picture is at the queue
    desk.window.reset();
    desk.shotsFail = true;
    desk.show(PresenterStyle::framed);
    EXPECT_TRUE(near(desk.seen().pixelColor(10, 10), QColor(14, 39, 31), 2));
}

TEST(PresenterWindow, TheNameComesUpNearTheEndOfTheFlightAndGoesBeforeThePicture) {
    Desk desk;
    desk.prefs.showName = true;
    desk.prefs.presenterName = QStringLiteral("Ana");
    desk.enter();
    const auto tagSeen = [&] {
        const Rect stage = PresenterLayout::onStage(PresenterStyle::framed, {800, 800}).stage;
        const QColor at = desk.seen().pixelColor(int(stage.x) + 32 + 14, int(800 - stage.y) - 32 - 4);
        return !near(at, kCamera, 20);
    };
    desk.advance(0.5);
    EXPECT_FALSE(tagSeen());
    desk.advance(0.4);
    EXPECT_TRUE(tagSeen());
    EXPECT_EQ(desk.phase(), Phase::shown);
    desk.window.exit({});
    desk.timers.advance(0.22);
    EXPECT_FALSE(tagSeen());
}

/// What of the window is painted.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    int paints = 0;
    QRegion region;
};

TEST(PresenterWindow, AtRestACameraPictureRepaintsTheStageAlone) {
    Desk desk;
    desk.show();
    PaintCounter counter(desk.panel());
    desk.bubble.feed.publish(picture(PixelFormat::nv12, 320, 180, Qt::blue));
    desk.settle();
    EXPECT_EQ(counter.paints, 1);
    const Rect stage = desk.panel().frame().stage;
    EXPECT_EQ(counter.region, QRegion(int(stage.x), int(800 - stage.maxY()), int(stage.width), int(stage.height)));
}

TEST(PresenterWindow, AtRestADesktopThatStaysTheSameRepaintsNothing) {
    Desk desk;
    desk.show();
    PaintCounter counter(desk.panel());
    desk.advance(5);
    EXPECT_EQ(counter.paints, 0);
    desk.desktop = Qt::gray;
    desk.advance(1.1);
    EXPECT_EQ(counter.paints, 1);
    EXPECT_FALSE(counter.region.contains(QPoint(400, 400))) << "what the stage hides is not painted";
    EXPECT_TRUE(counter.region.contains(QPoint(5, 5)));
}

TEST(PresenterWindow, InAFlightACameraPictureWaitsForTheNextStep) {
    Desk desk;
    desk.enter();
    desk.advance(0.3);
    PaintCounter counter(desk.panel());
    desk.bubble.feed.publish(picture(PixelFormat::nv12, 320, 180, Qt::blue));
    desk.settle();
    EXPECT_EQ(counter.paints, 0);
    desk.advance(0.02);
    EXPECT_EQ(counter.paints, 1);
}

TEST(PresenterWindow, LetsTheMouseThroughAndTakesNoFocus) {
    Desk desk;
    desk.show();
    EXPECT_TRUE(desk.panel().windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_EQ(desk.panel().level(), PanelLevel::bubble);
}

TEST(PresenterWindow, AnyRowOfRequestsEndsWithOneOwnerOfThePreview) {
    std::mt19937 random(11);
    for (int sequence = 0; sequence < 50; ++sequence) {
        Desk desk;
        desk.screen.frame = {0, 0, 80, 60}; // what is painted does not matter
        int waiting = 0;
        for (int step = 0; step < 25; ++step) {
            switch (random() % 7) {
            case 0:
            case 1:
                desk.enter(static_cast<PresenterStyle>(random() % 4));
                break;
            case 2:
            case 3:
                ++waiting;
                desk.window.exit([&] { --waiting; });
                break;
            case 4:
                desk.bubble.info ? desk.bubble.info.reset() : desk.bubble.put({300, 300, 80, 80});
                break;
            case 5:
                desk.window.toggle(desk.screen);
                break;
            default:
                desk.window.park();
            }
            desk.timers.advance((random() % 10) * 0.1);
            desk.settle();
            ASSERT_EQ(desk.bubble.lent, desk.phase() != Phase::rest);
        }
        desk.advance(1);
        ASSERT_FALSE(desk.window.state().isBusy());
        EXPECT_EQ(waiting, 0);
        EXPECT_EQ(desk.bubble.lent, desk.window.isFull());
        EXPECT_EQ(desk.bubble.covered, desk.window.isFull());
        EXPECT_EQ(desk.panel().isVisible(), desk.window.isFull());
    }
}

} // namespace
} // namespace velmo
