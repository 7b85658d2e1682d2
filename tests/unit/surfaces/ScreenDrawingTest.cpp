#include "surfaces/ScreenDrawing.h"

#include "surfaces/DrawingPalette.h"
#include "surfaces/internal/DrawingOverlay.h"
#include "unit/session/ManualTimers.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMouseEvent>

#include <gmock/gmock.h>

#include <memory>

namespace velmo {
namespace {

struct Desk {
    test::ManualClock clock{100};
    test::ManualTimers timers{clock};
    int toFront = 0;
    Screen screen{1, {0, 0, 800, 800}, 1};
    ScreenDrawing drawing{{clock, timers, [this] { ++toFront; }}};

    void ready() {
        drawing.prepare(screen);
        drawing.parkPrepared();
    }
    void mouse(QEvent::Type type) {
        QMouseEvent event(type, QPointF(200, 200), QPointF(200, 200), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&drawing.overlay()->view(), &event);
    }
    void stroke() {
        mouse(QEvent::MouseButtonPress);
        mouse(QEvent::MouseButtonRelease);
    }
    QAbstractButton* control(const char* name) const {
        for (QAbstractButton* button : drawing.palette()->findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == QString::fromUtf8(name)) {
                return button;
            }
        }
        return nullptr;
    }
};

TEST(ScreenDrawing, ThePaletteGoesBelowTheScriptWhileThatIsRead) {
    Desk desk;
    QRect script;
    ScreenDrawing drawing{{desk.clock, desk.timers, {}, [&script] { return script; }}};
    drawing.prepare(desk.screen);
    drawing.startDrawing();
    const QRect top = drawing.palette()->cardGeometry();
    drawing.finishDrawing();
    script = top.translated(0, -6);
    drawing.startDrawing();
    EXPECT_EQ(drawing.palette()->cardGeometry(), top.translated(0, script.bottom() + 1 + 12 - top.top()));
    drawing.finishDrawing();
    drawing.startDrawing();
    EXPECT_FALSE(drawing.palette()->cardGeometry().intersects(script)) << "and stays where it is clear of it";
}

TEST(ScreenDrawing, TheTablesAreTheGivenOnes) {
    const unsigned expected[] = {0xFF453A, 0xFFD60A, 0x30D158, 0x64D2FF, 0x0A84FF, 0xFF375F, 0xFFFFFF, 0x0D1B2A};
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(ScreenDrawing::colors[i].rgb() & 0xFFFFFF, expected[i]);
    }
    Desk desk;
    EXPECT_EQ(desk.drawing.tool(), DrawingTool::pen);
    EXPECT_EQ(desk.drawing.currentColor(), ScreenDrawing::colors[0]);
    EXPECT_EQ(desk.drawing.currentWidth(), 5);
    desk.ready();
    desk.drawing.setWidthIndex(5);
    EXPECT_EQ(desk.drawing.currentWidth(), 9);
    desk.drawing.setColorIndex(-1);
    EXPECT_EQ(desk.drawing.currentColor(), ScreenDrawing::colors[7]);
}

TEST(ScreenDrawing, StartingWithoutWindowsDoesNothing) {
    Desk desk;
    desk.drawing.toggle();
    EXPECT_FALSE(desk.drawing.drawing());
    EXPECT_FALSE(desk.drawing.overlayWindowID());
    EXPECT_EQ(desk.toFront, 0);
    desk.drawing.undo();
    desk.drawing.clear();
}

