#pragma once

#include "surfaces/DrawingItem.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

class QPainter;

namespace velmo {

/// A laser's light, and once it is finished its line and hot core as well. They are kept as pictures: blurring and
/// stroking them for each step of the fading would cost more than all else. Main thread.
class LaserPicture {
public:
    /// Points beyond the stroke's edge.
    static constexpr int kReach = 18;

    /// Of a view of `size` points.
    LaserPicture(QSize size, double ratio);

    /// Lights `area` (points of the view, y up) anew, as the stroke is now.
    void light(const DrawingItem& laser, const QRect& area);
    /// The stroke has ended and lies inside `area`.
    void finish(const DrawingItem& laser, const QRect& area);
    /// The painter in points of the view, y down.
    void paint(QPainter& painter, double alpha) const;

private:
    QRect pixelsOf(const QRect& area) const;
    /// Sets the painter of a picture up for points of the view, y up.
    void setUp(QPainter& painter, QPoint origin) const;

    QSize size_;
    double ratio_;
    QPoint origin_; // of the pictures, in pixels
    QImage light_;
    QImage line_; // null while the stroke runs
    QImage core_;
};

} // namespace velmo
