#include "surfaces/HandDrawnShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo {

namespace {

/// A 64-bit xorshift: the same numbers from the same seed on every machine.
class Wobble {
public:
    explicit Wobble(quint64 seed) : state_(seed != 0 ? seed : 0x9E3779B97F4A7C15) {}

    /// The next number from -1 to 1.
    double next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return 2 * (static_cast<double>(state_ % 10000) / 10000) - 1;
    }
    /// The next two, x first.
    QPointF nextPair() {
        const double x = next();
        return {x, next()};
    }

private:
    quint64 state_;
};

/// Draws one shape; the order of its draws is what a seed stands for.
class Pencil {
public:
    Pencil(QPainterPath& path, const DrawingItem& item) : path_(path), width_(item.width), wobble_(item.seed) {}

    void line(QPointF from, QPointF to) {
        const QPointF way = to - from;
        const double length = std::hypot(way.x(), way.y());
        const double endJitter = std::min(width_ + length * 0.04, width_ * 2.2);
        const double bend = width_ + length * 0.025;
        const QPointF normal(-way.y() / std::max(length, 1.0), way.x() / std::max(length, 1.0));
        for (int pass = 0; pass < 2; ++pass) {
            const QPointF begin = from + endJitter * wobble_.nextPair();
            const QPointF end = to + endJitter * wobble_.nextPair();
            const QPointF aside = bend * wobble_.nextPair();
            const QPointF middle = (begin + end) / 2 + QPointF(normal.x() * aside.x(), normal.y() * aside.y()) +
                                   width_ * wobble_.nextPair();
            path_.moveTo(begin);
            path_.cubicTo(middle, middle, end);
        }
    }

    void rect(const QRectF& box) { // its `top` is the lower side: y goes up
        const QPointF upperLeft = box.bottomLeft();
        const QPointF upperRight = box.bottomRight();
        const QPointF lowerLeft = box.topLeft();
        const QPointF lowerRight = box.topRight();
        line(upperLeft, upperRight);
        line(upperRight, lowerRight);
        line(lowerRight, lowerLeft);
        line(lowerLeft, upperLeft);
    }

    void ellipse(const QRectF& box) {
        for (const double base : {0.0, 0.6}) {
            const double start = base + wobble_.next() * 0.5;
            for (int i = 0; i <= 30; ++i) { // past the beginning, as a hand does
                const double angle = start + i / 28.0 * 2 * std::numbers::pi;
                const double stretch = 1 + wobble_.next() * 0.035;
                const QPointF at = box.center() + stretch * QPointF(box.width() / 2 * std::cos(angle),
                                                                    box.height() / 2 * std::sin(angle));
                i == 0 ? path_.moveTo(at) : path_.lineTo(at);
            }
        }
    }

    void arrow(QPointF from, QPointF tip) {
        line(from, tip);
        const double head = std::max(width_ * 4.5, 16.0);
        const double angle = std::atan2(tip.y() - from.y(), tip.x() - from.x());
        for (const double barb : {angle - 0.42, angle + 0.42}) {
            line(tip - head * QPointF(std::cos(barb), std::sin(barb)), tip);
        }
    }

private:
    QPainterPath& path_;
    const double width_;
    Wobble wobble_;
};

} // namespace

QPainterPath handDrawnShape(const DrawingItem& item) {
    QPainterPath path;
    if (!isShape(item.kind) || item.points.size() != 2) {
        return path;
    }
    const QPointF from(item.points[0].x, item.points[0].y);
    const QPointF to(item.points[1].x, item.points[1].y);
    Pencil pencil(path, item);
    switch (item.kind) {
    case DrawingKind::rect:
        pencil.rect(QRectF(from, to).normalized());
        break;
    case DrawingKind::ellipse:
        pencil.ellipse(QRectF(from, to).normalized());
        break;
    case DrawingKind::arrow:
        pencil.arrow(from, to);
        break;
    default:
        pencil.line(from, to);
    }
    return path;
}

} // namespace velmo
