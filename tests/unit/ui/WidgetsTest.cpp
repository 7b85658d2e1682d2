#include "ui/AlertDialog.h"
#include "ui/Button.h"
#include "ui/LevelMeter.h"
#include "ui/NameDialog.h"
#include "ui/Picker.h"
#include "ui/PopupMenu.h"
#include "ui/Shadow.h"
#include "ui/SwitchRow.h"
#include "ui/TextField.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace velmo {
namespace {

TEST(LevelMeter, LightsSegmentsInProportionAndTheirColoursTellHowLoud) {
    EXPECT_EQ(LevelMeter::segmentsFor(0), 0);
    EXPECT_EQ(LevelMeter::segmentsFor(-1), 0);
    EXPECT_EQ(LevelMeter::segmentsFor(0.001), 1);
    EXPECT_EQ(LevelMeter::segmentsFor(0.5), 11);
    EXPECT_EQ(LevelMeter::segmentsFor(1), 22);
    EXPECT_EQ(LevelMeter::segmentsFor(3), 22);
    EXPECT_EQ(LevelMeter::colorOf(8), Theme::brand);
    EXPECT_EQ(LevelMeter::colorOf(9), Theme::skyBright);
    EXPECT_EQ(LevelMeter::colorOf(16), Theme::gold);
    EXPECT_EQ(LevelMeter::colorOf(19), Theme::rec);
}

TEST(NameDialog, TakesANameThatIsNotOfBlanksAlone) {
    NameDialog dialog({.title = QStringLiteral("Guardar"), .mostText = 10});
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    const QSignalSpy saved(&dialog, &NameDialog::saved);
    dialog.show();
    auto* field = dialog.findChild<TextField*>();
    const auto buttons = dialog.findChildren<Button*>();
    const auto save =
        std::find_if(buttons.begin(), buttons.end(), [](Button* each) { return each->text() == "Guardar"; });
    ASSERT_NE(save, buttons.end());
    EXPECT_FALSE((*save)->isEnabled());
    QTest::keyClicks(field, QStringLiteral("   "));
    EXPECT_FALSE((*save)->isEnabled());
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(saved.isEmpty());
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClicks(field, QStringLiteral("Curso en video"));
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(saved.size(), 1);
    EXPECT_EQ(saved.front().front(), QStringLiteral("   Curso e"));
    EXPECT_FALSE(dialog.isVisible());
}

TEST(NameDialog, BeginsWithTheNameThatIsThereAllOfItSelected) {
    NameDialog dialog({.title = QStringLiteral("Renombrar"), .name = QStringLiteral("Clase"), .mostText = 255});
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    EXPECT_EQ(dialog.findChild<TextField*>()->selectedText(), QStringLiteral("Clase"));
}

TEST(LevelMeter, RisesAtOnceAndFallsByItselfAfterTheLastWord) {
    LevelMeter meter;
    meter.show();
    meter.setLevel(1);
    EXPECT_EQ(meter.lit(), 22);
    meter.setLevel(0);
    EXPECT_EQ(meter.lit(), 22);
    auto* fall = meter.findChild<Fade*>();
    fall->setCurrentTime(60);
    EXPECT_EQ(meter.lit(), 11);
    meter.setLevel(0.75);
    EXPECT_EQ(meter.lit(), 17);
    meter.setLevel(0);
    fall->setCurrentTime(120);
    EXPECT_EQ(meter.lit(), 0);
    EXPECT_EQ(fall->state(), Fade::Stopped) << "nothing ticks in silence";
}

TEST(LevelMeter, ComesUpWithoutTheBarsOfBefore) {
    LevelMeter meter;
    meter.show();
    meter.setLevel(1);
    meter.setLevel(0.5);
    meter.hide();
    EXPECT_EQ(meter.lit(), 11);
    meter.setLevel(0);
    EXPECT_EQ(meter.lit(), 0);
}

TEST(Picker, ShowsTheCurrentChoiceAndTheFirstForOneThatIsGone) {
    Picker picker({}, QStringLiteral("Micrófono"));
    picker.setChoices({{QStringLiteral("a"), QStringLiteral("Uno")}, {QStringLiteral("b"), QStringLiteral("Dos")}},
                      QStringLiteral("b"));
    EXPECT_EQ(picker.current(), QStringLiteral("b"));
    EXPECT_EQ(picker.text(), QStringLiteral("Dos"));
    picker.setChoices(picker.choices(), QStringLiteral("gone"));
    EXPECT_EQ(picker.text(), QStringLiteral("Uno"));
}

TEST(Picker, StepsThroughTheChoicesByKeyAndStopsAtBothEnds) {
    Picker picker({}, {});
    picker.setChoices({{QStringLiteral("a"), {}}, {QStringLiteral("b"), {}}}, QStringLiteral("a"));
    QSignalSpy picked(&picker, &Picker::picked);
    const auto press = [&picker](Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&picker, &event);
    };
    press(Qt::Key_Up);
    EXPECT_EQ(picked.count(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(picked.count(), 1);
    EXPECT_EQ(picker.current(), QStringLiteral("b"));
}

PopupMenu* menuOf(Picker& picker) {
    picker.click();
    return picker.findChild<PopupMenu*>();
}

TEST(Picker, AnEntryOfItsOpenMenuIsWhatItSaysThoughTheListBelowItHasChanged) {
    Picker picker({}, {});
    const Picker::Choice a{QStringLiteral("a"), QStringLiteral("Uno")};
    const Picker::Choice b{QStringLiteral("b"), QStringLiteral("Dos")};
    const Picker::Choice c{QStringLiteral("c"), QStringLiteral("Tres")};
    picker.setChoices({a, b, c}, a.id);
    const QSignalSpy picked(&picker, &Picker::picked);
    const QMenu& menu = *menuOf(picker);
    picker.setChoices({c, a}, a.id);
    menu.actions()[1]->trigger();
    EXPECT_EQ(picker.current(), a.id) << "what has gone cannot be chosen";
    EXPECT_TRUE(picked.isEmpty());
    menu.actions()[2]->trigger();
    EXPECT_EQ(picker.current(), c.id);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.front().front(), c.id);
}

TEST(Picker, WhatIsShownForAChoiceThatIsGoneCanBeChosenFromTheMenu) {
    Picker picker({}, {});
    picker.setChoices({{QStringLiteral("a"), {}}, {QStringLiteral("b"), {}}}, QStringLiteral("gone"));
    const QSignalSpy picked(&picker, &Picker::picked);
    menuOf(picker)->actions()[0]->trigger();
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.front().front(), QStringLiteral("a"));
}

