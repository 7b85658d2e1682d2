#include "surfaces/DrawingView.h"

#include "surfaces/internal/Ink.h"
#include "unit/session/ManualTimers.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numbers>

namespace velmo {
namespace {

constexpr int kSide = 400;

/// A view that is painted as its window would be: by its updates, into a picture that stays.
struct Canvas {
    test::ManualClock clock{100};
    test::ManualTimers timers{clock};
    DrawingTip tip{DrawingTool::pen, QColor(0xFF453A), 5};
    QWidget window;
    std::unique_ptr<DrawingView> view;
    QImage screen{kSide, kSide, QImage::Format_ARGB32_Premultiplied};
    QRegion changed;
    int strokesChanged = 0;

    Canvas() {
        window.resize(kSide, kSide);
        view = std::make_unique<DrawingView>(&window, DrawingView::Services{clock, timers}, [this] { return tip; });
        screen.fill(Qt::transparent);
        QObject::connect(view.get(), &DrawingView::inkChanged, &window,
                         [this](const QRegion& area) { changed += area; });
        QObject::connect(view.get(), &DrawingView::strokesChanged, &window, [this] { ++strokesChanged; });
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, at, at, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(view.get(), &event);
        clock.advance(0.008);
    }
    void press(QPointF at) { mouse(QEvent::MouseButtonPress, at); }
    void move(QPointF at) { mouse(QEvent::MouseMove, at); }
    void release(QPointF at) { mouse(QEvent::MouseButtonRelease, at); }
    void stroke(DrawingTool tool, const QList<QPointF>& through) {
        tip.tool = tool;
        press(through.first());
        for (const QPointF& at : through) {
            move(at);
        }
        release(through.last());
    }
    static QList<QPointF> wave(double y) {
        QList<QPointF> points;
        for (int i = 0; i < 60; ++i) {
            points.append({20 + i * 6.0, y + 40 * std::sin(i / 5.0)});
        }
        return points;
    }

