#include "surfaces/internal/BubbleField.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo {
namespace {

constexpr int kStrips = 12; // of the region: more would be less to repaint but more pieces to send

std::uint16_t angleOf(QPointF from, QPointF middle) {
    const double turn = std::atan2(from.x() - middle.x(), middle.y() - from.y()) / (2 * std::numbers::pi);
    const int step = static_cast<int>(std::floor(turn * BubbleField::kAngles));
    return static_cast<std::uint16_t>(step & (BubbleField::kAngles - 1));
}

} // namespace

BubbleField::BubbleField(const BubbleOutline& outline, QSize pixels, double scale)
    : outline_(outline), pixels_(pixels), scale_(scale) {
    for (int y = 0; y < pixels.height(); ++y) {
        addRow(y);
    }
    makeRegion();
}

bool BubbleField::isFor(const BubbleOutline& outline, QSize pixels, double scale) const {
    return outline == outline_ && pixels == pixels_ && scale == scale_;
}

int BubbleField::distanceCount() const {
    return static_cast<int>(std::ceil((kReach + BubbleOutline::kPad) * kSteps * scale_)) + 1;
}

QRect BubbleField::picture() const {
    const QRectF& inner = outline_.inner;
    return QRectF(inner.x() * scale_, inner.y() * scale_, inner.width() * scale_, inner.height() * scale_)
               .toAlignedRect() &
           QRect(QPoint(), pixels_);
}

void BubbleField::addRow(int y) {
    enum class Zone { outside, edge, inside };
    const double top = (y + 0.5) / scale_;
    const QPointF middle = outline_.inner.center();
    Zone before = Zone::outside;
    for (int x = 0; x < pixels_.width(); ++x) {
        const QPointF point((x + 0.5) / scale_, top);
        const double distance = outline_.distance(point);
        const Zone zone = distance >= BubbleOutline::kPad ? Zone::outside
                          : distance > -kReach            ? Zone::edge
                                                          : Zone::inside;
        if (zone == Zone::edge) {
            if (before != Zone::edge) {
                spans_.push_back({y, x, x, edge_.size()});
            }
            spans_.back().end = x + 1;
            const auto steps = static_cast<std::uint16_t>((distance + kReach) * kSteps * scale_);
            edge_.push_back({steps, angleOf(point, middle)});
        } else if (zone == Zone::inside) {
            if (before != Zone::inside) {
                insides_.push_back({y, x, x});
            }
            insides_.back().end = x + 1;
        }
        before = zone;
    }
}

/// Strips of the panel, each from the outermost pixel near the edge to the innermost.
void BubbleField::makeRegion() {
    const double height = pixels_.height() / static_cast<double>(kStrips);
    const auto points = [this](int left, int top, int right, int bottom) {
        return QRectF(left / scale_, top / scale_, (right - left) / scale_, (bottom - top) / scale_).toAlignedRect();
    };
    for (int strip = 0; strip < kStrips; ++strip) {
        const int top = static_cast<int>(std::lround(strip * height));
        const int bottom = static_cast<int>(std::lround((strip + 1) * height));
        int left = pixels_.width();
        int right = 0;
        for (const Span& span : spans_) {
            if (span.y >= top && span.y < bottom) {
                left = std::min(left, span.begin);
                right = std::max(right, span.end);
            }
        }
        int holeLeft = 0;
        int holeRight = pixels_.width();
        int rows = 0;
        for (const Inside& inside : insides_) {
            if (inside.y >= top && inside.y < bottom) {
                holeLeft = std::max(holeLeft, inside.begin);
                holeRight = std::min(holeRight, inside.end);
                ++rows;
            }
        }
        if (left >= right) {
            continue;
        }
        if (rows < bottom - top || holeLeft >= holeRight) {
            ringRegion_ += points(left, top, right, bottom);
        } else {
            ringRegion_ += points(left, top, holeLeft, bottom);
            ringRegion_ += points(holeRight, top, right, bottom);
        }
    }
}

} // namespace velmo