TEST(SwitchRow, TellsOnlyWhatTheUserSwitches) {
    SwitchRow row(QStringLiteral("Algo"), {});
    QSignalSpy switched(&row, &SwitchRow::switched);
    row.setOn(true);
    EXPECT_TRUE(row.isOn());
    EXPECT_EQ(switched.count(), 0);
    row.findChild<QAbstractButton*>()->click();
    EXPECT_FALSE(row.isOn());
    ASSERT_EQ(switched.count(), 1);
    EXPECT_FALSE(switched.front().front().toBool());
}

AlertDialog::Content question(AlertDialog::First first) {
    return {AlertDialog::Icon::loss,
            QStringLiteral("¿Descartar?"),
            QStringLiteral("El video se eliminará."),
            {QStringLiteral("Descartar"), QStringLiteral("Cancelar")},
            first};
}

TEST(AlertDialog, ClosingItMeansTheLastButtonAndIsToldOnce) {
    auto* dialog = new AlertDialog(question(AlertDialog::First::isDestructive));
    QSignalSpy chosen(dialog, &AlertDialog::chosen);
    dialog->show();
    dialog->close();
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.front().front().toInt(), 1);
}

TEST(AlertDialog, AButtonTellsItsIndexAndClosesIt) {
    auto* dialog = new AlertDialog(question(AlertDialog::First::isDestructive));
    QSignalSpy chosen(dialog, &AlertDialog::chosen);
    dialog->show();
    for (Button* button : dialog->findChildren<Button*>()) {
        if (button->text() == QStringLiteral("Descartar")) {
            button->click();
        }
    }
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.front().front().toInt(), 0);
    EXPECT_FALSE(dialog->isVisible());
}

