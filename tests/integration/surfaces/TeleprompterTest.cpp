#include "surfaces/Teleprompter.h"

#include "base/Clock.h"
#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"
#include "support/WaitUntil.h"
#include "support/XTestClient.h"
#include "surfaces/internal/PrompterPanel.h"
#include "surfaces/internal/PrompterView.h"

#include <QWidget>

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>

namespace velmo {
namespace {

using namespace std::chrono_literals;
using test::pass;
using test::waitUntil;

/// The host clock; remembers what it said.
class HeardClock final : public Clock {
public:
    MediaTime now() const override { return last = HostClock::shared().now(); }
    mutable MediaTime last = MediaTime::zero();
};

/// A script whose lines are one thin stroke each.
QString strokes() {
    return QStringLiteral("———————\n").repeated(500);
}

class TeleprompterOnScreen : public testing::Test {
protected:
    TeleprompterOnScreen() {
        client.movePointer(20, 1000);
        prefs.scriptText = strokes();
    }

    QRect text() const {
        const PrompterView& view = prompter.panel()->text();
        return {view.mapToGlobal(QPoint(0, 0)), view.size()};
    }
    /// The middle of the stroke that is seen nearest to the line to be read, from the top of the text, in pixels.
    double seenStroke() {
        const QRect place = text();
        const auto rows = client.rootPixels({place.x() + PrompterView::kInset + 12, place.y(), 1, place.height()});
        const auto green = [&rows](int y) {
            return static_cast<double>(rows[static_cast<std::size_t>(y)] >> 8 & 0xff);
        };
        const double ground = green(12);
        int brightest = 25;
        for (int y = 25; y < 25 + pitch; ++y) {
            brightest = green(y) > green(brightest) ? y : brightest;
        }
        double sum = 0;
        double weighted = 0;
        for (int y = brightest - 6; y <= brightest + 6; ++y) {
            const double light = std::max(green(y) - ground, 0.0);
            sum += light;
            weighted += light * y;
        }
        return sum > 100 ? weighted / sum : -1;
    }
    /// How far two strokes are from another, whichever of the strokes they are.
    double apart(double a, double b) const { return std::abs(std::remainder(a - b, pitch)); }
    void button(bool down) {
        xcb_test_fake_input(client.xcb(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, 0, client.root(), 0, 0, 0);
        client.sync();
    }
    void clickAt(QPoint place) {
        client.movePointer(place.x(), place.y());
        button(true);
        button(false);
    }

    test::XTestClient client{qEnvironmentVariable("DISPLAY").toStdString()};
    const Screen screen{1, {0, 0, 1920, 1080}, 1};
    test::MemoryDefaultsStore store;
    Prefs prefs{store};
    HeardClock clock;
    QtTimers timers;
    Teleprompter prompter{{prefs, clock, timers}};
    int pitch = 41; ///< of lines of 28 points
};

class TeleprompterAtASpeed : public TeleprompterOnScreen, public testing::WithParamInterface<double> {};

TEST_P(TeleprompterAtASpeed, StandsWhereTheTimeSaysAndIsSeenThere) {
    prefs.prompterSpeed = GetParam();
    prompter.show(screen);
    ASSERT_TRUE(waitUntil([&] { return seenStroke() > 0; }));
    pass(300ms); // the compositing manager fades it in
    const double first = seenStroke();
    for (int stop = 0; stop < 5; ++stop) {
        const double before = prompter.position();
        prompter.play();
        const MediaTime start = clock.last;
        for (int look = 0; look < 20; ++look) {
            pass(17ms);
            ASSERT_NEAR(prompter.position() - before, GetParam() * (clock.last - start).seconds(), 0.01);
        }
        prompter.pause();
        const double stands = first - prompter.position();
        EXPECT_TRUE(waitUntil([&] { return apart(seenStroke(), stands) < 0.5; }))
            << "seen at " << seenStroke() << " instead of " << std::remainder(stands, pitch);
    }
    EXPECT_GT(prompter.position(), 0);
}

INSTANTIATE_TEST_SUITE_P(All, TeleprompterAtASpeed, testing::Values(8.0, 32.0, 140.0));

TEST_F(TeleprompterOnScreen, AClickOnTheTextStartsItAndTakesNoFocus) {
    QWidget other;
    other.setGeometry(20, 800, 300, 200);
    other.show();
    ASSERT_TRUE(waitUntil([&] { return client.focus() == other.winId() && other.isActiveWindow(); }));
    prompter.show(screen);
    ASSERT_TRUE(waitUntil([&] { return seenStroke() > 0; }));
    clickAt(text().center());
    EXPECT_TRUE(waitUntil([&] { return prompter.playing(); }));
    clickAt(text().center());
    EXPECT_TRUE(waitUntil([&] { return !prompter.playing(); }));
    EXPECT_EQ(client.focus(), other.winId());
    EXPECT_TRUE(other.isActiveWindow());
}

TEST_F(TeleprompterOnScreen, IsDraggedByItsGroundAndNotByItsText) {
    prompter.show(screen);
    ASSERT_TRUE(waitUntil([&] { return seenStroke() > 0; }));
    const QRect card = prompter.panel()->cardGeometry();
    client.movePointer(text().center().x(), text().center().y());
    button(true);
    client.movePointer(text().center().x() + 80, text().center().y() + 80);
    button(false);
    ASSERT_TRUE(waitUntil([&] { return prompter.playing(); }));
    EXPECT_EQ(prompter.panel()->cardGeometry(), card);
    const QPoint ground(card.center().x() + 40, card.bottom() - 20); // between the buttons and the note
    client.movePointer(ground.x(), ground.y());
    button(true);
    client.movePointer(ground.x() + 50, ground.y() + 200);
    button(false);
    EXPECT_TRUE(
        waitUntil([&] { return prompter.panel()->cardGeometry().topLeft() == card.topLeft() + QPoint(50, 200); }));
}

TEST_F(TeleprompterOnScreen, ReachesTheEndOfAShortScript) {
    prefs.scriptText = QStringLiteral("———————\n").repeated(6);
    prefs.prompterSpeed = 140;
    prompter.show(screen);
    ASSERT_TRUE(waitUntil([&] { return std::isfinite(prompter.panel()->text().end()); }));
    prompter.play();
    EXPECT_TRUE(waitUntil([&] { return !prompter.playing(); }));
    EXPECT_EQ(prompter.position(), prompter.panel()->text().end());
}

} // namespace
} // namespace velmo