    static void render(DrawingView& view, QImage& into, const QRegion& area) {
        QPainter painter(&into);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.setClipRegion(area);
        painter.fillRect(into.rect(), Qt::transparent);
        painter.end();
        view.render(&into, area.boundingRect().topLeft(), area, QWidget::RenderFlags());
    }
    /// Only what has said that it changed.
    void repaintChanged() {
        for (const QRect& rect : changed) {
            render(*view, screen, rect);
        }
        changed = {};
    }
    QImage whole() {
        QImage all(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
        all.fill(Qt::transparent);
        render(*view, all, view->rect());
        return all;
    }
    QColor at(int x, int y) { return whole().pixelColor(x, y); }
};

int greatestDifference(const QImage& a, const QImage& b) {
    int greatest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            greatest = std::max(
                {greatest, std::abs(qAlpha(p) - qAlpha(q)),
                 qAlpha(p) > 0 && qAlpha(q) > 0 ? std::abs(qRed(p) * qAlpha(p) - qRed(q) * qAlpha(q)) / 255 : 0});
        }
    }
    return greatest;
}

class EveryTool : public testing::TestWithParam<DrawingTool> {};

TEST_P(EveryTool, WhatIsPaintedPieceByPieceIsThePictureOfTheWhole) {
    Canvas canvas;
    canvas.stroke(DrawingTool::pen, Canvas::wave(150)); // something that lies below
    canvas.repaintChanged();
    canvas.tip.tool = GetParam();
    const QList<QPointF> wave = Canvas::wave(180);
    canvas.press(wave.first());
    for (const QPointF& at : wave) {
        canvas.move(at);
        canvas.repaintChanged();
    }
    EXPECT_LE(greatestDifference(canvas.screen, canvas.whole()), 2) << "while it grows";
    canvas.release(wave.last());
    canvas.repaintChanged();
    EXPECT_LE(greatestDifference(canvas.screen, canvas.whole()), 2) << "when it is finished";
    canvas.view->undo();
    canvas.repaintChanged();
    EXPECT_LE(greatestDifference(canvas.screen, canvas.whole()), 2) << "when it is taken back";
}

INSTANTIATE_TEST_SUITE_P(Drawing, EveryTool, testing::ValuesIn(allCases<DrawingTool>()),
                         [](const auto& tested) { return rawValue(tested.param).toStdString(); });

TEST(DrawingView, AnErasedStrokeThatComesBackLiesWhereItLayBelowTheOther) {
    Canvas canvas;
    canvas.stroke(DrawingTool::highlighter, {{50, 100}, {150, 100}, {350, 100}});
    canvas.stroke(DrawingTool::highlighter, {{200, 20}, {200, 100}, {200, 300}});
    const QImage before = canvas.whole();
    canvas.stroke(DrawingTool::eraser, {{60, 100}});
    ASSERT_EQ(canvas.view->model().strokes().size(), 1);
    canvas.view->undo();
    EXPECT_EQ(greatestDifference(canvas.whole(), before), 0);
}

TEST(DrawingView, APenStrokeIsItsColourWhereTheMouseWas) {
    Canvas canvas;
    canvas.stroke(DrawingTool::pen, {{50, 100}, {150, 100}, {250, 100}});
    EXPECT_EQ(canvas.at(150, 100), QColor(0xFF453A));
    EXPECT_EQ(canvas.at(150, 108).alpha(), 0);
    EXPECT_EQ(canvas.strokesChanged, 1);
}

TEST(DrawingView, AClickLeavesADotOfThePensWidth) {
    Canvas canvas;
    canvas.stroke(DrawingTool::pen, {{200, 200}});
    EXPECT_EQ(canvas.at(200, 200), QColor(0xFF453A));
    EXPECT_EQ(canvas.at(204, 200).alpha(), 0);
}

TEST(DrawingView, TheHighlighterLetsShineThroughEvenlyWhereItCrossesItself) {
    Canvas canvas;
    canvas.stroke(DrawingTool::highlighter, {{50, 100}, {300, 100}, {301, 110}, {50, 110}});
    EXPECT_NEAR(canvas.at(150, 105).alphaF(), 0.38, 0.01);
    EXPECT_NEAR(canvas.at(250, 105).alphaF(), 0.38, 0.01);
}

TEST(DrawingView, TheHighlightersEndsAreSquare) {
    Canvas canvas;
    canvas.stroke(DrawingTool::highlighter, {{100, 100}, {200, 100}, {300, 100}});
    EXPECT_GT(canvas.at(92, 108).alpha(), 0) << "a corner that a round end would not have";
}

TEST(DrawingView, TheNibIsBroadAcrossItsAngleAndThinAlongIt) {
    Canvas canvas;
    const double along = std::numbers::pi / 6;
    canvas.tip.width = 9;
    canvas.stroke(DrawingTool::nib, {{100, 200}, {100 + 100 * std::cos(along), 200 - 100 * std::sin(along)}});
    canvas.stroke(DrawingTool::nib, {{250, 250}, {250 + 100 * std::sin(along), 250 + 100 * std::cos(along)}});
    const QImage picture = canvas.whole();
    int thin = 0;
    int broad = 0;
    for (int i = -15; i <= 15; ++i) {
        thin += picture
                    .pixelColor(static_cast<int>(150 - i * std::sin(along)),
                                static_cast<int>(200 - 50 * std::tan(along) - i * std::cos(along)))
                    .alpha() > 128;
        broad += picture
                     .pixelColor(static_cast<int>(275 + i * std::cos(along)),
                                 static_cast<int>(250 + 25 / std::tan(along) - i * std::sin(along)))
                     .alpha() > 128;
    }
    EXPECT_LE(thin, 4);
    EXPECT_GE(broad, 18);
}

TEST(DrawingView, TheLaserFadesToNothingAndItsTimerStopsAndANewLaserStartsItAgain) {
    Canvas canvas;
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(canvas.view->isFading());
        EXPECT_EQ(canvas.timers.running(), 0);
        canvas.stroke(DrawingTool::laser, {{50, 100}, {150, 100}, {250, 100}});
        EXPECT_TRUE(canvas.view->isFading());
        EXPECT_EQ(canvas.timers.running(), 1);
        canvas.repaintChanged();
        const int fresh = canvas.screen.pixelColor(150, 108).alpha();
        canvas.timers.advance(0.65);
        canvas.repaintChanged();
        const int half = canvas.screen.pixelColor(150, 108).alpha();
        EXPECT_NEAR(half, fresh / 2.0, 4) << "of its light";
        canvas.timers.advance(0.7);
        canvas.repaintChanged();
        EXPECT_EQ(greatestDifference(canvas.screen, QImage(canvas.screen).copy()), 0);
        EXPECT_EQ(canvas.screen.pixelColor(150, 100).alpha(), 0);
        EXPECT_EQ(canvas.screen.pixelColor(150, 108).alpha(), 0);
    }
    EXPECT_FALSE(canvas.view->isFading());
    EXPECT_EQ(canvas.timers.running(), 0);
    EXPECT_EQ(canvas.strokesChanged, 0);
}