TEST(AlertDialog, TheDestructiveAnswerNeverHasTheFocusWhenItOpens) {
    AlertDialog dialog(question(AlertDialog::First::isDestructive));
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    dialog.show();
    const auto* focused = qobject_cast<Button*>(dialog.focusWidget());
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused->text(), QStringLiteral("Cancelar"));
}

TEST(AlertDialog, ReturnAndEnterChooseTheAnswerThatHasTheFocus) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        for (const AlertDialog::First first : {AlertDialog::First::isDefault, AlertDialog::First::isDestructive}) {
            auto* dialog = new AlertDialog(question(first));
            QSignalSpy chosen(dialog, &AlertDialog::chosen);
            dialog->show();
            QTest::keyClick(dialog->focusWidget(), key);
            ASSERT_EQ(chosen.count(), 1);
            EXPECT_EQ(chosen.front().front().toInt(), first == AlertDialog::First::isDestructive ? 1 : 0);
        }
    }
}

TEST(Button, AKeyThatIsHeldPressesOnce) {
    Button button(ButtonStyle::ghost, QStringLiteral("Carpeta"));
    QSignalSpy clicked(&button, &Button::clicked);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&button, &press);
    QCoreApplication::sendEvent(&button, &repeat);
    EXPECT_EQ(clicked.count(), 1);
}

TEST(Button, IsAsWideAsItsTextNeedsAndNeverCutsIt) {
    Button shortOne(ButtonStyle::ghost, QStringLiteral("Sí"));
    Button longOne(ButtonStyle::ghost, QStringLiteral("Una respuesta muy larga"));
    EXPECT_EQ(shortOne.minimumSizeHint(), shortOne.sizeHint());
    EXPECT_GT(longOne.sizeHint().width(),
              QFontMetrics(longOne.font()).horizontalAdvance(longOne.text()) + 2 * Button::kRoom);
}

TEST(Shadow, FadesOutInsideTheRoomThatItAsksFor) {
    const QMargins room = Shadow::margins(Elevation::dialog);
    const QRect shape(room.left(), room.top(), 200, 100);
    QImage image(shape.marginsAdded(room).size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter painter(&image);
    Shadow::paint(painter, shape, 14, Elevation::dialog);
    painter.end();
    EXPECT_GT(qAlpha(image.pixel(shape.center().x(), shape.bottom() + 4)), 60);
    for (int x = 0; x < image.width(); ++x) {
        ASSERT_LE(qAlpha(image.pixel(x, image.height() - 1)), 3) << x;
    }
    for (int y = 0; y < image.height(); ++y) {
        ASSERT_LE(qAlpha(image.pixel(0, y)), 3) << y;
        ASSERT_LE(qAlpha(image.pixel(image.width() - 1, y)), 3) << y;
    }
}

TEST(Shadow, OfOwnMeasuresFadesOutInsideItsRoomAndIsAsDarkAsAskedFor) {
    const auto darkest = [](double opacity) {
        const Shadow::Soft soft{16, 80, opacity};
        const QMargins room = Shadow::margins(soft);
        const QRect shape(room.left(), room.top(), 500, 400);
        QImage image(shape.marginsAdded(room).size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(0);
        QPainter painter(&image);
        Shadow::paint(painter, shape, 40, soft);
        EXPECT_EQ(painter.opacity(), 1);
        painter.end();
        for (int x = 0; x < image.width(); ++x) {
            EXPECT_LE(qAlpha(image.pixel(x, image.height() - 1)), 3) << x;
        }
        return qAlpha(image.pixel(shape.center()));
    };
    EXPECT_NEAR(darkest(1), 255, 3);
    EXPECT_NEAR(darkest(0.5), 128, 3);
}

TEST(Type, ATimeIsEquallyWideWhateverItsFigures) {
    const QFont font = Type::font(TextStyle::clock);
    EXPECT_EQ(Type::tabularWidth(font, QStringLiteral("11:11")), Type::tabularWidth(font, QStringLiteral("08:40")));
}

} // namespace
} // namespace velmo
