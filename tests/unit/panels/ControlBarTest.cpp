#include "panels/ControlBar.h"

#include "panels/ClockLabel.h"
#include "panels/FlashStrip.h"
#include "panels/LevelColumns.h"
#include "panels/RecordingDot.h"
#include "panels/ZoomGroup.h"
#include "support/NothingCut.h"
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
    ControlBar::Parts parts() {
        return {
            {*controller, &bubble, &secondBubble, &phone, &teleprompter}, prefs, nullptr, [this] { return around; }};
    }
    BarSurroundings around;
    Screen screen{1, {0, 0, 800, 800}, 1};
};

TEST_F(ControlBarTest, IsNeverNarrowerThan300NorLowerThan110) {
    ControlBar bar(parts());
    record();
    bar.show(screen);
    EXPECT_GE(bar.width(), ControlBar::kLeastWidth);
    EXPECT_GE(bar.height(), ControlBar::kLeastHeight);
}

TEST_F(ControlBarTest, NoTextIsCutHoweverLargeTheDesktopWantsIt) {
    for (const double factor : test::kTextScales) {
        const test::LargerText larger(factor);
        ControlBar bar(parts());
        record();
        bar.show(screen);
        EXPECT_EQ(test::cutTexts(bar), QStringList()) << factor;
    }
}

TEST_F(ControlBarTest, StandsCentredEighteenPointsAboveTheBottom) {
    ControlBar bar(parts());
    record();
    bar.show(screen);
    const QRect all = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(bar.geometry().bottom(), all.bottom() - 18);
    EXPECT_NEAR(bar.geometry().center().x(), all.center().x(), 1);
}

TEST_F(ControlBarTest, ItsHelpTellsTheKeysThatTheUserChose) {
    ControlBar bar(parts());
    record();
    bar.show(screen);
    EXPECT_EQ(button(bar, "Pausar")->toolTip(), QStringLiteral("Pausar (⌃P)"));
    prefs.shortcutModifier = ShortcutModifier::super;
    EXPECT_EQ(button(bar, "Pausar")->toolTip(), QStringLiteral("Pausar (Super\u00A0P)"));
    EXPECT_EQ(button(bar, "Terminar y guardar")->toolTip(), QStringLiteral("Terminar y guardar (Super\u00A0G)"));
}

TEST_F(ControlBarTest, ItsButtonsCallTheSession) {
    ControlBar bar(parts());
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
    ControlBar bar(parts());
    record();
    bar.show(screen);
    EXPECT_FALSE(button(bar, "Material de la clase")->isVisible());
    around.material = BarSurroundings::Material::shown;
    bar.refresh();
    ASSERT_TRUE(button(bar, "Material de la clase")->isVisible());
    EXPECT_TRUE(button(bar, "Material de la clase")->isChecked());
    button(bar, "Material de la clase")->click();
    EXPECT_EQ(count("kitPanel.toggle"), 1);
}

TEST_F(ControlBarTest, TheClockShowsRecordedTimeAndTheBarKeepsItsCentreWhenItGrows) {
    ControlBar bar(parts());
    record();
    bar.show(screen);
    advance(65);
    EXPECT_EQ(bar.findChild<ClockLabel*>()->text(), QStringLiteral("01:05"));
    const QRect before = bar.geometry();
    advance(3600);
    EXPECT_EQ(bar.findChild<ClockLabel*>()->text(), QStringLiteral("1:01:05"));
    EXPECT_EQ(bar.geometry().bottom(), before.bottom());
}

