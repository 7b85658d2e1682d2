#include "surfaces/PresenterWindow.h"

#include "platform/x11/X11ScreenCapture.h"
#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SlideImage.h"
#include "support/Teacher.h"
#include "support/WaitUntil.h"
#include "support/Wallpaper.h"
#include "support/XTestClient.h"
#include "surfaces/internal/PresenterPanel.h"
#include "unit/surfaces/FakePreviewLender.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

namespace velmo {
namespace {

using namespace std::chrono_literals;
using test::pass;
using test::waitUntil;
using Phase = PresenterState::Phase;

constexpr std::size_t kEnough = 20; // pictures of a flight and back; a slow machine records fewer and flies again
constexpr int kMostRounds = 20;

/// The clock of the flights, which a test can hold at a moment.
class HeldClock final : public Clock {
public:
    MediaTime now() const override { return held ? *held : HostClock::shared().now(); }
    std::optional<MediaTime> held;
};

/// One pixel of each picture that a recording of the screen with the presenter in it would get.
class Recording final : public StreamOutputHandler {
public:
    Recording(X11ScreenCapture& capture, DisplayId display, WindowId presenter, QPoint at) : at_(at) {
        const auto process = static_cast<int>(QCoreApplication::applicationPid());
        StreamConfiguration configuration;
        configuration.width = 1920;
        configuration.height = 1080;
        configuration.pixelFormat = PixelFormat::bgra;
        configuration.minimumFrameInterval = MediaTime(1, 60);
        configuration.showsCursor = false;
        stream_ = std::move(capture.makeStream(ContentFilter::display(display, {process}, {presenter}), configuration,
                                               nullptr))
                      .value();
        EXPECT_TRUE(stream_->addOutput(*this, StreamOutput::screen, queue_).ok());
        stream_->start({});
    }
    void streamDidOutput(CaptureStream&, const Sample& sample, StreamOutput) override {
        const auto* row = reinterpret_cast<const QRgb*>(sample.image->plane(0).row(at_.y()));
        const std::lock_guard guard(lock_);
        colors_.push_back(QColor(row[at_.x()]));
    }
    std::vector<QColor> colors() {
        const std::lock_guard guard(lock_);
        return colors_;
    }

private:
    QPoint at_;
    ThreadQueue queue_{"test.recording"};
    std::mutex lock_;
    std::vector<QColor> colors_; // protected by lock_
    std::unique_ptr<CaptureStream> stream_;
};

class Presenter : public testing::Test {
protected:
    Presenter() {
        test::setWallpaper(client, test::slideImage(1920, 1080));
        screen.displayID = display();
        const QScreen& primary = *QGuiApplication::primaryScreen();
        screen.frame = {0, 0, double(primary.size().width()), double(primary.size().height())};
        bubble.put({90, 70, 220, 220});
        bubble.feed.publish(test::teacherPicture(0));
        prefs.showName = true;
        prefs.presenterName = QStringLiteral("Laura Méndez");
        prefs.presenterRole = QStringLiteral("Cálculo II");
        waitUntil([this] { return pixel(100, 10) == QColor(0x1a7a54); });
    }
    DisplayId display() {
        std::promise<DisplayId> answer;
        capture.queryShareableContent([&](const Result<ShareableContent>& content) {
            answer.set_value(content.value().displays.at(0).displayID);
        });
        return answer.get_future().get();
    }
    QColor pixel(int x, int y) { return QColor(client.rootPixels({x, y, 1, 1}).front()); }
    bool comesToBe(Phase phase) {
        return waitUntil([&] { return window.state().phase() == phase; });
    }
    void save(const QString& name) {
        const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../pictures"));
        folder.mkpath(QStringLiteral("."));
        QGuiApplication::primaryScreen()->grabWindow(0).save(folder.filePath(name + QStringLiteral(".png")));
    }
    /// The picture at shares of the way in and of the way out, kept in the build folder.
    void photograph(PresenterStyle style, const QString& name) {
        const MediaTime start = HostClock::shared().now();
        clock.held = start;
        window.enter(screen, style);
        ASSERT_TRUE(waitUntil([&] { return bubble.covered; }));
        for (const int percent : {0, 30, 70, 100}) {
            clock.held = start + MediaTime::fromSeconds(PresenterFlight::kSeconds * percent / 100);
            pass(500ms);
            save(name + QStringLiteral("-in-%1").arg(percent));
        }
        clock.held = start + MediaTime::fromSeconds(2);
        pass(1500ms);
        save(name + QStringLiteral("-shown"));
        window.exit({});
        clock.held = *clock.held + MediaTime::fromSeconds(PresenterFlight::kSeconds / 2);
        pass(500ms);
        save(name + QStringLiteral("-out-50"));
        clock.held = *clock.held + MediaTime::fromSeconds(1);
        ASSERT_TRUE(comesToBe(Phase::rest));
    }

