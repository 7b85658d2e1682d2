#include "surfaces/DrawingItem.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo {

namespace {

constexpr double kHighlighterAlpha = 0.38;
constexpr double kHighlighterWidth = 4.5; // times the chosen one
constexpr double kLaserWidth = 1.2;       // times the chosen one
constexpr double kLeastLaserWidth = 4;
constexpr int kEllipseTests = 48;
constexpr int kSideSteps = 20;
constexpr double kEraserRadius = 14;

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

Rect boxOf(const DrawingItem& item) {
    const Point a = item.points[0];
    const Point b = item.points[1];
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

QList<Point> aroundEllipse(const Rect& box) {
    QList<Point> around;
    for (int i = 0; i < kEllipseTests; ++i) {
        const double angle = 2 * std::numbers::pi * i / kEllipseTests;
        around.append({box.midX() + box.width / 2 * std::cos(angle), box.midY() + box.height / 2 * std::sin(angle)});
    }
    return around;
}

QList<Point> alongSides(const Rect& box) {
    QList<Point> along;
    for (int i = 0; i <= kSideSteps; ++i) {
        const double t = static_cast<double>(i) / kSideSteps;
        const double x = box.x + t * box.width;
        const double y = box.y + t * box.height;
        along.append({{x, box.maxY()}, {x, box.minY()}, {box.minX(), y}, {box.maxX(), y}});
    }
    return along;
}

} // namespace

DrawingItem startedItem(const DrawingTip& tip, Point at, quint64 seed) {
    DrawingItem item;
    item.kind = kindOf(tip.tool).value();
    item.color = tip.color;
    item.width = tip.width;
    if (tip.tool == DrawingTool::highlighter) {
        item.color.setAlphaF(static_cast<float>(kHighlighterAlpha));
        item.width = tip.width * kHighlighterWidth;
    } else if (tip.tool == DrawingTool::laser) {
        item.width = std::max(tip.width * kLaserWidth, kLeastLaserWidth);
    }
    item.points = isShape(tip.tool) ? QList<Point>{at, at} : QList<Point>{at};
    item.widths = {item.width};
    item.seed = seed;
    return item;
}

QList<Point> eraserTestPoints(const DrawingItem& item) {
    if (item.points.size() == 2 && item.kind == DrawingKind::ellipse) {
        return aroundEllipse(boxOf(item));
    }
    if (item.points.size() == 2 && item.kind == DrawingKind::rect) {
        return alongSides(boxOf(item));
    }
    return item.points;
}

bool isErasedAt(const DrawingItem& item, Point place) {
    const double reach = item.width * 0.5 + kEraserRadius;
    const QList<Point> tests = eraserTestPoints(item);
    return std::any_of(tests.begin(), tests.end(), [&](Point test) { return distance(test, place) < reach; });
}

} // namespace velmo