TEST(ScreenDrawing, TheOverlayIsOnTheScreenUnseenUntilItIsParkedAndKeepsItsIdentity) {
    Desk desk;
    desk.drawing.prepare(desk.screen);
    ASSERT_TRUE(desk.drawing.overlay());
    EXPECT_TRUE(desk.drawing.overlay()->isVisible());
    EXPECT_EQ(desk.drawing.overlay()->windowOpacity(), 0);
    const auto id = desk.drawing.overlayWindowID();
    ASSERT_TRUE(id);
    desk.drawing.parkPrepared();
    EXPECT_FALSE(desk.drawing.overlay()->isVisible());
    EXPECT_EQ(desk.drawing.overlay()->windowOpacity(), 1);
    desk.drawing.startDrawing();
    desk.stroke();
    desk.drawing.finishDrawing();
    EXPECT_EQ(desk.drawing.overlayWindowID(), id);
    desk.drawing.teardown();
    EXPECT_FALSE(desk.drawing.overlayWindowID());
}

TEST(ScreenDrawing, DrawingShowsCanvasAndPaletteAndKeepsTheCamerasInFront) {
    Desk desk;
    desk.ready();
    desk.drawing.toggle();
    EXPECT_TRUE(desk.drawing.drawing());
    EXPECT_TRUE(desk.drawing.overlay()->isVisible());
    EXPECT_TRUE(desk.drawing.palette()->isVisible());
    EXPECT_EQ(desk.drawing.overlay()->windowOpacity(), 1);
    EXPECT_EQ(desk.toFront, 1);
    EXPECT_EQ(desk.drawing.overlay()->level(), PanelLevel::bubble);
    EXPECT_EQ(desk.drawing.palette()->level(), PanelLevel::bar);
    EXPECT_EQ(desk.drawing.overlay()->geometry(), QRect(0, 0, 800, 800));
    EXPECT_EQ(desk.drawing.overlay()->view().cursor().shape(), Qt::CrossCursor);
}

TEST(ScreenDrawing, WithoutInkTheCanvasGoesAndWithInkItStaysUntilItIsCleared) {
    Desk desk;
    desk.ready();
    desk.drawing.toggle();
    desk.drawing.toggle();
    EXPECT_FALSE(desk.drawing.drawing());
    EXPECT_FALSE(desk.drawing.overlay()->isVisible());
    EXPECT_FALSE(desk.drawing.palette()->isVisible());
    desk.drawing.toggle();
    desk.stroke();
    EXPECT_TRUE(desk.drawing.hasStrokes());
    desk.drawing.finishDrawing();
    EXPECT_TRUE(desk.drawing.overlay()->isVisible());
    EXPECT_FALSE(desk.drawing.palette()->isVisible());
    desk.drawing.clear();
    EXPECT_FALSE(desk.drawing.hasStrokes());
    EXPECT_FALSE(desk.drawing.overlay()->isVisible());
}

TEST(ScreenDrawing, AKeyThatEndsDrawingEndsTheStrokeWhoseButtonIsStillHeld) {
    for (const DrawingTool tool : {DrawingTool::pen, DrawingTool::laser, DrawingTool::eraser}) {
        Desk desk;
        desk.ready();
        desk.drawing.startDrawing();
        desk.drawing.setTool(tool);
        desk.mouse(QEvent::MouseButtonPress);
        desk.drawing.toggle(); // the canvas hears nothing of the button from now on
        const DrawingModel& model = desk.drawing.overlay()->view().model();
        EXPECT_FALSE(model.current());
        EXPECT_FALSE(model.isErasing());
        EXPECT_EQ(desk.drawing.hasStrokes(), tool == DrawingTool::pen) << "what was drawn stays";
    }
}

TEST(ScreenDrawing, ClearingWhileDrawingKeepsTheCanvas) {
    Desk desk;
    desk.ready();
    desk.drawing.toggle();
    desk.stroke();
    desk.drawing.clear();
    EXPECT_TRUE(desk.drawing.overlay()->isVisible());
    desk.drawing.undo();
    EXPECT_TRUE(desk.drawing.hasStrokes());
}

TEST(ScreenDrawing, PreparingAgainBeginsWithoutInkAndKeepsTheTip) {
    Desk desk;
    desk.ready();
    desk.drawing.setColorIndex(3);
    desk.drawing.toggle();
    desk.stroke();
    desk.drawing.prepare(desk.screen);
    EXPECT_FALSE(desk.drawing.drawing());
    EXPECT_FALSE(desk.drawing.hasStrokes());
    EXPECT_EQ(desk.drawing.colorIndex(), 3);
    EXPECT_TRUE(desk.drawing.overlay()->view().model().strokes().isEmpty());
}

