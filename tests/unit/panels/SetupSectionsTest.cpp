#include "SetupFixture.h"
#include "panels/setup/ProfilesMenu.h"
#include "panels/setup/ScriptSection.h"
#include "ui/Button.h"
#include "ui/Chip.h"
#include "ui/ColorWell.h"
#include "ui/NameDialog.h"
#include "ui/PopupMenu.h"
#include "ui/Segments.h"
#include "ui/Slider.h"
#include "ui/Swatch.h"
#include "ui/TextArea.h"
#include "ui/TextField.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTest>

namespace velmo {
namespace {

class SetupSectionsTest : public test::SetupWorld {
protected:
    SetupSectionsTest() {
        prefs.mode = RecordMode::screenCam;
        prefs.showName = true;
        store.setBoolean(QStringLiteral("panel.mas"), true);
        for (const char* card : {"panel.burbuja", "panel.zoom", "panel.presentador", "panel.guion"}) {
            store.setBoolean(QString::fromLatin1(card), true);
        }
        panel = make();
        panel->show();
    }

    void pick(const char* group, const char* choice) const {
        const auto* found = named<ChoiceGroup>(*panel, group);
        ASSERT_NE(found, nullptr) << group;
        for (QAbstractButton* button : found->buttons()) {
            if (button->text() == QString::fromUtf8(choice)) {
                return button->click();
            }
        }
        FAIL() << choice;
    }
    static void paste(QWidget& field, const QString& text) {
        auto data = std::make_unique<QMimeData>();
        data->setText(text);
        data->setHtml(QStringLiteral("<b>") + text + QStringLiteral("</b>"));
        QGuiApplication::clipboard()->setMimeData(data.release());
        QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
    }

