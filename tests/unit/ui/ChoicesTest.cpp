#include "ui/Chip.h"
#include "ui/FlowLayout.h"
#include "ui/FocusRing.h"
#include "ui/Segments.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

namespace velmo {
namespace {

TEST(Segments, TellOfAnotherChoiceOnce) {
    Segments segments(QStringLiteral("Nivel"),
                      {{QStringLiteral("a"), QStringLiteral("Uno")}, {QStringLiteral("b"), QStringLiteral("Dos")}});
    segments.setCurrent(QStringLiteral("a"));
    QSignalSpy picked(&segments, &ChoiceGroup::picked);
    segments.buttons()[0]->click();
    EXPECT_EQ(picked.count(), 0) << "it was chosen already";
    segments.buttons()[1]->click();
    segments.buttons()[1]->click();
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked.front().front().toString(), QStringLiteral("b"));
    EXPECT_FALSE(segments.buttons()[0]->isChecked());
}

TEST(Segments, ShowNoneForWhatIsNotAmongThem) {
    Segments segments(QStringLiteral("Nivel"),
                      {{QStringLiteral("a"), QStringLiteral("Uno")}, {QStringLiteral("b"), QStringLiteral("Dos")}});
    segments.setCurrent(QStringLiteral("b"));
    segments.setCurrent(QStringLiteral("gone"));
    EXPECT_EQ(segments.current(), QString());
    EXPECT_FALSE(segments.buttons()[0]->isChecked());
    EXPECT_FALSE(segments.buttons()[1]->isChecked());
    EXPECT_NE(segments.buttons()[0]->focusPolicy() & Qt::TabFocus, 0) << "Tab finds the way in";
    segments.setCurrent(QStringLiteral("a"));
    EXPECT_TRUE(segments.buttons()[0]->isChecked());
}

TEST(FlowLayout, BeginsAnotherRowWhereTheNextDoesNotFit) {
    QWidget box;
    auto* flow = new FlowLayout(6, &box);
    std::vector<Chip*> chips;
    for (const char* word : {"Camaleón", "Fino", "Aurora", "Clásico", "Sin borde"}) {
        chips.push_back(new Chip(QString::fromUtf8(word)));
        flow->addWidget(chips.back());
    }
    const int one = chips.front()->sizeHint().height();
    EXPECT_EQ(flow->heightForWidth(2000), one);
    EXPECT_EQ(flow->heightForWidth(chips.front()->sizeHint().width()), 5 * one + 4 * 6);
    box.resize(chips.front()->sizeHint().width() + chips[1]->sizeHint().width() + 6, 300);
    box.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(chips[1]->y(), chips[0]->y());
    EXPECT_EQ(chips[2]->y(), one + 6);
    EXPECT_EQ(chips[2]->x(), 0);
}

class FocusRingTest : public testing::Test {
protected:
    FocusRingTest() {
        window.resize(200, 100);
        inner.setGeometry(20, 20, 100, 60);
        widget.setGeometry(0, 0, 40, 20);
        widget.setFocusPolicy(Qt::StrongFocus);
        window.show();
        QApplication::setActiveWindow(&window);
        widget.clearFocus(); // a window gives it to its first widget
    }

    QWidget window;
    QWidget inner{&window};
    QWidget widget{&inner};
    FocusRing* ring = new FocusRing(widget, 4);
};

TEST_F(FocusRingTest, ShowsForTheKeyboardAlone) {
    widget.setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(ring->isShown());
    widget.clearFocus();
    widget.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(ring->isShown());
    widget.clearFocus();
    EXPECT_FALSE(ring->isShown());
}

TEST_F(FocusRingTest, IsNotCutOffByTheWidgetsParentAndFollowsIt) {
    widget.setFocus(Qt::TabFocusReason);
    const QWidget* mark = nullptr;
    for (const QWidget* child : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        mark = child == &inner ? mark : child;
    }
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(mark->geometry(), QRect(16, 16, 48, 28));
    inner.move(30, 40);
    QCoreApplication::processEvents();
    EXPECT_EQ(mark->geometry(), QRect(26, 36, 48, 28));
}

} // namespace
} // namespace velmo