TEST(ScreenDrawing, TheMouseTellsEveryMovementOnlyWhileDrawing) {
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents); // as on an X server
    Desk desk;
    desk.ready();
    desk.drawing.toggle();
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents));
    desk.drawing.teardown();
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents));
}

TEST(DrawingPalette, EveryControlHasANameAndAToolTipAndTakesNoFocus) {
    Desk desk;
    desk.ready();
    const auto controls = desk.drawing.palette()->findChildren<QAbstractButton*>();
    EXPECT_EQ(controls.size(), 10 + 8 + 3 + 3);
    QStringList names;
    for (const QAbstractButton* control : controls) {
        EXPECT_FALSE(control->accessibleName().isEmpty());
        EXPECT_FALSE(control->toolTip().isEmpty());
        EXPECT_EQ(control->focusPolicy(), Qt::NoFocus);
        EXPECT_FALSE(names.contains(control->accessibleName())) << qPrintable(control->accessibleName());
        names.append(control->accessibleName());
    }
}

TEST(DrawingPalette, ChoosesToolColourAndWidthAndShowsWhatIsChosen) {
    Desk desk;
    desk.ready();
    EXPECT_TRUE(desk.control("Bolígrafo")->isChecked());
    desk.control("Elipse a mano")->click();
    EXPECT_EQ(desk.drawing.tool(), DrawingTool::ellipse);
    EXPECT_TRUE(desk.control("Elipse a mano")->isChecked());
    EXPECT_FALSE(desk.control("Bolígrafo")->isChecked());
    desk.control("Elipse a mano")->click();
    EXPECT_TRUE(desk.control("Elipse a mano")->isChecked()) << "a second click lets it be";
    desk.control("Azul")->click();
    EXPECT_EQ(desk.drawing.colorIndex(), 4);
    desk.control("Trazo grueso")->click();
    EXPECT_EQ(desk.drawing.widthIndex(), 2);
    desk.drawing.setTool(DrawingTool::eraser);
    EXPECT_TRUE(desk.control("Borrador")->isChecked());
}

TEST(DrawingPalette, UndoesClearsAndFinishes) {
    Desk desk;
    desk.ready();
    desk.drawing.toggle();
    desk.stroke();
    desk.control("Borrar todo")->click();
    EXPECT_FALSE(desk.drawing.hasStrokes());
    desk.control("Deshacer")->click();
    EXPECT_TRUE(desk.drawing.hasStrokes());
    QAbstractButton* done = desk.control("Listo");
    EXPECT_EQ(done->toolTip(), QStringLiteral("Volver a usar las apps (los dibujos siguen visibles)"));
    done->click();
    EXPECT_FALSE(desk.drawing.drawing());
}

TEST(DrawingPalette, StandsInTheMiddleOfTheTop) {
    Desk desk;
    desk.screen.frame = {0, 0, 800, 800};
    desk.ready();
    const QRect card = desk.drawing.palette()->cardGeometry();
    EXPECT_EQ(card.top(), 12);
    EXPECT_EQ(card.height(), DrawingPalette::kHeight);
    EXPECT_NEAR(card.center().x(), 400, 1);
}

TEST(DrawingPalette, StaysOnAScreenThatBecomesSmaller) {
    Desk desk;
    desk.ready();
    DrawingPalette& palette = *desk.drawing.palette();
    palette.setCardGeometry(QRect(2000, 1500, palette.cardGeometry().width(), DrawingPalette::kHeight));
    palette.keepInside(QRect(0, 0, 1366, 768));
    EXPECT_TRUE(QRect(0, 0, 1366, 768).contains(palette.cardGeometry()));
}

} // namespace
} // namespace velmo
