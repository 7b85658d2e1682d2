#include "surfaces/RegionPicker.h"

#include "surfaces/internal/PickerPanel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gmock/gmock.h>

#include <vector>

namespace velmo {
namespace {

const QString kPrompt = QStringLiteral("Arrastra sobre lo que quieres acercar · Esc para cancelar");
const QString kChosen =
    QStringLiteral("Suelta para usar esta zona · Arrastra de nuevo para cambiarla · Enter la usa · Esc cancela");

struct Picking {
    Screen screen{1, {0, 0, 800, 800}, 1};
    std::vector<std::optional<Rect>> results;
    RegionPicker picker;

    void pick(std::optional<Rect> current = {}) {
        picker.pick(screen, current, kPrompt, [this](std::optional<Rect> rect) { results.push_back(rect); });
    }
    RegionView& view() { return picker.panel()->view(); }
    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, place, place, type == QEvent::MouseMove ? Qt::NoButton : button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
        QApplication::sendEvent(&view(), &event);
    }
    void drag(QPoint from, QPoint to) {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
    }
    bool key(Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&view(), &event);
        return event.isAccepted();
    }
};

void expectRect(const std::optional<Rect>& rect, const Rect& expected) {
    ASSERT_TRUE(rect.has_value());
    EXPECT_NEAR(rect->x, expected.x, 1e-9);
    EXPECT_NEAR(rect->y, expected.y, 1e-9);
    EXPECT_NEAR(rect->width, expected.width, 1e-9);
    EXPECT_NEAR(rect->height, expected.height, 1e-9);
}

TEST(RegionPicker, LettingGoOfTheMouseAcceptsInFractionsThatCountUpwards) {
    Picking it;
    it.pick();
    it.drag({80, 160}, {480, 560});
    ASSERT_EQ(it.results.size(), 1u);
    expectRect(it.results.front(), {0.1, 0.3, 0.5, 0.5});
    EXPECT_EQ(it.picker.panel(), nullptr);
}

TEST(RegionPicker, ASelectionThatIsTooSmallIsDroppedAndThePickGoesOn) {
    Picking it;
    it.pick();
    it.drag({100, 100}, {220, 220}); // 120 wide
    EXPECT_TRUE(it.results.empty());
    EXPECT_FALSE(it.view().selection());
    EXPECT_EQ(it.view().prompt(), kPrompt);
    it.drag({100, 100}, {221, 221});
    EXPECT_EQ(it.results.size(), 1u);
}

TEST(RegionPicker, EscapeAlwaysLeaves) {
    Picking it;
    it.pick(Rect{0.1, 0.1, 0.5, 0.5});
    it.key(Qt::Key_Escape);
    EXPECT_THAT(it.results, testing::ElementsAre(std::nullopt));
    it.pick();
    it.mouse(QEvent::MouseButtonPress, {100, 100});
    it.mouse(QEvent::MouseMove, {500, 500});
    it.key(Qt::Key_Escape);
    EXPECT_THAT(it.results, testing::ElementsAre(std::nullopt, std::nullopt));
    EXPECT_EQ(it.picker.panel(), nullptr);
}

TEST(RegionPicker, AnExistingRegionIsShownAtOnceAndEitherEnterAcceptsItAgain) {
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        Picking it;
        it.pick(Rect{0.25, 0.125, 0.5, 0.5});
        expectRect(it.view().selection(), {200, 100, 400, 400});
        EXPECT_EQ(it.view().prompt(), kChosen);
        it.key(enter);
        ASSERT_EQ(it.results.size(), 1u);
        expectRect(it.results.front(), {0.25, 0.125, 0.5, 0.5});
    }
}

TEST(RegionPicker, EnterWithoutAUsableSelectionDoesNothing) {
    Picking it;
    it.pick();
    it.key(Qt::Key_Return);
    EXPECT_TRUE(it.results.empty());
    it.pick(Rect{0, 0, 0.15, 0.15}); // ends the first; 120 points wide
    ASSERT_EQ(it.results.size(), 1u);
    it.key(Qt::Key_Return);
    EXPECT_EQ(it.results.size(), 1u);
}

TEST(RegionPicker, ASecondPickEndsTheFirstWithNothing) {
    Picking it;
    it.pick();
    it.pick();
    EXPECT_THAT(it.results, testing::ElementsAre(std::nullopt));
    EXPECT_NE(it.picker.panel(), nullptr);
}

TEST(RegionPicker, APickThatIsCalledOffEndsWithNothing) {
    Picking it;
    it.pick();
    it.picker.cancel();
    EXPECT_EQ(it.picker.panel(), nullptr);
    EXPECT_THAT(it.results, testing::ElementsAre(std::nullopt));
    it.picker.cancel();
    EXPECT_EQ(it.results.size(), 1u) << "once";
}

TEST(RegionPicker, WhoIsToldMayPickAgain) {
    Picking it;
    int ends = 0;
    it.picker.pick(it.screen, {}, kPrompt, [&](std::optional<Rect>) {
        ++ends;
        it.pick();
    });
    it.key(Qt::Key_Escape);
    EXPECT_EQ(ends, 1);
    ASSERT_NE(it.picker.panel(), nullptr);
    it.key(Qt::Key_Escape);
    EXPECT_EQ(it.results.size(), 1u);
}

TEST(RegionPicker, PressingTheButtonAgainBeginsAnew) {
    Picking it;
    it.pick(Rect{0.25, 0.125, 0.5, 0.5});
    it.mouse(QEvent::MouseButtonPress, {300, 300});
    EXPECT_FALSE(it.view().selection());
    it.mouse(QEvent::MouseMove, {500, 310});
    expectRect(it.view().selection(), {300, 300, 200, 200});
    EXPECT_EQ(it.view().prompt(), kChosen);
}

TEST(RegionPicker, OtherButtonsAndMovementsWithoutAButtonChooseNothing) {
    Picking it;
    it.pick();
    it.mouse(QEvent::MouseMove, {500, 500}, Qt::NoButton);
    it.mouse(QEvent::MouseButtonPress, {100, 100}, Qt::RightButton);
    it.mouse(QEvent::MouseButtonRelease, {500, 500}, Qt::RightButton);
    EXPECT_FALSE(it.view().selection());
    EXPECT_TRUE(it.results.empty());
}

TEST(RegionPicker, OtherKeysGoOnUp) {
    Picking it;
    it.pick();
    EXPECT_FALSE(it.key(Qt::Key_A));
    EXPECT_TRUE(it.results.empty());
}

TEST(RegionPicker, ThePictureHasTheHoleTheLineAndTheWords) {
    Picking it;
    it.pick(Rect{0.25, 0.25, 0.5, 0.5});
    QImage picture(800, 800, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    it.view().render(&picture, {}, {}, QWidget::RenderFlags());
    EXPECT_NEAR(picture.pixelColor(20, 400).alphaF(), 0.45, 0.005);
    EXPECT_EQ(picture.pixelColor(400, 400).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(203, 400).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(198, 400).name(), QStringLiteral("#1fa971"));
    EXPECT_EQ(picture.pixelColor(198, 400).alpha(), 255);
    const QColor pill = picture.pixelColor(400, 86);
    EXPECT_GT(pill.alphaF(), 0.92);
    EXPECT_EQ(picture.pixelColor(400, 92).alpha(), picture.pixelColor(20, 400).alpha())
        << "the pill ends 90 from the top";
}

} // namespace
} // namespace velmo
