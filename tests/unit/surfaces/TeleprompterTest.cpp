#include "surfaces/Teleprompter.h"

#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"
#include "surfaces/internal/PrompterPanel.h"
#include "surfaces/internal/PrompterView.h"
#include "ui/Button.h"
#include "unit/session/ManualTimers.h"

#include <QCoreApplication>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>

#include <gmock/gmock.h>

namespace velmo {
namespace {

constexpr double kTick = 1.0 / 60;

QString longScript() {
    QString text;
    for (int i = 0; i < 300; ++i) {
        text += QStringLiteral("Renglón %1 del guion de la clase, que sigue y sigue. ").arg(i);
    }
    return text;
}

/// On the screen of the offscreen platform, 800x800, and a second one to its right.
struct Desk {
    test::MemoryDefaultsStore store;
    Prefs prefs{store};
    test::ManualClock clock{100};
    test::ManualTimers timers{clock};
    Screen screen{1, {0, 0, 800, 800}, 1};
    Screen other{2, {800, 0, 1600, 800}, 1};
    Teleprompter prompter{{prefs, clock, timers}};

    explicit Desk(const QString& script = longScript()) { prefs.scriptText = script; }

    void ticks(int count) { timers.advance(count * kTick + 1e-6); }
    PrompterPanel& panel() const { return const_cast<PrompterPanel&>(*prompter.panel()); }
    QRect card() const { return panel().cardGeometry(); }
    void settle() {
        for (int i = 0; i < 300; ++i) {
            QCoreApplication::processEvents();
        }
    }
    Button& button(const char* name) const {
        for (Button* each : panel().findChildren<Button*>()) {
            if (each->accessibleName() == QString::fromUtf8(name)) {
                return *each;
            }
        }
        throw std::runtime_error(name);
    }
    void click(QWidget& widget) const {
        const QPointF place = widget.rect().center();
        QMouseEvent press(QEvent::MouseButtonPress, place, widget.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                          {});
        QMouseEvent release(QEvent::MouseButtonRelease, place, widget.mapToGlobal(place), Qt::LeftButton, {}, {});
        QCoreApplication::sendEvent(&widget, &press);
        QCoreApplication::sendEvent(&widget, &release);
    }
    QImage picture() const {
        QImage image(panel().text().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        panel().text().render(&image, {}, {}, QWidget::RenderFlags());
        return image;
    }
};

TEST(Teleprompter, WithoutAScriptNothingIsShown) {
    for (const char* script : {"", " \n\t \n"}) {
        Desk desk(QString::fromUtf8(script));
        EXPECT_FALSE(desk.prompter.hasScript());
        desk.prompter.show(desk.screen);
        EXPECT_FALSE(desk.prompter.visible());
        EXPECT_EQ(desk.prompter.panel(), nullptr);
    }
}

TEST(Teleprompter, ComesUpPausedInTheMiddleUnderTheTopEdge) {
    Desk desk;
    int heard = 0;
    QObject::connect(&desk.prompter, &Teleprompter::visibleChanged, &desk.prompter, [&heard] { ++heard; });
    desk.prompter.show(desk.screen);
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(desk.prompter.visible());
    EXPECT_FALSE(desk.prompter.playing());
    EXPECT_EQ(desk.timers.running(), 0);
    EXPECT_EQ(desk.card(), QRect(200, 6, 400, 205)) << "half of the screen, four lines of 28 and the controls";
    EXPECT_TRUE(desk.panel().isVisible());
    EXPECT_EQ(desk.panel().level(), PanelLevel::bar);
}

TEST(Teleprompter, IsNoWiderThan680Points) {
    Desk desk;
    desk.prompter.show({1, {0, 0, 2560, 800}, 1});
    EXPECT_EQ(desk.card().width(), 680);
}

TEST(Teleprompter, ScrollsByTheTimeThatPasses) {
    for (const double speed : {8.0, 32.0, 140.0}) {
        Desk desk;
        desk.prefs.prompterSpeed = speed;
        desk.prompter.show(desk.screen);
        desk.prompter.play();
        for (int second = 1; second <= 20; ++second) {
            desk.timers.advance(1);
            ASSERT_NEAR(desk.prompter.position(), second * speed, 0.1 + kTick * speed);
            ASSERT_EQ(desk.panel().text().position(), desk.prompter.position());
        }
    }
}

TEST(Teleprompter, AScriptShorterThanTheWindowStopsPlayingAtTheFirstTick) {
    Desk desk(QStringLiteral("Hola"));
    int heard = 0;
    QObject::connect(&desk.prompter, &Teleprompter::playingChanged, &desk.prompter, [&heard] { ++heard; });
    desk.prompter.show(desk.screen);
    desk.settle();
    desk.prompter.play();
    EXPECT_TRUE(desk.prompter.playing());
    desk.ticks(1);
    EXPECT_FALSE(desk.prompter.playing());
    EXPECT_EQ(desk.prompter.position(), 0);
    EXPECT_EQ(heard, 2);
    EXPECT_EQ(desk.timers.running(), 0);
}

TEST(Teleprompter, StopsAtTheEndOfTheTextAndTheButtonGoesBack) {
    Desk desk(QStringLiteral("uno\ndos\ntres\ncuatro\ncinco\nseis"));
    desk.prefs.prompterSpeed = 140;
    desk.prompter.show(desk.screen);
    desk.settle();
    const double end = desk.panel().text().end();
    ASSERT_GT(end, 100);
    desk.prompter.play();
    EXPECT_EQ(desk.button("Pausar").text(), QStringLiteral("Pausar"));
    desk.timers.advance(20);
    EXPECT_EQ(desk.prompter.position(), end);
    EXPECT_FALSE(desk.prompter.playing());
    EXPECT_EQ(desk.button("Empezar").text(), QStringLiteral("Empezar"));
}

TEST(Teleprompter, ALongPauseAndThenPlayDoesNotJump) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.prompter.play();
    desk.timers.advance(2);
    desk.prompter.pause();
    const double before = desk.prompter.position();
    desk.timers.advance(1000);
    EXPECT_EQ(desk.prompter.position(), before);
    desk.prompter.play();
    desk.ticks(1);
    EXPECT_NEAR(desk.prompter.position(), before + 32 * kTick, 0.1);
}

TEST(Teleprompter, SpeedAndSizeAreKeptAtTheirLimits) {
    Desk desk;
    desk.prompter.show(desk.screen);
    for (int i = 0; i < 40; ++i) {
        desk.prompter.faster();
        desk.prompter.biggerText();
    }
    EXPECT_EQ(desk.prefs.prompterSpeed.value(), 140);
    EXPECT_EQ(desk.prefs.prompterFont.value(), 56);
    EXPECT_EQ(desk.card().height(), 356);
    for (int i = 0; i < 40; ++i) {
        desk.prompter.slower();
        desk.prompter.smallerText();
    }
    EXPECT_EQ(desk.prefs.prompterSpeed.value(), 8);
    EXPECT_EQ(desk.prefs.prompterFont.value(), 16);
    EXPECT_EQ(desk.card().height(), 140);
}

TEST(Teleprompter, StepsAreOfEightPointsASecondAndOfFourPoints) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.prompter.faster();
    desk.prompter.biggerText();
    EXPECT_EQ(desk.prefs.prompterSpeed.value(), 40);
    EXPECT_EQ(desk.prefs.prompterFont.value(), 32);
}

TEST(Teleprompter, SizesThatNobodyChoseAreReadAsTheirLimits) {
    Desk desk;
    desk.prefs.prompterFont = 1e9;
    desk.prefs.prompterSpeed = -5;
    desk.prompter.show(desk.screen);
    EXPECT_EQ(desk.card().height(), 356);
    desk.prompter.play();
    desk.timers.advance(1);
    EXPECT_NEAR(desk.prompter.position(), 8, 0.3);
}

TEST(Teleprompter, ShowingItOnAnotherScreenMovesItThereAndBeginsAnew) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.prompter.play();
    desk.timers.advance(3);
    desk.prompter.show(desk.other);
    EXPECT_EQ(desk.card(), QRect(1260, 6, 680, 205));
    EXPECT_EQ(desk.prompter.position(), 0);
}

