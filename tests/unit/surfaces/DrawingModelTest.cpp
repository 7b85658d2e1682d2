#include "surfaces/DrawingModel.h"

#include <gmock/gmock.h>

#include <array>
#include <numbers>
#include <vector>

namespace velmo {
namespace {

using Kind = DrawingKind;
using Tool = DrawingTool;

struct Sheet {
    quint64 seeds = 0;
    DrawingModel model{[this] { return ++seeds; }};
    double now = 100;

    void stroke(Tool tool, const QList<Point>& through, double width = 5) {
        model.press({tool, Qt::red, width}, through.first(), now);
        for (const Point& point : through.mid(1)) {
            now += 0.008;
            model.drag(point, now);
        }
        model.release(now);
    }
    void pens(int count) {
        for (int i = 0; i < count; ++i) {
            stroke(Tool::pen, {{0, 100.0 * i}, {50, 100.0 * i}});
        }
    }
    const DrawingItem& last() const { return model.strokes().last(); }
};

TEST(DrawingTool, TheToolsStandInTheirOrderWithRawValueTitleAndSymbol) {
    const std::vector<std::array<const char*, 3>> expected = {
        {"pen", "Bolígrafo", "pencil.tip"},          {"fountain", "Pluma", "pencil.and.scribble"},
        {"nib", "Pluma fuente", "signature"},        {"highlighter", "Resaltador", "highlighter"},
        {"laser", "Puntero láser", "wand.and.rays"}, {"rect", "Rectángulo a mano", "rectangle"},
        {"ellipse", "Elipse a mano", "circle"},      {"arrow", "Flecha a mano", "arrow.up.right"},
        {"line", "Línea a mano", "line.diagonal"},   {"eraser", "Borrador", "eraser"}};
    ASSERT_EQ(allCases<Tool>().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Tool tool = allCases<Tool>()[i];
        EXPECT_EQ(rawValue(tool), QString::fromUtf8(expected[i][0]));
        EXPECT_EQ(title(tool), QString::fromUtf8(expected[i][1]));
        EXPECT_EQ(symbol(tool), QString::fromUtf8(expected[i][2]));
        EXPECT_EQ(isShape(tool), i >= 5 && i <= 8);
        EXPECT_EQ(kindOf(tool).has_value(), tool != Tool::eraser);
    }
}

TEST(DrawingModel, TheTipGivesColourAndWidthByItsTool) {
    const auto started = [](Tool tool, double width) { return startedItem({tool, Qt::red, width}, {1, 2}, 9); };
    EXPECT_EQ(started(Tool::pen, 3).width, 3);
    EXPECT_EQ(started(Tool::pen, 3).color, QColor(Qt::red));
    EXPECT_EQ(started(Tool::highlighter, 5).width, 22.5);
    EXPECT_NEAR(started(Tool::highlighter, 5).color.alphaF(), 0.38, 1e-4);
    EXPECT_EQ(started(Tool::laser, 3).width, 4);
    EXPECT_DOUBLE_EQ(started(Tool::laser, 9).width, 10.8);
    EXPECT_EQ(started(Tool::laser, 9).color, QColor(Qt::red));
    EXPECT_EQ(started(Tool::highlighter, 5).widths, QList<double>{22.5});
    EXPECT_EQ(started(Tool::pen, 3).points.size(), 1);
    EXPECT_EQ(started(Tool::arrow, 3).points.size(), 2);
    EXPECT_EQ(started(Tool::arrow, 3).seed, 9u);
}

TEST(DrawingModel, AClickWithThePenLeavesADot) {
    Sheet sheet;
    sheet.stroke(Tool::pen, {{10, 10}});
    ASSERT_EQ(sheet.model.strokes().size(), 1);
    EXPECT_EQ(sheet.last().points.size(), 1);
}

TEST(DrawingModel, AClickWithAShapeToolLeavesNothing) {
    Sheet sheet;
    for (const Tool tool : {Tool::rect, Tool::ellipse, Tool::arrow, Tool::line}) {
        sheet.stroke(tool, {{10, 10}});
        sheet.stroke(tool, {{10, 10}, {12, 12}});
    }
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
    EXPECT_EQ(sheet.model.undoSteps(), 0);
    sheet.stroke(Tool::rect, {{10, 10}, {13, 10}});
    EXPECT_EQ(sheet.model.strokes().size(), 1) << "three points apart is no slip";
}

TEST(DrawingModel, AShapeHasItsBeginningAndItsCornerOfNow) {
    Sheet sheet;
    sheet.stroke(Tool::rect, {{10, 10}, {50, 90}, {120, 60}});
    EXPECT_EQ(sheet.last().points, (QList<Point>{{10, 10}, {120, 60}}));
}

TEST(DrawingModel, AMovementOfLessThanItCountsIsIgnoredAndLeavesTheTime) {
    Sheet sheet;
    sheet.model.press({Tool::fountain, Qt::red, 5}, {0, 0}, 0);
    EXPECT_FALSE(sheet.model.drag({0.79, 0}, 0.05));
    EXPECT_EQ(sheet.model.current()->points.size(), 1);
    EXPECT_TRUE(sheet.model.drag({10, 0}, 0.1)); // a hundred points a second since the beginning
    const double target = 5 * (1.6 - 100.0 / 1400);
    EXPECT_NEAR(sheet.model.current()->widths.last(), 5 + (target - 5) * 0.35, 1e-12);
}

TEST(DrawingModel, TheFountainPenDrawsWideWhenSlowAndNarrowWhenQuick) {
    Sheet sheet;
    sheet.model.press({Tool::fountain, Qt::red, 10}, {0, 0}, 0);
    double now = 0;
    double x = 0;
    const auto draw = [&](int count, double way, double seconds) {
        for (int i = 0; i < count; ++i) {
            now += seconds;
            x += way;
            sheet.model.drag({x, 0}, now);
        }
        return sheet.model.current()->widths.last();
    };
    EXPECT_NEAR(draw(60, 1, 1), 16, 0.02);
    EXPECT_NEAR(draw(60, 20, 0.01), 3.5, 1e-6); // 2000 points a second
    const double before = draw(60, 1, 1);
    EXPECT_DOUBLE_EQ(draw(1, 8, 0), before + (3.5 - before) * 0.35) << "no time counts as four milliseconds";
    EXPECT_EQ(sheet.model.current()->widths.size(), sheet.model.current()->points.size());
}

TEST(DrawingModel, OnlyTheFountainPenHasWidthsThatFollow) {
    Sheet sheet;
    sheet.stroke(Tool::pen, {{0, 0}, {50, 0}, {90, 0}});
    EXPECT_EQ(sheet.last().widths, QList<double>{5});
}

TEST(DrawingModel, UndoAfterAClearRestoresAll) {
    Sheet sheet;
    sheet.pens(3);
    const QList<DrawingItem> all = sheet.model.strokes();
    sheet.model.clear();
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
    sheet.model.undo();
    EXPECT_EQ(sheet.model.strokes(), all);
}

TEST(DrawingModel, ClearingNothingIsNoStep) {
    Sheet sheet;
    sheet.model.clear();
    EXPECT_EQ(sheet.model.undoSteps(), 0);
    sheet.model.undo();
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
}

TEST(DrawingModel, ClearTakesARunningStrokeToo) {
    Sheet sheet;
    sheet.model.press({Tool::pen, Qt::red, 5}, {0, 0}, 0);
    sheet.model.clear();
    EXPECT_FALSE(sheet.model.current());
    EXPECT_FALSE(sheet.model.drag({50, 0}, 1)) << "the hand that still moves draws nothing";
    sheet.model.release(1);
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
}

TEST(DrawingModel, UndoAfterAWholeErasingDragRestoresAllItemsOfThatDragAtOnce) {
    Sheet sheet;
    sheet.pens(4);
    const QList<DrawingItem> all = sheet.model.strokes();
    sheet.stroke(Tool::eraser, {{0, 0}, {0, 100}, {0, 200}});
    EXPECT_EQ(sheet.model.strokes(), all.last(1));
    EXPECT_FALSE(sheet.model.isErasing());
    sheet.model.undo();
    EXPECT_EQ(sheet.model.strokes(), all);
}

TEST(DrawingModel, TheHundredAndFirstStrokeDropsTheOldestUndoStepNotTheStroke) {
    Sheet sheet;
    sheet.pens(101);
    EXPECT_EQ(sheet.model.strokes().size(), 101);
    EXPECT_EQ(sheet.model.undoSteps(), 100);
    for (int i = 0; i < 150; ++i) {
        sheet.model.undo();
    }
    EXPECT_EQ(sheet.model.strokes().size(), 1);
}

TEST(DrawingModel, TheEraserTakesWhatIsNearerThanHalfTheWidthAndFourteen) {
    Sheet sheet;
    sheet.stroke(Tool::pen, {{100, 100}}, 6);
    sheet.stroke(Tool::eraser, {{117, 100}});
    EXPECT_EQ(sheet.model.strokes().size(), 1) << "17 is not nearer than 17";
    sheet.stroke(Tool::eraser, {{116.9, 100}});
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
}

TEST(DrawingModel, TheEraserFindsRectanglesAndEllipsesOnTheirLineNotInside) {
    const DrawingItem rect{Kind::rect, {{0, 0}, {400, 200}}, {5}, Qt::red, 5, 1, std::nullopt};
    EXPECT_EQ(eraserTestPoints(rect).size(), 84);
    EXPECT_TRUE(isErasedAt(rect, {200, 0}));
    EXPECT_TRUE(isErasedAt(rect, {200, 200}));
    EXPECT_TRUE(isErasedAt(rect, {400, 105}));
    EXPECT_TRUE(isErasedAt(rect, {0, 105}));
    EXPECT_FALSE(isErasedAt(rect, {200, 100}));
    DrawingItem ellipse = rect;
    ellipse.kind = Kind::ellipse;
    EXPECT_EQ(eraserTestPoints(ellipse).size(), 48);
    EXPECT_TRUE(isErasedAt(ellipse, {200, 200}));
    EXPECT_TRUE(isErasedAt(ellipse, {200 + 200 * std::numbers::sqrt2 / 2, 100 + 100 * std::numbers::sqrt2 / 2}));
    EXPECT_FALSE(isErasedAt(ellipse, {0, 0})) << "the corner of its box";
    EXPECT_FALSE(isErasedAt(ellipse, {200, 100}));
}

TEST(DrawingModel, TheEraserFindsArrowsAndLinesAtTheirEndsOnly) {
    for (const Kind kind : {Kind::arrow, Kind::line}) {
        const DrawingItem item{kind, {{0, 0}, {400, 200}}, {5}, Qt::red, 5, 1, std::nullopt};
        EXPECT_TRUE(isErasedAt(item, {0, 10}));
        EXPECT_TRUE(isErasedAt(item, {400, 190}));
        EXPECT_FALSE(isErasedAt(item, {200, 100}));
    }
}

TEST(DrawingModel, TheEraserKeepsTheOrderOfTheOthers) {
    Sheet sheet;
    sheet.pens(4);
    const QList<DrawingItem> all = sheet.model.strokes();
    sheet.stroke(Tool::eraser, {{50, 100}});
    EXPECT_EQ(sheet.model.strokes(), (QList<DrawingItem>{all[0], all[2], all[3]}));
}

TEST(DrawingModel, ALaserIsNoStrokeAndNoUndoStepAndFadesInOnePointThreeSeconds) {
    Sheet sheet;
    sheet.stroke(Tool::laser, {{0, 0}, {50, 0}});
    EXPECT_TRUE(sheet.model.strokes().isEmpty());
    EXPECT_EQ(sheet.model.undoSteps(), 0);
    ASSERT_EQ(sheet.model.lasers().size(), 1);
    const DrawingItem laser = sheet.model.lasers().first();
    EXPECT_EQ(laser.endedAt, sheet.now);
    EXPECT_DOUBLE_EQ(DrawingModel::laserAlpha(laser, sheet.now), 1);
    EXPECT_NEAR(DrawingModel::laserAlpha(laser, sheet.now + 0.65), 0.5, 1e-9);
    EXPECT_EQ(DrawingModel::laserAlpha(laser, sheet.now + 2), 0);
    sheet.model.expireLasers(sheet.now + 1.29);
    EXPECT_EQ(sheet.model.lasers().size(), 1);
    sheet.model.expireLasers(sheet.now + 1.31);
    EXPECT_TRUE(sheet.model.lasers().isEmpty());
}

} // namespace
} // namespace velmo
