#include "surfaces/internal/Ink.h"

#include "surfaces/HandDrawnShape.h"
#include "surfaces/internal/LaserPicture.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::Ink {

namespace {

constexpr double kNibWidth = 1.15; // times the width
constexpr double kNibAngle = std::numbers::pi / 6;
constexpr double kSoftEdge = 2; // of antialiasing, and of places that are rounded to pixels

QPointF pointOf(Point point) {
    return {point.x, point.y};
}

QRectF boxAround(std::initializer_list<QPointF> points, double margin) {
    const auto [left, right] =
        std::minmax_element(points.begin(), points.end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    const auto [low, high] =
        std::minmax_element(points.begin(), points.end(), [](QPointF a, QPointF b) { return a.y() < b.y(); });
    return QRectF(QPointF(left->x(), low->y()), QPointF(right->x(), high->y()))
        .adjusted(-margin, -margin, margin, margin);
}

/// `at` gives the `count` points. A piece that is left out lies, caps and joins of its neighbours included, outside the
/// area.
template <typename At>
QPainterPath smoothPathThrough(qsizetype count, At at, const Area& area, double reach) {
    QPainterPath path;
    if (count == 1) {
        path.moveTo(at(0));
        path.lineTo(at(0) + QPointF(0.1, 0)); // so that a dot shows
        return path;
    }
    QPointF from = at(0);
    QPointF through = from;
    bool drawing = false;
    const auto enter = [&](const QRectF& box) {
        const bool shows = area.touches(box);
        if (shows && !drawing) {
            path.moveTo(from);
        }
        drawing = shows;
        return shows;
    };
    for (qsizetype i = 0; i + 1 < count; ++i) {
        const QPointF next = at(i + 1);
        const QPointF middle = (through + next) / 2;
        if (enter(boxAround({from, through, middle}, reach))) {
            path.cubicTo(through, through, middle);
        }
        from = middle;
        through = next;
    }
    if (enter(boxAround({from, through}, reach))) {
        path.lineTo(through);
    }
    return path;
}

QPen penOf(QColor color, double alpha, double width, Qt::PenCapStyle cap = Qt::RoundCap) {
    color.setAlphaF(static_cast<float>(color.alphaF() * alpha));
    return QPen(color, width, Qt::SolidLine, cap, Qt::RoundJoin);
}

void stroke(QPainter& painter, const QPainterPath& path, const QPen& pen) {
    if (!path.isEmpty()) {
        painter.strokePath(path, pen);
    }
}

void paintFountain(QPainter& painter, const DrawingItem& item, double alpha, const Area& area) {
    QPen pen = penOf(item.color, alpha, item.width);
    for (qsizetype i = 1; i < item.points.size(); ++i) {
        const QPointF from = pointOf(item.points[i - 1]);
        const QPointF to = pointOf(item.points[i]);
        if (area.touches(boxAround({from, to}, reach(item)))) {
            pen.setWidthF(i < item.widths.size() ? item.widths[i]
                                                 : (item.widths.isEmpty() ? item.width : item.widths.last()));
            painter.setPen(pen);
            painter.drawLine(from, to);
        }
    }
}

/// Point `k` of the stroke, softened by its neighbours.
QPointF softened(const QList<Point>& points, qsizetype k) {
    const qsizetype last = points.size() - 1;
    if (last == 0) {
        return pointOf(points[0]);
    }
    if (k == 0) {
        return (3 * pointOf(points[0]) + pointOf(points[1])) / 4;
    }
    return (pointOf(points[k - 1]) + 2 * pointOf(points[k]) + pointOf(points[std::min(k + 1, last)])) / 4;
}

/// The ribbon that the nib's edge sweeps over. One path, and all pieces turn the same way: filled one by one, soft
/// edges would show where they meet.
QPainterPath nibFacets(const QList<Point>& points, double width, const Area& area, double reachOfItem) {
    QPainterPath facets;
    facets.setFillRule(Qt::WindingFill);
    const QPointF nib(width * std::cos(kNibAngle), width * std::sin(kNibAngle));
    QPointF from = softened(points, 0);
    for (qsizetype k = 1; k < points.size(); ++k) {
        const QPointF to = softened(points, k);
        if (area.touches(boxAround({from, to}, reachOfItem))) {
            const QPointF way = to - from;
            const QPointF edge = nib.x() * way.y() < nib.y() * way.x() ? -nib : nib;
            facets.addPolygon(QPolygonF({from - edge, from + edge, to + edge, to - edge}));
            facets.closeSubpath();
        }
        from = to;
    }
    return facets;
}

void paintNib(QPainter& painter, const DrawingItem& item, double alpha, const Area& area) {
    const QList<Point>& points = item.points;
    const double width = item.width * kNibWidth;
    const double reachOfItem = reach(item);
    const QPen pen = penOf(item.color, alpha, std::max(item.width * 0.22, 1.0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.color());
    painter.drawEllipse(pointOf(points[0]), width * 1.1 / 2, width * 1.1 / 2);
    painter.drawPath(nibFacets(points, width, area, reachOfItem));
    painter.setBrush(Qt::NoBrush);
    const auto at = [&points](qsizetype k) { return softened(points, k); };
    stroke(painter, smoothPathThrough(points.size(), at, area, reachOfItem), pen); // hides the facets
}

/// Marks the tiles under a mark.
class Tiles {
public:
    explicit Tiles(const QRectF& box)
        : left_(tile(box.left())), top_(tile(box.top())), columns_(tile(box.right()) - left_ + 1),
          rows_(tile(box.bottom()) - top_ + 1), marked_(static_cast<std::size_t>(columns_) * rows_) {}

    void mark(const QRectF& box) {
        for (int y = std::max(0, tile(box.top()) - top_); y <= std::min(rows_ - 1, tile(box.bottom()) - top_); ++y) {
            for (int x = std::max(0, tile(box.left()) - left_); x <= std::min(columns_ - 1, tile(box.right()) - left_);
                 ++x) {
                marked_[static_cast<std::size_t>(y) * columns_ + x] = true;
            }
        }
    }

    /// One rectangle for each run of tiles, in the order that QRegion asks for.
    QRegion region() const {
        std::vector<QRect> runs;
        for (int y = 0; y < rows_; ++y) {
            for (int x = 0; x < columns_; ++x) {
                if (!isMarked(x, y)) {
                    continue;
                }
                const int begin = x;
                while (x < columns_ && isMarked(x, y)) {
                    ++x;
                }
                runs.emplace_back((left_ + begin) * kTile, (top_ + y) * kTile, (x - begin) * kTile, kTile);
            }
        }
        QRegion region;
        region.setRects(runs.data(), static_cast<int>(runs.size()));
        return region;
    }

private:
    static constexpr int kTile = 32;
    static int tile(double at) { return static_cast<int>(std::floor(at / kTile)); }
    bool isMarked(int x, int y) const { return marked_[static_cast<std::size_t>(y) * columns_ + x]; }

    int left_;
    int top_;
    int columns_;
    int rows_;
    std::vector<bool> marked_;
};

/// Along the flattened line of a shape, of which pieces may be long.
void markShape(Tiles& tiles, const QPainterPath& line, double margin) {
    constexpr double kStep = 16;
    for (const QPolygonF& part : line.toSubpathPolygons()) {
        for (qsizetype i = 1; i < part.size(); ++i) {
            const QPointF way = part[i] - part[i - 1];
            const int steps = static_cast<int>(std::hypot(way.x(), way.y()) / kStep) + 1;
            for (int step = 0; step < steps; ++step) {
                const QPointF begin = part[i - 1] + way * step / steps;
                tiles.mark(boxAround({begin, begin + way / steps}, margin));
            }
        }
    }
}

/// By the points that the smooth line of each piece depends on.
void markStroke(Tiles& tiles, const DrawingItem& item, double margin) {
    const auto point = [&](qsizetype i) {
        return pointOf(item.points[std::clamp<qsizetype>(i, 0, item.points.size() - 1)]);
    };
    for (qsizetype i = 0; i < item.points.size(); ++i) {
        if (item.kind == DrawingKind::nib) {
            tiles.mark(boxAround({point(i - 1), point(i), point(i + 1), point(i + 2)}, margin));
        } else {
            tiles.mark(boxAround({(point(i - 1) + point(i)) / 2, point(i), (point(i) + point(i + 1)) / 2}, margin));
        }
    }
}

QRectF boxOf(const QList<Point>& points) {
    QPolygonF all;
    for (const Point& point : points) {
        all.append(pointOf(point));
    }
    return all.boundingRect();
}

} // namespace

double reach(const DrawingItem& item) {
    switch (item.kind) {
    case DrawingKind::fountain:
        return item.width * 1.6 / 2 + kSoftEdge;
    case DrawingKind::nib:
        return item.width * kNibWidth + kSoftEdge;
    case DrawingKind::highlighter:
        return item.width * std::numbers::sqrt2 / 2 + kSoftEdge; // corners of its square ends
    case DrawingKind::laser:
        return item.width / 2 + LaserPicture::kReach + kSoftEdge;
    default:
        return item.width / 2 + kSoftEdge;
    }
}

QPainterPath smoothPath(const QList<Point>& points, const Area& area, double reach) {
    return smoothPathThrough(
        points.size(), [&points](qsizetype i) { return pointOf(points[i]); }, area, reach);
}

void paintLaserLine(QPainter& painter, const DrawingItem& laser, double alpha, const Area& area) {
    stroke(painter, smoothPath(laser.points, area, reach(laser)), penOf(laser.color, alpha, laser.width));
}

void paintLaserCore(QPainter& painter, const DrawingItem& laser, double alpha, const Area& area) {
    stroke(painter, smoothPath(laser.points, area, reach(laser)),
           penOf(Qt::white, 0.85 * alpha, std::max(laser.width * 0.35, 1.5)));
}

void paint(QPainter& painter, const DrawingItem& item, double alpha, const Area& area) {
    if (item.points.isEmpty()) {
        return;
    }
    if (isShape(item.kind)) {
        stroke(painter, handDrawnShape(item), penOf(item.color, alpha, item.width));
    } else if (item.kind == DrawingKind::fountain && item.points.size() >= 2) {
        paintFountain(painter, item, alpha, area);
    } else if (item.kind == DrawingKind::nib) {
        paintNib(painter, item, alpha, area);
    } else if (item.kind == DrawingKind::laser) {
        paintLaserLine(painter, item, alpha, area);
        paintLaserCore(painter, item, alpha, area);
    } else {
        const Qt::PenCapStyle cap = item.kind == DrawingKind::highlighter ? Qt::SquareCap : Qt::RoundCap;
        stroke(painter, smoothPath(item.points, area, reach(item)), penOf(item.color, alpha, item.width, cap));
    }
}

QRegion region(const DrawingItem& item) {
    if (item.points.isEmpty()) {
        return {};
    }
    const double margin = reach(item);
    const QPainterPath shape = handDrawnShape(item);
    const QRectF box = isShape(item.kind) ? shape.controlPointRect() : boxOf(item.points);
    Tiles tiles(box.adjusted(-margin, -margin, margin, margin));
    if (isShape(item.kind)) {
        markShape(tiles, shape, margin);
    } else {
        markStroke(tiles, item, margin);
    }
    return tiles.region();
}

QRect regionOfLastPoint(const DrawingItem& item) {
    const auto fromEnd = [&](qsizetype back) {
        return pointOf(item.points[std::max<qsizetype>(item.points.size() - back, 0)]);
    };
    QRectF box = boxAround({fromEnd(1), fromEnd(2), fromEnd(3)}, reach(item));
    if (item.kind == DrawingKind::nib) { // softening carries a new point further back
        box |= boxAround({fromEnd(4), fromEnd(5)}, reach(item));
    }
    return box.toAlignedRect();
}

} // namespace velmo::Ink
