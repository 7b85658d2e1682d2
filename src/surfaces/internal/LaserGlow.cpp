#include "surfaces/internal/LaserGlow.h"

#include "surfaces/internal/Ink.h"
#include "ui/Blur.h"

#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

constexpr double kSpread = 6;     // points: half the blur's radius
constexpr double kStrength = 0.9; // of the stroke's own alpha

/// Colours the mask and puts it at `at`, in place of what is there.
void put(QImage& picture, const QImage& mask, const QRect& part, QPoint at, const QColor& color) {
    for (int y = 0; y < part.height(); ++y) {
        const uchar* from = mask.constScanLine(part.y() + y) + part.x();
        auto* to = reinterpret_cast<QRgb*>(picture.scanLine(at.y() + y)) + at.x();
        for (int x = 0; x < part.width(); ++x) {
            const int alpha = static_cast<int>(from[x] * kStrength + 0.5);
            to[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
}

} // namespace

LaserGlow::LaserGlow(QSize size, double ratio)
    : size_(size), ratio_(ratio), picture_((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied) {
    picture_.fill(0);
}

QRect LaserGlow::pixelsOf(const QRect& area) const {
    const QRectF down(area.x(), size_.height() - area.y() - area.height(), area.width(), area.height());
    return QRectF(down.topLeft() * ratio_, down.size() * ratio_).toAlignedRect();
}

void LaserGlow::light(const DrawingItem& laser, const QRect& area) {
    const QRect place = pixelsOf(area) & picture_.rect();
    if (place.isEmpty()) {
        return;
    }
    const int radius = static_cast<int>(std::lround(kSpread * ratio_ - 0.5));
    const int around = Blur::reach(radius);
    const QRect whole = place.adjusted(-around, -around, around, around);
    QImage mask(whole.size(), QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-whole.topLeft());
    painter.scale(ratio_, -ratio_);
    painter.translate(0, -size_.height());
    const int margin = static_cast<int>(std::ceil(around / ratio_)) + 1;
    const QRect shown = area.adjusted(-margin, -margin, margin, margin);
    painter.strokePath(Ink::smoothPath(laser.points, Ink::Area(shown), Ink::reach(laser)),
                       QPen(Qt::black, laser.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.end();
    Blur::boxes(mask, radius);
    put(picture_, mask, place.translated(-whole.topLeft()), place.topLeft(), laser.color);
}

void LaserGlow::crop(const QRect& area) {
    const QRect kept = pixelsOf(area) & picture_.rect();
    picture_ = picture_.copy(kept);
    origin_ = kept.topLeft();
}

void LaserGlow::paint(QPainter& painter, double alpha) const {
    painter.save();
    painter.scale(1 / ratio_, 1 / ratio_);
    painter.setOpacity(alpha);
    painter.drawImage(origin_, picture_);
    painter.restore();
}

} // namespace velmo
