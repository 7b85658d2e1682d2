#include "classkit/views/KitPanel.h"

#include "classkit/ClassKit.h"
#include "classkit/views/internal/KitRow.h"
#include "support/NothingCut.h"
#include "ui/Button.h"
#include "unit/classkit/KitWorld.h"
#include "unit/session/World.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>

namespace velmo {
namespace {

class KitPanelTest : public test::World {
protected:
    KitPanelTest() {
        const QRect all = QGuiApplication::primaryScreen()->geometry();
        screens.screens = {{1, {0, 0, double(all.width()), double(all.height())}, 1},
                           {2, {double(all.width()), 0, 1920, 1080}, 1}};
        QObject::connect(&panel, &KitPanel::visibleChanged, &panel, [this] { ++heard; });
    }

    void addLinks(int count) {
        for (int i = 0; i < count; ++i) {
            kit.add(QStringLiteral("example.org/%1").arg(i));
        }
    }
    QStringList rowTexts() const {
        QApplication::processEvents(); // the layout shows new rows
        QStringList texts;
        for (const KitRow* row : rows()) {
            texts.append(row->text());
        }
        return texts;
    }
    QList<KitRow*> rows() const {
        QList<KitRow*> shown;
        for (KitRow* row : panel.findChildren<KitRow*>()) {
            if (!row->isHidden()) {
                shown.append(row);
            }
        }
        return shown;
    }
    static QRect freePlace() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    test::KitWorld around;
    ClassKit kit{around.store, around.services()};
    KitPanel panel{kit, *controller, screens};
    int heard = 0;
};

TEST_F(KitPanelTest, WithoutMaterialOnlyAMessageIsShown) {
    panel.toggle();
    EXPECT_FALSE(panel.isVisible());
    EXPECT_FALSE(panel.visible());
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(controller->flash(), QStringLiteral("Prepara el material en el panel de grabación"));
}

TEST_F(KitPanelTest, ItsHeightFollowsTheNumberOfItemsUpToALimit) {
    EXPECT_EQ(KitPanel::heightFor(1), 102);
    EXPECT_EQ(KitPanel::heightFor(10), 444);
    EXPECT_EQ(KitPanel::heightFor(11), 460);
    EXPECT_EQ(KitPanel::heightFor(100000), 460);
    addLinks(11);
    panel.show();
    EXPECT_EQ(panel.cardGeometry().size(), QSize(270, 460));
}

TEST_F(KitPanelTest, TwoHundredItemsScrollInAPanelOfTheGreatestHeight) {
    addLinks(200);
    panel.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(panel.cardGeometry().height(), 460);
    const QList<KitRow*> rows = panel.findChildren<KitRow*>();
    ASSERT_EQ(rows.size(), 200);
    auto* bar = panel.findChild<QScrollBar*>();
    EXPECT_TRUE(bar->isVisible());
    bar->setValue(bar->maximum());
    EXPECT_LE(rows.last()->mapTo(&panel, rows.last()->rect().bottomLeft()).y(), panel.height());
    EXPECT_GE(rows.last()->mapTo(&panel, QPoint()).y(), 0);
}

TEST_F(KitPanelTest, NoTextIsCutHoweverLargeTheDesktopWantsIt) {
    addLinks(2);
    for (const double factor : test::kTextScales) {
        const test::LargerText larger(factor);
        KitPanel sized(kit, *controller, screens);
        sized.show();
        QCoreApplication::processEvents();
        EXPECT_EQ(test::cutTexts(sized), QStringList()) << factor;
    }
}

TEST_F(KitPanelTest, StandsAtTheRightEdgeInTheMiddleOfTheHeight) {
    addLinks(2);
    panel.show();
    const QRect free = freePlace();
    EXPECT_EQ(panel.cardGeometry(),
              QRect(free.x() + free.width() - 290, free.y() + (free.height() - 140) / 2, 270, 140));
    EXPECT_TRUE(panel.visible());
}

TEST_F(KitPanelTest, ShownAgainItStaysWhereTheUserMovedItAndTakesTheNewHeight) {
    addLinks(1);
    panel.show();
    panel.setCardGeometry(QRect(QPoint(40, 60), panel.cardGeometry().size()));
    addLinks(2);
    EXPECT_EQ(panel.cardGeometry().height(), 102) << "only showing it fits it to its rows";
    panel.show();
    EXPECT_EQ(panel.cardGeometry(), QRect(40, 60, 270, 178));
    EXPECT_EQ(heard, 1);
}

TEST_F(KitPanelTest, OnceHiddenItComesBackAtItsPlace) {
    addLinks(1);
    panel.show();
    const QRect place = panel.cardGeometry();
    panel.setCardGeometry(QRect(QPoint(40, 60), place.size()));
    panel.toggle();
    EXPECT_FALSE(panel.isVisible());
    panel.toggle();
    EXPECT_EQ(panel.cardGeometry(), place);
    EXPECT_EQ(heard, 3);
}

TEST_F(KitPanelTest, GoesToTheScreenThatIsRecorded) {
    addLinks(1);
    prefs.displayID = 2;
    record();
    panel.show();
    const double left = screens.screens[1].frame.x;
    EXPECT_EQ(panel.cardGeometry().x(), int(left) + 1920 - 290);
}

TEST_F(KitPanelTest, LeavesAScreenThatIsNoLongerRecorded) {
    addLinks(1);
    panel.show();
    panel.setCardGeometry(QRect(QPoint(40, 60), panel.cardGeometry().size()));
    prefs.displayID = 2;
    record();
    panel.show();
    EXPECT_EQ(panel.cardGeometry().x(), int(screens.screens[1].frame.x) + 1920 - 290);
}

TEST_F(KitPanelTest, AClickOpensTheItemMarksTheMomentAndLeavesThePanel) {
    addLinks(2);
    panel.show();
    EXPECT_TRUE(rows()[1]->toolTip().contains(QStringLiteral("Abrir y marcar este momento en el video")));
    rows()[1]->click();
    EXPECT_THAT(around.files.calls, testing::ElementsAre("address https://example.org/1"));
    EXPECT_THAT(around.calls, testing::ElementsAre("chapter example.org/1 @ https://example.org/1"));
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(KitPanelTest, ItsRowsFollowTheListInItsOrder) {
    addLinks(3);
    panel.show();
    EXPECT_EQ(rowTexts(), QStringList({"example.org/0", "example.org/1", "example.org/2"}));
    kit.remove(KitItem(kit.items()[1]));
    kit.setTitle(kit.items()[0].id, QStringLiteral("Inicio"));
    EXPECT_EQ(rowTexts(), QStringList({"Inicio", "example.org/2"}));
    panel.hide();
    kit.setTitle(kit.items()[0].id, QStringLiteral("Otro"));
    panel.show();
    EXPECT_EQ(rowTexts(), QStringList({"Otro", "example.org/2"}));
}

TEST_F(KitPanelTest, ATitleThatIsCutIsWholeInTheTooltipAndPlainText) {
    addLinks(1);
    kit.setTitle(kit.items()[0].id,
                 QStringLiteral("<b>Superficies</b> y curvas de nivel de funciones de dos variables"));
    panel.show();
    QApplication::processEvents();
    EXPECT_TRUE(rows()[0]->toolTip().contains(QStringLiteral("&lt;b&gt;Superficies&lt;/b&gt; y curvas de nivel de")));
}

TEST_F(KitPanelTest, SaysWhatItIsAndWhatAClickDoesAndItsButtonHidesIt) {
    addLinks(1);
    panel.show();
    QStringList texts;
    for (const QLabel* label : panel.findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    EXPECT_EQ(texts, QStringList({"Material de la clase", "Al abrir, queda como capítulo del video."}));
    auto* close = panel.findChild<Button*>();
    EXPECT_EQ(close->toolTip(), QStringLiteral("Ocultar"));
    close->click();
    EXPECT_FALSE(panel.visible());
}

TEST_F(KitPanelTest, NothingOfItTakesTheFocus) {
    addLinks(1);
    panel.show();
    EXPECT_TRUE(panel.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    for (QWidget* each : panel.findChildren<QWidget*>()) {
        EXPECT_EQ(each->focusPolicy(), Qt::NoFocus) << each->metaObject()->className();
    }
}

} // namespace
} // namespace velmo