TEST(Teleprompter, ShowingItAgainOnItsScreenLeavesItWhereTheUserPutIt) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.prompter.play();
    desk.timers.advance(3);
    desk.prompter.pause();
    desk.panel().move(40, 300);
    const QPoint place = desk.card().topLeft();
    const double before = desk.prompter.position();
    desk.prompter.show(desk.screen);
    EXPECT_EQ(desk.card().topLeft(), place);
    EXPECT_NEAR(desk.prompter.position(), before, 1e-6);
}

TEST(Teleprompter, HidingStopsItAndAFreshShowBeginsAtTheTop) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.prompter.play();
    desk.timers.advance(3);
    desk.prompter.hide();
    EXPECT_FALSE(desk.prompter.visible());
    EXPECT_FALSE(desk.prompter.playing());
    EXPECT_FALSE(desk.panel().isVisible());
    EXPECT_EQ(desk.timers.running(), 0);
    desk.prompter.toggle(desk.screen);
    EXPECT_TRUE(desk.prompter.visible());
    EXPECT_EQ(desk.prompter.position(), 0);
    desk.prompter.toggle(desk.screen);
    EXPECT_FALSE(desk.prompter.visible());
}

TEST(Teleprompter, HiddenItCannotPlay) {
    Desk desk;
    desk.prompter.play();
    desk.prompter.togglePlay();
    EXPECT_FALSE(desk.prompter.playing());
}

