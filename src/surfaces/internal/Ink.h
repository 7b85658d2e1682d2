#pragma once

#include "surfaces/DrawingItem.h"

#include <QPainterPath>
#include <QRectF>
#include <QRegion>

#include <vector>

class QPainter;

/// How each kind of mark looks. All places are points of the view, y up; the painter is set up for that. Pure.
namespace velmo::Ink {

/// The area that is painted: what of a long stroke cannot show in it is left out, so that a new piece of a stroke of
/// ten thousand points costs what the piece costs. Inside the area nothing differs from painting all.
class Area {
public:
    explicit Area(QRegion region) : region_(std::move(region)), bounds_(region_.boundingRect()) {}
    bool touches(const QRectF& box) const { return bounds_.intersects(box) && region_.intersects(box.toAlignedRect()); }
    const QRegion& region() const { return region_; }

private:
    QRegion region_;
    QRectF bounds_;
};

/// Paints the mark at `alpha` of its own. A laser's light is not part of it, see LaserPicture. The painter's clip must
/// lie inside `area`.
void paint(QPainter& painter, const DrawingItem& item, double alpha, const Area& area);

/// The two parts of a laser's ink; the core lies over the line. The core's own alpha is part of it.
void paintLaserLine(QPainter& painter, const DrawingItem& laser, double alpha, const Area& area);
void paintLaserCore(QPainter& painter, const DrawingItem& laser, double alpha, const Area& area);

/// The line through all points of a stroke, or through those that can show in `area` with `reach` around it.
QPainterPath smoothPath(const QList<Point>& points, const Area& area, double reach);

/// How far from its line a mark has ink or light.
double reach(const DrawingItem& item);
/// Where the mark has ink or light, somewhat generous.
QRegion region(const DrawingItem& item);
/// The same for what changed with the last point of a growing stroke.
QRect regionOfLastPoint(const DrawingItem& item);

} // namespace velmo::Ink