TEST(DrawingView, TwoLasersFadeEachInItsTime) {
    Canvas canvas;
    canvas.stroke(DrawingTool::laser, {{50, 100}, {250, 100}});
    canvas.timers.advance(1);
    canvas.stroke(DrawingTool::laser, {{50, 300}, {250, 300}});
    EXPECT_EQ(canvas.timers.running(), 1);
    canvas.timers.advance(0.5);
    EXPECT_EQ(canvas.view->model().lasers().size(), 1);
    EXPECT_EQ(canvas.at(150, 100).alpha(), 0);
    EXPECT_GT(canvas.at(150, 300).alpha(), 100);
}

TEST(DrawingView, OtherButtonsDrawNothing) {
    Canvas canvas;
    canvas.mouse(QEvent::MouseButtonPress, {50, 50}, Qt::RightButton);
    canvas.mouse(QEvent::MouseButtonRelease, {50, 50}, Qt::RightButton);
    EXPECT_TRUE(canvas.view->model().strokes().isEmpty());
    EXPECT_FALSE(canvas.view->model().current());
}

TEST(DrawingView, APieceOfALongStrokeTouchesOnlyItsSurroundings) {
    Canvas canvas;
    canvas.press({10, 10});
    for (int i = 0; i < 10000; ++i) {
        canvas.changed = {};
        canvas.move({200 + 150 * std::cos(i / 20.0), 200 + 150 * std::sin(i / 31.0)});
    }
    const QRect last = canvas.changed.boundingRect();
    EXPECT_LT(last.width() * last.height(), 40 * 40);
    EXPECT_GT(canvas.view->model().current()->points.size(), 9900);
}

TEST(DrawingView, SeedsAreFreshAndInRange) {
    Canvas canvas;
    canvas.stroke(DrawingTool::pen, {{50, 50}});
    canvas.stroke(DrawingTool::pen, {{90, 50}});
    const auto& strokes = canvas.view->model().strokes();
    EXPECT_NE(strokes[0].seed, strokes[1].seed);
    for (const DrawingItem& item : strokes) {
        EXPECT_GE(item.seed, 1u);
        EXPECT_LT(item.seed, quint64(1) << 63);
    }
}

TEST(Ink, ASmoothLineOfOnePointIsADot) {
    const Ink::Area all(QRect(0, 0, 400, 400));
    const QPainterPath dot = Ink::smoothPath({{10, 20}}, all, 5);
    ASSERT_EQ(dot.elementCount(), 2);
    EXPECT_NEAR(dot.elementAt(1).x, 10.1, 1e-12);
    EXPECT_EQ(dot.elementAt(1).y, 20);
}

TEST(Ink, ASmoothLineBendsTowardsItsPointsAndEndsAtTheLast) {
    const Ink::Area all(QRect(0, 0, 400, 400));
    const QPainterPath path = Ink::smoothPath({{0, 0}, {100, 0}, {100, 100}}, all, 5);
    ASSERT_EQ(path.elementCount(), 8); // move, two curves, line
    EXPECT_EQ(QPointF(path.elementAt(3)), QPointF(50, 0));
    EXPECT_EQ(QPointF(path.elementAt(4)), QPointF(100, 0));
    EXPECT_EQ(QPointF(path.elementAt(6)), QPointF(100, 50));
    EXPECT_EQ(QPointF(path.elementAt(7)), QPointF(100, 100));
}

TEST(Ink, PiecesThatCannotShowAreLeftOut) {
    QList<Point> points;
    for (int i = 0; i < 10000; ++i) {
        points.append({i * 3.0, 50});
    }
    const QPainterPath path = Ink::smoothPath(points, Ink::Area(QRect(3000, 40, 30, 20)), 5);
    EXPECT_LT(path.elementCount(), 60);
    EXPECT_GT(path.elementCount(), 12);
}

} // namespace
} // namespace velmo