TEST(Teleprompter, AClickOnTheTextStartsAndPauses) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.click(desk.panel().text());
    EXPECT_TRUE(desk.prompter.playing());
    desk.click(desk.panel().text());
    EXPECT_FALSE(desk.prompter.playing());
}

TEST(Teleprompter, EachButtonDoesWhatItSays) {
    Desk desk;
    desk.prompter.show(desk.screen);
    desk.click(desk.button("Empezar"));
    EXPECT_TRUE(desk.prompter.playing());
    desk.click(desk.button("Más rápido"));
    EXPECT_EQ(desk.prefs.prompterSpeed.value(), 40);
    desk.click(desk.button("Más lento"));
    EXPECT_EQ(desk.prefs.prompterSpeed.value(), 32);
    desk.click(desk.button("Letra más grande"));
    EXPECT_EQ(desk.prefs.prompterFont.value(), 32);
    desk.click(desk.button("Letra más pequeña"));
    EXPECT_EQ(desk.prefs.prompterFont.value(), 28);
    desk.click(desk.button("Ocultar el guion"));
    EXPECT_FALSE(desk.prompter.visible());
}

TEST(Teleprompter, ItsHelpNamesTheKeyThatTheUserChose) {
    Desk desk;
    desk.prompter.show(desk.screen);
    EXPECT_EQ(desk.button("Empezar").toolTip(), QStringLiteral("También con un clic sobre el texto o ⌃T"));
    desk.prefs.shortcutModifier = ShortcutModifier::controlAlt;
    EXPECT_EQ(desk.button("Empezar").toolTip(), QStringLiteral("También con un clic sobre el texto o ⌃⌥T"));
}

TEST(Teleprompter, ANewSizeOfTheLettersKeepsTheLineThatIsRead) {
    Desk desk;
    desk.prefs.prompterSpeed = 140;
    desk.prompter.show(desk.screen);
    desk.settle();
    desk.prompter.play();
    desk.timers.advance(20);
    desk.prompter.pause();
    const double share = desk.prompter.position() / (desk.panel().text().end() + desk.panel().text().height());
    for (int i = 0; i < 5; ++i) {
        desk.prompter.biggerText();
    }
    desk.settle();
    const double then = desk.prompter.position() / (desk.panel().text().end() + desk.panel().text().height());
    EXPECT_NEAR(then, share, 0.02);
    EXPECT_EQ(desk.panel().text().position(), desk.prompter.position());
}

TEST(Teleprompter, LinesThatHaveBeenReadAreDimmed) {
    Desk desk(QStringLiteral("█████\n█████\n█████\n█████\n█████\n█████\n█████"));
    desk.prompter.show(desk.screen);
    desk.settle();
    const QImage first = desk.picture();
    const auto alphaAt = [](const QImage& image, int y) { return image.pixelColor(40, y).alphaF(); };
    EXPECT_NEAR(alphaAt(first, 58), 1, 0.02) << "the first line stands at the marker";
    desk.panel().text().setPosition(41);
    const QImage second = desk.picture();
    EXPECT_NEAR(alphaAt(second, 58), 1, 0.02);
    EXPECT_NEAR(alphaAt(second, 18), 0.55, 0.03);
}

TEST(Teleprompter, ATextThatMovesByAQuarterPixelIsBetweenTheTwo) {
    Desk desk(QStringLiteral("Una línea\notra línea\ny otra\ny otra\ny otra\ny otra"));
    desk.prompter.show(desk.screen);
    desk.settle();
    desk.panel().text().setPosition(3);
    const QImage here = desk.picture();
    desk.panel().text().setPosition(4);
    const QImage next = desk.picture();
    desk.panel().text().setPosition(3.25);
    const QImage between = desk.picture();
    for (int y = 20; y < 120; ++y) {
        for (int x = 0; x < here.width(); ++x) {
            const int wanted = (3 * qAlpha(here.pixel(x, y)) + qAlpha(next.pixel(x, y))) / 4;
            ASSERT_NEAR(qAlpha(between.pixel(x, y)), wanted, 4) << x << ", " << y;
        }
    }
}

TEST(Teleprompter, AScriptOfAMillionCharactersIsReadAtOnce) {
    QString script;
    while (script.size() < 1024 * 1024) {
        script += longScript();
    }
    Desk desk(script);
    desk.prompter.show(desk.screen);
    desk.prompter.play();
    desk.timers.advance(1);
    EXPECT_NEAR(desk.prompter.position(), 32, 0.6);
    EXPECT_TRUE(desk.prompter.playing());
}

} // namespace
} // namespace velmo