    std::unique_ptr<SetupPanel> panel;
};

TEST_F(SetupSectionsTest, TheBubblesLookIsWrittenAtOnce) {
    pick("Forma de la burbuja", "Vertical");
    EXPECT_EQ(prefs.bubbleShape.value(), BubbleShape::vertical);
    pick("Estilo del borde de la burbuja", "Sin borde");
    EXPECT_EQ(prefs.ringStyle.value(), RingStyle::none);
    pick("Grosor del borde", "Ultrafino");
    EXPECT_EQ(prefs.ringWeight.value(), RingWeight::hairline);
    pick("Colores del camaleón", "Arcoíris");
    EXPECT_EQ(prefs.chameleonPalette.value(), ChameleonPalette::rainbow);
}

TEST_F(SetupSectionsTest, CornersGoFromStraightToAPillAndAreOfNoUseToACircle) {
    auto* corners = panel->findChild<Slider*>();
    EXPECT_FALSE(corners->isEnabled());
    prefs.bubbleShape = BubbleShape::rounded;
    EXPECT_TRUE(corners->isEnabled());
    corners->setValue(corners->maximum());
    EXPECT_DOUBLE_EQ(prefs.cornerFraction.value(), 0.5);
    corners->setValue(corners->minimum());
    EXPECT_DOUBLE_EQ(prefs.cornerFraction.value(), 0);
    prefs.cornerFraction = 0.2;
    EXPECT_EQ(corners->value(), 20);
}

TEST_F(SetupSectionsTest, ACornerThatTheSliderCannotShowExactlyIsNotOverwritten) {
    prefs.cornerFraction = 0.3333;
    EXPECT_DOUBLE_EQ(prefs.cornerFraction.value(), 0.3333);
    prefs.cornerFraction = 7; // from a file that somebody has edited
    EXPECT_EQ(panel->findChild<Slider*>()->value(), 50);
    EXPECT_DOUBLE_EQ(prefs.cornerFraction.value(), 7);
}

TEST_F(SetupSectionsTest, AColourOfOnesOwnIsTakenOnceItIsOneAndGivenUpWhenEmpty) {
    auto* hex = named<TextField>(*panel, "Otro color, en hexadecimal");
    QTest::keyClicks(hex, QStringLiteral("#7fe8b"));
    EXPECT_TRUE(hex->isBad());
    EXPECT_EQ(prefs.ringCustomHex.value(), QString());
    QTest::keyClicks(hex, QStringLiteral("8"));
    EXPECT_FALSE(hex->isBad());
    EXPECT_EQ(prefs.ringCustomHex.value(), QStringLiteral("#7FE8B8"));
    hex->selectAll();
    QTest::keyClick(hex, Qt::Key_Delete);
    EXPECT_EQ(prefs.ringCustomHex.value(), QString());
    emit panel->findChild<ColorWell*>()->picked(QColor(255, 0, 16));
    EXPECT_EQ(prefs.ringCustomHex.value(), QStringLiteral("#FF0010"));
}

TEST_F(SetupSectionsTest, AZoomLevelThatIsNoneOfTheFourShowsNone) {
    const auto* levels = named<Segments>(*panel, "Nivel de zoom");
    EXPECT_EQ(levels->current(), QStringLiteral("2"));
    pick("Nivel de zoom", "Mucho");
    EXPECT_DOUBLE_EQ(prefs.zoomLevel.value(), 3.0);
    prefs.zoomLevel = 2.2;
    EXPECT_EQ(levels->current(), QString());
    for (const QAbstractButton* button : levels->buttons()) {
        EXPECT_FALSE(button->isChecked());
    }
    pick("Nivel de zoom", "Poco");
    EXPECT_DOUBLE_EQ(prefs.zoomLevel.value(), 1.5);
}

TEST_F(SetupSectionsTest, SidesAreAskedForOnlyBesideTheSlides) {
    const auto* sides = named<Segments>(*panel, "Lado de la cámara");
    EXPECT_FALSE(sides->isVisible());
    pick("Cámara completa", "Al lado");
    EXPECT_EQ(prefs.presenterStyle.value(), PresenterStyle::sideRight);
    EXPECT_TRUE(sides->isVisible());
    pick("Lado de la cámara", "Izquierda");
    EXPECT_EQ(prefs.presenterStyle.value(), PresenterStyle::sideLeft);
    EXPECT_EQ(named<Segments>(*panel, "Cámara completa")->current(), QStringLiteral("side"));
    named<Button>(*panel, "Plantillas…")->click();
    EXPECT_EQ(templatesShown, 1);
    pick("Cámara completa", "Completa");
    EXPECT_EQ(prefs.presenterStyle.value(), PresenterStyle::full);
    EXPECT_FALSE(sides->isVisible());
}

TEST_F(SetupSectionsTest, ANameThatIsPastedIsOnePlainLine) {
    auto* name = named<TextField>(*panel, "Tu nombre");
    name->setFocus();
    paste(*name, QStringLiteral("Ana\r\nPérez\tde\x01 Soto\u202E"));
    EXPECT_EQ(prefs.presenterName.value(), QStringLiteral("Ana Pérez de  Soto"));
    name->clear();
    paste(*name, QString(100'000, u'ñ'));
    EXPECT_EQ(prefs.presenterName.value().size(), 120);
}

TEST_F(SetupSectionsTest, AnEmptyNameIsWrittenAsEmpty) {
    auto* role = named<TextField>(*panel, "Cargo o tema (opcional)");
    prefs.presenterRole = QStringLiteral("Física");
    EXPECT_EQ(role->text(), QStringLiteral("Física"));
    role->selectAll();
    QTest::keyClick(role, Qt::Key_Backspace);
    EXPECT_EQ(prefs.presenterRole.value(), QString());
}

TEST_F(SetupSectionsTest, AScriptIsPlainLinesWrittenAtOnce) {
    auto* area = panel->findChild<TextArea*>();
    auto* editor = area->findChild<QPlainTextEdit*>();
    QTest::keyClicks(editor, QStringLiteral("Hola"));
    EXPECT_EQ(prefs.scriptText.value(), QStringLiteral("Hola"));
    paste(*editor, QStringLiteral("\r\nuno\u2028dos\x02"));
    EXPECT_EQ(prefs.scriptText.value(), QStringLiteral("Hola\nuno\ndos"));
    prefs.scriptText = QStringLiteral("Otro");
    EXPECT_EQ(area->text(), QStringLiteral("Otro"));
}

TEST_F(SetupSectionsTest, AScriptOfAMegabyteIsWrittenWhenItsFieldIsLeft) {
    auto* editor = panel->findChild<TextArea*>()->findChild<QPlainTextEdit*>();
    const QString line =
        QStringLiteral("Una línea de cien caracteres, más o menos, de las que hay diez mil en el guion.\n");
    const QString text = line.repeated(1'000'000 / line.size());
    paste(*editor, text);
    EXPECT_EQ(prefs.scriptText.value(), QString()) << "keys do not wait for the disk";
    panel->hide();
    EXPECT_EQ(prefs.scriptText.value(), text);
}

TEST_F(SetupSectionsTest, ALongScriptIsNotLostWithThePanel) {
    auto* editor = panel->findChild<TextArea*>()->findChild<QPlainTextEdit*>();
    paste(*editor, QString(ScriptSection::kShort + 1, u'a'));
    panel.reset();
    EXPECT_EQ(prefs.scriptText.value().size(), ScriptSection::kShort + 1);
}

TEST_F(SetupSectionsTest, TabStopsOnceInAGroupAndArrowsGoOnInIt) {
    const auto* shapes = named<Segments>(*panel, "Forma de la burbuja");
    prefs.bubbleShape = BubbleShape::rounded;
    int stops = 0;
    for (const QAbstractButton* button : shapes->buttons()) {
        stops += (button->focusPolicy() & Qt::TabFocus) != 0 ? 1 : 0;
    }
    EXPECT_EQ(stops, 1);
    QApplication::setActiveWindow(panel.get());
    QAbstractButton* now = shapes->buttons()[1];
    now->setFocus(Qt::TabFocusReason);
    QTest::keyClick(now, Qt::Key_Right);
    EXPECT_EQ(prefs.bubbleShape.value(), BubbleShape::vertical);
}

QStringList entriesOf(const QMenu& menu) {
    QStringList entries;
    for (const QAction* action : menu.actions()) {
        entries += action->isSeparator() ? QStringLiteral("-") : action->text() + (action->isChecked() ? "*" : "");
    }
    return entries;
}

TEST_F(SetupSectionsTest, TheProfilesMenuSaysThatThereAreNone) {
    const std::unique_ptr<PopupMenu> menu(panel->findChild<ProfilesMenu*>()->makeMenu());
    EXPECT_EQ(entriesOf(*menu),
              QStringList({"Aún no tienes perfiles guardados", "-", "Guardar configuración actual…"}));
    EXPECT_FALSE(menu->actions().front()->isEnabled());
}

TEST_F(SetupSectionsTest, AProfileIsAppliedMarkedAndRemovedByItsEntry) {
    prefs.mode = RecordMode::cam;
    profiles.save(QStringLiteral("Curso"));
    prefs.mode = RecordMode::screen;
    profiles.save(QStringLiteral("a & b"));
    auto* profilesMenu = panel->findChild<ProfilesMenu*>();
    std::unique_ptr<PopupMenu> menu(profilesMenu->makeMenu());
    EXPECT_EQ(entriesOf(*menu), QStringList({"a && b*", "Curso", "-", "Guardar configuración actual…", "Eliminar"}));
    menu->actions()[1]->trigger();
    EXPECT_EQ(prefs.mode.value(), RecordMode::cam);
    EXPECT_EQ(profiles.current(), QStringLiteral("Curso"));
    menu.reset(profilesMenu->makeMenu());
    menu->actions().back()->menu()->actions().front()->trigger();
    EXPECT_EQ(profiles.names(), QStringList{"Curso"});
}

NameDialog* askForName(const SetupPanel& panel) {
    const std::unique_ptr<PopupMenu> menu(panel.findChild<ProfilesMenu*>()->makeMenu());
    for (QAction* action : menu->actions()) {
        if (action->text() == QStringLiteral("Guardar configuración actual…")) {
            action->trigger();
        }
    }
    return panel.findChild<NameDialog*>();
}

TEST_F(SetupSectionsTest, TheQuestionForAProfilesNameGoesWithThePanel) {
    for (const bool byRecording : {true, false}) {
        panel->show();
        const QPointer<NameDialog> question = askForName(*panel);
        ASSERT_TRUE(question && question->isVisible());
        byRecording ? panel->hide() : panel->reject();
        EXPECT_FALSE(question && question->isVisible()) << byRecording;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(question.isNull()) << byRecording;
    }
    EXPECT_TRUE(profiles.names().isEmpty());
}

TEST_F(SetupSectionsTest, AProfilesNameIsAskedForOnce) {
    NameDialog* question = askForName(*panel);
    EXPECT_EQ(askForName(*panel), question);
    EXPECT_EQ(panel->findChildren<NameDialog*>().size(), 1);
    question->findChild<TextField*>()->setText(QStringLiteral("Curso"));
    QTest::keyClick(question->findChild<TextField*>(), Qt::Key_Return);
    EXPECT_EQ(profiles.names(), QStringList{"Curso"});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(askForName(*panel)->isVisible()) << "one that was answered is no hindrance";
}

} // namespace
} // namespace velmo
