#pragma once

#include "settings/BubbleShape.h"

#include <QPainterPath>
#include <QRectF>
#include <QSizeF>

namespace velmo {

/// The edge of a bubble in its panel, in points, y down.
struct BubbleOutline {
    /// Between the panel's edge and the bubble: room for ring, glow and shadow.
    static constexpr double kPad = 22;
    enum class Kind { plain, ellipse, rounded };

    QRectF inner; ///< what the picture fills
    Kind kind = Kind::ellipse;
    double radius = 0; ///< of a rounded one

    static BubbleOutline of(QSizeF panel, BubbleShape shape, double corner);
    /// The picture alone, without corners and margin.
    static BubbleOutline plain(QSizeF panel);

    double side() const { return std::min(inner.width(), inner.height()); }
    QPainterPath path() const;
    /// How far a point is outside the edge; below 0 inside. Exact for circles and rounded rectangles, and near the edge
    /// for other ellipses.
    double distance(QPointF point) const;

    friend bool operator==(const BubbleOutline&, const BubbleOutline&) = default;
};

} // namespace velmo
