#include "panels/ControlBar.h"

#include "panels/ClockLabel.h"
#include "panels/FlashStrip.h"
#include "panels/LevelColumns.h"
#include "panels/RecordingDot.h"
#include "ui/Button.h"
#include "unit/session/World.h"

#include <QApplication>
#include <QScreen>

namespace velmo {
namespace {

class ControlBarTest : public test::World {
protected:
    Button* button(ControlBar& bar, const char* name) {
        for (Button* each : bar.findChildren<Button*>()) {
            if (each->accessibleName() == QString::fromUtf8(name)) {
                return each;
            }
        }
        return nullptr;
    }
    Screen screen{1, {0, 0, 800, 800}, 1};
};

TEST_F(ControlBarTest, IsNeverNarrowerThan300NorLowerThan110) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    EXPECT_GE(bar.width(), ControlBar::kLeastWidth);
    EXPECT_GE(bar.height(), ControlBar::kLeastHeight);
}

TEST_F(ControlBarTest, StandsCentredEighteenPointsAboveTheBottom) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    const QRect all = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(bar.geometry().bottom(), all.bottom() - 18);
    EXPECT_NEAR(bar.geometry().center().x(), all.center().x(), 1);
}

TEST_F(ControlBarTest, ItsButtonsCallTheSession) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    button(bar, "Pausar")->click();
    EXPECT_EQ(controller->state(), test::State::paused);
    ASSERT_NE(button(bar, "Reanudar"), nullptr);
    EXPECT_TRUE(button(bar, "Reanudar")->isChecked());
    button(bar, "Reanudar")->click();
    EXPECT_EQ(controller->state(), test::State::recording);
    EXPECT_FALSE(button(bar, "Pausar")->isChecked());
    button(bar, "Marcador")->click();
    EXPECT_EQ(controller->markers().size(), 1u);
    alerts.answers = {1};
    button(bar, "Descartar")->click();
    alerts.answers = {1};
    button(bar, "Empezar de nuevo")->click();
    EXPECT_EQ(count("ask ¿Empezar de nuevo? | Se descartará lo grabado hasta ahora. | Reiniciar,Cancelar destructive"),
              1);
    button(bar, "Terminar y guardar")->click();
    EXPECT_EQ(controller->state(), test::State::saving);
}

TEST_F(ControlBarTest, TheButtonForClassMaterialComesWithTheFirstItemAndTogglesThePanel) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    EXPECT_FALSE(button(bar, "Material de la clase")->isVisible());
    bar.setMaterial(BarState::Material::shown);
    ASSERT_TRUE(button(bar, "Material de la clase")->isVisible());
    EXPECT_TRUE(button(bar, "Material de la clase")->isChecked());
    button(bar, "Material de la clase")->click();
    EXPECT_EQ(count("kitPanel.toggle"), 1);
}

TEST_F(ControlBarTest, TheClockShowsRecordedTimeAndTheBarKeepsItsCentreWhenItGrows) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    advance(65);
    EXPECT_EQ(bar.findChild<ClockLabel*>()->text(), QStringLiteral("01:05"));
    const QRect before = bar.geometry();
    advance(3600);
    EXPECT_EQ(bar.findChild<ClockLabel*>()->text(), QStringLiteral("1:01:05"));
    EXPECT_EQ(bar.geometry().bottom(), before.bottom());
}

/// Counts how often widgets are painted.
class PaintCounter final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

TEST_F(ControlBarTest, ATickOfTheClockPaintsTheClockAndNoControl) {
    ControlBar bar(*controller, nullptr);
    record();
    bar.show(screen);
    QApplication::processEvents();
    PaintCounter controls;
    PaintCounter clockLabel;
    for (Button* each : bar.findChildren<Button*>()) {
        each->installEventFilter(&controls);
    }
    bar.findChild<ClockLabel*>()->installEventFilter(&clockLabel);
    advance(0.5);
    QApplication::processEvents();
    EXPECT_EQ(clockLabel.paints, 0); // still the same second
    advance(0.5);
    QApplication::processEvents();
    EXPECT_EQ(clockLabel.paints, 1);
    EXPECT_EQ(controls.paints, 0);
}

TEST_F(ControlBarTest, NothingOfItTakesTheFocus) {
    ControlBar bar(*controller, nullptr);
    EXPECT_TRUE(bar.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    for (QWidget* each : bar.findChildren<QWidget*>()) {
        EXPECT_EQ(each->focusPolicy(), Qt::NoFocus) << qPrintable(each->accessibleName());
    }
}

TEST(FlashStrip, MarksAndTheSilenceWarningHaveAnIconAndScenesHaveNone) {
    EXPECT_EQ(FlashStrip::symbolFor(QStringLiteral("Marcador 3 · 12:47")), QStringLiteral("bookmark.fill"));
    EXPECT_EQ(FlashStrip::symbolFor(QStringLiteral("Capítulo · Gradiente")), QStringLiteral("bookmark.fill"));
    EXPECT_EQ(FlashStrip::symbolFor(QStringLiteral("No te escuchamos · revisa el micrófono")),
              QStringLiteral("mic.fill"));
    EXPECT_EQ(FlashStrip::symbolFor(QStringLiteral("Solo yo")), QString());
}

TEST(LevelColumns, StandBetweenFourAndSixteenPoints) {
    for (const int tall : LevelColumns::heightsFor(0)) {
        EXPECT_EQ(tall, 4);
    }
    EXPECT_EQ(LevelColumns::heightsFor(1)[2], 16);
    EXPECT_EQ(LevelColumns::heightsFor(9), LevelColumns::heightsFor(1));
}

} // namespace
} // namespace velmo