TEST_F(ControlBarTest, TheZoomsControlsStandInTheirCapsuleWhileItIsOn) {
    ControlBar bar(parts());
    record();
    bar.show(screen);
    auto* group = bar.findChild<ZoomGroup*>();
    EXPECT_FALSE(group->isVisible());
    button(bar, "Zoom: acercar donde está el mouse")->click();
    ASSERT_TRUE(controller->zoomOn());
    EXPECT_TRUE(group->isVisible());
    EXPECT_EQ(group->accessibleName(), QStringLiteral("Zoom 2.0×"));
    button(bar, "Acercar más")->click();
    EXPECT_NE(group->accessibleName(), QStringLiteral("Zoom 2.0×"));
    button(bar, "Sigue al mouse · toca para dejarlo fijo aquí")->click();
    EXPECT_FALSE(controller->zoomFollowing());
    EXPECT_TRUE(button(bar, "Fijo · toca para que siga al mouse")->isChecked());
    button(bar, "Volver a la vista normal")->click();
    EXPECT_FALSE(group->isVisible());
}

TEST_F(ControlBarTest, CameraSecondCameraAndScriptGoToTheirSurfaces) {
    prefs.mode = RecordMode::screenCam;
    prefs.scriptText = QStringLiteral("Hola");
    around.hasVideo = around.hasSecondBubble = around.hasPhone = true;
    ControlBar bar(parts());
    record();
    bar.show(screen);
    button(bar, "Mostrar u ocultar la cámara")->click();
    button(bar, "Mostrar u ocultar la segunda cámara")->click();
    button(bar, "Mostrar el guion")->click();
    button(bar, "Mostrar tu celular (iPhone por cable)")->click();
    EXPECT_EQ(count("bubble.toggleUserVisibility"), 1);
    EXPECT_EQ(count("secondBubble.toggleUserVisibility"), 1);
    EXPECT_EQ(count("teleprompter.show"), 1);
    EXPECT_EQ(count("phone.show"), 1);
    around.scriptVisible = around.phoneVisible = true;
    bar.refresh();
    button(bar, "Ocultar el guion")->click();
    button(bar, "Quitar el celular del video")->click();
    EXPECT_EQ(count("teleprompter.hide"), 1);
    EXPECT_EQ(count("phone.hide"), 1);
}

TEST_F(ControlBarTest, OnANarrowScreenItGivesUpGapsThenTheWordThenMargins) {
    prefs.mode = RecordMode::screenCam;
    prefs.scriptText = QStringLiteral("Hola");
    around = {true, true, false, true, true, false, true, BarSurroundings::Material::shown};
    ControlBar bar(parts());
    record();
    bar.show(screen); // the test's screen is 800 wide
    Button* const back = button(bar, "Volver a la vista normal");
    EXPECT_EQ(back->text(), QString());
    Button* const restart = button(bar, "Empezar de nuevo");
    Button* const discard = button(bar, "Descartar");
    EXPECT_EQ(discard->x(), restart->geometry().right() + 1);
    prefs.mode = RecordMode::cam;
    bar.show(screen);
    EXPECT_EQ(back->text(), QStringLiteral("Volver"));
    EXPECT_EQ(discard->x(), restart->geometry().right() + 3);
}

TEST_F(ControlBarTest, OnTheNarrowestScreenItStillStaysWithinItWithTheZoomOn) {
    prefs.mode = RecordMode::screenCam;
    prefs.scriptText = QStringLiteral("Hola");
    around = {true, false, false, false, false, false, true, BarSurroundings::Material::shown};
    ControlBar bar(parts());
    record();
    button(bar, "Zoom: acercar donde está el mouse")->click();
    bar.show(screen); // the test's screen is 800 wide
    const QRect all = QGuiApplication::primaryScreen()->availableGeometry();
    for (const char* name : {"Pausar", "Volver a la vista normal", "Material de la clase", "Terminar y guardar"}) {
        const Button* const each = button(bar, name);
        ASSERT_TRUE(each->isVisible()) << name;
        EXPECT_TRUE(all.contains(QRect(each->mapToGlobal(QPoint()), each->size()))) << name << " in a bar of " << bar.width();
    }
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
    ControlBar bar(parts());
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
    ControlBar bar(parts());
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
