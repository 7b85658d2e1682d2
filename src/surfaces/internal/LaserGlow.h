#pragma once

#include "surfaces/DrawingItem.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

class QPainter;

namespace velmo {

/// The light round a laser's stroke, kept as a picture, since blurring it for each frame of its fading would cost more
/// than all else. Main thread.
class LaserGlow {
public:
    /// Points beyond the stroke's edge.
    static constexpr int kReach = 18;

    /// Of a view of `size` points.
    LaserGlow(QSize size, double ratio);

    /// Lights `area` (points of the view, y up) anew, as the stroke is now.
    void light(const DrawingItem& laser, const QRect& area);
    /// Keeps no more than `area`.
    void crop(const QRect& area);
    /// The painter in points of the view, y down.
    void paint(QPainter& painter, double alpha) const;

private:
    QRect pixelsOf(const QRect& area) const;

    QSize size_;
    double ratio_;
    QPoint origin_; // of the picture, in pixels
    QImage picture_;
};

} // namespace velmo
