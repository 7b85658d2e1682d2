#include "surfaces/HandDrawnShape.h"

#include <gmock/gmock.h>

#include <array>
#include <vector>

namespace velmo {
namespace {

constexpr quint64 kSeed = 0x123456789ABCDEF;

DrawingItem shape(DrawingKind kind, Point from = {100, 100}, Point to = {400, 300}, double width = 5,
                  quint64 seed = kSeed) {
    return {kind, {from, to}, {width}, Qt::red, width, seed, std::nullopt};
}

/// Begin, control and end of one stroke.
using Stroke = std::array<double, 6>;

std::vector<Stroke> strokes(const QPainterPath& path) {
    std::vector<Stroke> all;
    for (int i = 0; i + 3 < path.elementCount(); i += 4) {
        const auto begin = path.elementAt(i);
        const auto control = path.elementAt(i + 1);
        const auto second = path.elementAt(i + 2);
        const auto end = path.elementAt(i + 3);
        EXPECT_EQ(QPointF(control), QPointF(second)) << "both control points are one";
        all.push_back({begin.x, begin.y, control.x, control.y, end.x, end.y});
    }
    return all;
}

void expectStrokes(const QPainterPath& path, const std::vector<Stroke>& expected) {
    const std::vector<Stroke> actual = strokes(path);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        for (std::size_t part = 0; part < 6; ++part) {
            EXPECT_NEAR(actual[i][part], expected[i][part], 1e-5) << "stroke " << i << ", part " << part;
        }
    }
}

// The expected places were computed by another program from the law of the lines.

TEST(HandDrawnShape, ALineIsTwoLinesThatFollowFromItsSeed) {
    expectStrokes(handDrawnShape(shape(DrawingKind::line)),
                  {{96.1544, 103.201, 242.536467, 211.594239, 390.914, 306.853},
                   {106.8156, 110.2608, 248.60467, 219.975575, 397.8814, 307.8298}});
}

TEST(HandDrawnShape, ASeedOfZeroStandsForAnother) {
    const auto all = strokes(handDrawnShape(shape(DrawingKind::line, {0, 0}, {100, 0}, 3, 0)));
    EXPECT_NEAR(all[0][0], -2.65452, 1e-5);
    EXPECT_NEAR(all[0][5], -3.6168, 1e-5);
}

TEST(HandDrawnShape, ARectangleGoesRoundFromItsUpperLeftCorner) {
    const std::vector<Stroke> expected = {{96.1544, 303.201, 246.2522, 312.392, 390.914, 306.853},
                                          {106.8156, 310.2608, 254.5685, 320.6813, 397.8814, 307.8298},
                                          {404.1778, 303.9468, 393.5814, 204.3676, 398.955, 95.5164},
                                          {408.3072, 293.2086, 404.0862, 198.0239, 389.7832, 108.4612},
                                          {399.3334, 98.6118, 243.3066, 102.6686, 94.1238, 104.0964},
                                          {406.4064, 101.496, 249.6414, 91.7069, 92.3924, 98.4578},
                                          {95.4768, 109.6206, 94.1627, 205.2183, 103.7686, 294.5},
                                          {91.6334, 103.1482, 96.2821, 204.37, 108.9848, 310.7998}};
    expectStrokes(handDrawnShape(shape(DrawingKind::rect)), expected);
    expectStrokes(handDrawnShape(shape(DrawingKind::rect, {400, 100}, {100, 300})), expected);
}

TEST(HandDrawnShape, AnArrowHasTwoBarbsThatEndAtItsTip) {
    expectStrokes(handDrawnShape(shape(DrawingKind::arrow)),
                  {{96.1544, 103.201, 242.536467, 211.594239, 390.914, 306.853},
                   {106.8156, 110.2608, 248.60467, 219.975575, 397.8814, 307.8298},
                   {380.057604, 298.354618, 387.451589, 301.812392, 399.4395, 297.59516},
                   {382.272464, 292.595038, 383.840622, 301.135644, 394.52008, 304.53828},
                   {387.63756, 280.225644, 389.87848, 291.402934, 396.84822, 302.19716},
                   {391.43126, 281.772624, 393.782859, 288.631172, 395.91956, 299.17282}});
}

TEST(HandDrawnShape, AnEllipseGoesRoundTwiceAndPastItsBeginning) {
    const QPainterPath path = handDrawnShape(shape(DrawingKind::ellipse));
    ASSERT_EQ(path.elementCount(), 62);
    const auto expectAt = [&path](int index, double x, double y) {
        EXPECT_NEAR(path.elementAt(index).x, x, 1e-5) << index;
        EXPECT_NEAR(path.elementAt(index).y, y, 1e-5) << index;
    };
    EXPECT_TRUE(path.elementAt(0).isMoveTo());
    EXPECT_TRUE(path.elementAt(31).isMoveTo());
    expectAt(0, 399.21867, 182.431753);
    expectAt(1, 395.484363, 204.814581);
    expectAt(30, 391.563035, 226.52591);
    expectAt(31, 375.751515, 253.699702);
    expectAt(32, 353.173314, 269.989738);
    expectAt(61, 327.26218, 283.580358);
}

TEST(HandDrawnShape, RedrawnAThousandTimesKeepsExactlyTheSameWobble) {
    for (const auto kind : {DrawingKind::rect, DrawingKind::ellipse, DrawingKind::arrow, DrawingKind::line}) {
        const QPainterPath first = handDrawnShape(shape(kind));
        for (int i = 0; i < 1000; ++i) {
            ASSERT_EQ(handDrawnShape(shape(kind)), first);
        }
    }
}

TEST(HandDrawnShape, AnotherSeedIsAnotherWobble) {
    EXPECT_NE(handDrawnShape(shape(DrawingKind::line)),
              handDrawnShape(shape(DrawingKind::line, {100, 100}, {400, 300}, 5, 7)));
}

TEST(HandDrawnShape, OfOnePointNothingIsDrawn) {
    DrawingItem item = shape(DrawingKind::rect);
    item.points.removeLast();
    EXPECT_TRUE(handDrawnShape(item).isEmpty());
}

TEST(HandDrawnShape, AShapeOfNoLengthIsStillADrawing) {
    EXPECT_FALSE(handDrawnShape(shape(DrawingKind::arrow, {50, 50}, {50, 50})).isEmpty());
}

} // namespace
} // namespace velmo