    test::XTestClient client{qEnvironmentVariable("DISPLAY").toStdString()};
    X11ScreenCapture capture{std::nullopt, nullptr, HostClock::shared()};
    Screen screen;
    HeldClock clock;
    QtTimers timers;
    test::MemoryDefaultsStore store;
    Prefs prefs{store};
    test::FakePreviewLender bubble;
    std::optional<WindowId> board;
    PresenterWindow window{{prefs, bubble, capture, clock, timers, std::make_unique<ThreadQueue>("velmo.presenter"),
                            [this] { return board; }, static_cast<int>(QCoreApplication::applicationPid())}};
};

bool near(QColor a, QColor b, int tolerance) {
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

TEST_F(Presenter, FliesFromTheBubbleToTheStageAndBack) {
    photograph(PresenterStyle::framed, QStringLiteral("presenter-framed"));
    photograph(PresenterStyle::sideRight, QStringLiteral("presenter-side"));
    photograph(PresenterStyle::full, QStringLiteral("presenter-full"));
    EXPECT_TRUE(waitUntil([&] { return pixel(960, 540) == QColor(0xfcfaf5); })) << "the desktop is back";
}

TEST_F(Presenter, BeginsInTheBubblesPlaceWithTheRestOfTheScreenUntouched) {
    clock.held = HostClock::shared().now();
    window.enter(screen, PresenterStyle::framed);
    ASSERT_TRUE(waitUntil([&] { return bubble.covered; }));
    const auto border = [this] { return near(pixel(200, 1080 - 70 - 1), QColor(69, 212, 148), 12); };
    EXPECT_TRUE(waitUntil(border)) << "the border at its lower edge";
    EXPECT_EQ(pixel(960, 540), QColor(0xfcfaf5));
    EXPECT_EQ(pixel(92, 1080 - 70 - 2), QColor(0xfcfaf5)) << "outside the circle, inside its square";
    EXPECT_FALSE(near(pixel(200, 1080 - 180), QColor(0xfcfaf5), 40)) << "the camera in its middle";
}

TEST_F(Presenter, ShowsTheDesktopBlurredButNotTheProgramsOwnPanels) {
    QWidget panel(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    panel.setGeometry(0, 300, 500, 500);
    panel.setStyleSheet(QStringLiteral("background: #ff00ff"));
    panel.show();
    ASSERT_TRUE(waitUntil([&] { return near(pixel(200, 500), QColor(255, 0, 255), 2); }));
    window.enter(screen, PresenterStyle::sideRight);
    ASSERT_TRUE(comesToBe(Phase::shown));
    // The slide is near white: 0.78 of a darker white, and the tint.
    ASSERT_TRUE(waitUntil([&] { return near(pixel(60, 950), QColor(190, 195, 189), 8); }));
    EXPECT_TRUE(waitUntil([&] { return near(pixel(50, 500), pixel(60, 950), 12); })) << "under the panel";
}

TEST_F(Presenter, ShowsTheBoardInTheBlurredDesktop) {
    QWidget panel(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    panel.setGeometry(0, 300, 500, 500);
    panel.setStyleSheet(QStringLiteral("background: #ff00ff"));
    panel.show();
    board = static_cast<WindowId>(panel.winId());
    ASSERT_TRUE(waitUntil([&] { return near(pixel(200, 500), QColor(255, 0, 255), 2); }));
    window.enter(screen, PresenterStyle::sideRight);
    ASSERT_TRUE(comesToBe(Phase::shown));
    EXPECT_TRUE(waitUntil([&] { return near(pixel(250, 550), QColor(193, 7, 193), 24); }));
}

TEST_F(Presenter, TheBackdropFollowsTheDesktop) {
    window.enter(screen, PresenterStyle::sideRight);
    ASSERT_TRUE(comesToBe(Phase::shown));
    ASSERT_TRUE(waitUntil([&] { return near(pixel(60, 950), QColor(190, 195, 189), 8); }));
    QImage dark(1920, 1080, QImage::Format_RGB32);
    dark.fill(QColor(40, 40, 40));
    test::setWallpaper(client, dark);
    EXPECT_TRUE(waitUntil([&] { return pixel(60, 950).lightness() < 50; }));
}

TEST_F(Presenter, InTheVideoTheGroundComesUpAndGoesWithoutAFlash) {
    window.prepare(screen);
    pass(250ms);
    Recording recording(capture, screen.displayID, *window.windowID(), {60, 950});
    pass(200ms);
    window.park();
    pass(300ms);
    std::vector<QColor> colors;
    const auto desktopIsBack = [&] {
        colors = recording.colors();
        return !colors.empty() && colors.back() == QColor(0xfcfaf5);
    };
    for (int round = 0; round < kMostRounds && colors.size() <= kEnough; ++round) {
        window.enter(screen, PresenterStyle::sideRight);
        ASSERT_TRUE(comesToBe(Phase::shown));
        pass(1500ms);
        window.exit({});
        ASSERT_TRUE(comesToBe(Phase::rest));
        ASSERT_TRUE(waitUntil(desktopIsBack));
    }
    ASSERT_GT(colors.size(), kEnough);
    EXPECT_EQ(colors.front(), QColor(0xfcfaf5)) << "prepared, it is not seen";
    // The plain ground may be seen until the first picture is there, never anything darker, and no step is a jump.
    int darkest = 255;
    for (std::size_t i = 1; i < colors.size(); ++i) {
        darkest = std::min(darkest, colors[i].lightness());
        EXPECT_GT(colors[i].lightness(), 120) << i;
    }
    EXPECT_LT(darkest, 200);
}

TEST_F(Presenter, IsNeverInTheVideoWithWhatStoodOnTheScreenBeforeItWasPainted) {
    QWidget bar(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    bar.setGeometry(0, 300, 500, 500);
    bar.setStyleSheet(QStringLiteral("background: #ff00ff"));
    bar.show();
    window.prepare(screen);
    ASSERT_TRUE(waitUntil([&] { return near(pixel(200, 500), QColor(255, 0, 255), 2); }));
    Recording recording(capture, screen.displayID, *window.windowID(), {200, 500});
    pass(200ms);
    window.park();
    for (int round = 0; round < 4 || (round < kMostRounds && recording.colors().size() <= kEnough); ++round) {
        window.enter(screen, PresenterStyle::sideRight);
        ASSERT_TRUE(comesToBe(Phase::shown));
        window.exit({});
        ASSERT_TRUE(comesToBe(Phase::rest));
    }
    const std::vector<QColor> colors = recording.colors();
    ASSERT_GT(colors.size(), kEnough);
    for (const QColor& color : colors) {
        ASSERT_LT(color.saturation(), 60) << qPrintable(color.name());
    }
}

TEST_F(Presenter, LetsTheMouseThrough) {
    const auto below = client.create({0, 0, 1920, 1080}, {});
    const std::uint32_t mask = XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_change_window_attributes(client.xcb(), below, XCB_CW_EVENT_MASK, &mask);
    client.map(below);
    client.sync();
    window.enter(screen, PresenterStyle::framed);
    ASSERT_TRUE(comesToBe(Phase::shown));
    client.movePointer(960, 540);
    xcb_test_fake_input(client.xcb(), XCB_BUTTON_PRESS, 1, 0, client.root(), 0, 0, 0);
    xcb_test_fake_input(client.xcb(), XCB_BUTTON_RELEASE, 1, 0, client.root(), 0, 0, 0);
    client.sync();
    bool clicked = false;
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(client.xcb()),
                                                                                  &std::free}) {
        clicked = clicked || (event->response_type & 0x7f) == XCB_BUTTON_PRESS;
    }
    EXPECT_TRUE(clicked);
}

TEST_F(Presenter, SuccessiveRequestsEndWithTheBubbleAsItWas) {
    for (int i = 0; i < 12; ++i) {
        window.toggle(screen);
        pass(std::chrono::milliseconds(40 + 97 * i % 300));
    }
    ASSERT_TRUE(waitUntil([&] { return !window.state().isBusy(); }));
    EXPECT_EQ(bubble.covered, window.isFull());
    EXPECT_EQ(bubble.lent, window.isFull());
    window.reset();
    EXPECT_FALSE(bubble.lent);
    EXPECT_TRUE(waitUntil([&] { return pixel(960, 540) == QColor(0xfcfaf5); }));
}

} // namespace
} // namespace velmo
