#include "surfaces/internal/LaserPicture.h"

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

LaserPicture::LaserPicture(QSize size, double ratio)
    : size_(size), ratio_(ratio), light_((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied) {
    light_.fill(0);
}

QRect LaserPicture::pixelsOf(const QRect& area) const {
    const QRectF down(area.x(), size_.height() - area.y() - area.height(), area.width(), area.height());
    return QRectF(down.topLeft() * ratio_, down.size() * ratio_).toAlignedRect();
}

void LaserPicture::light(const DrawingItem& laser, const QRect& area) {
    const QRect place = pixelsOf(area) & light_.rect();
    if (place.isEmpty()) {
        return;
    }
    const int radius = static_cast<int>(std::lround(kSpread * ratio_ - 0.5));
    const int around = Blur::reach(radius);
    const QRect whole = place.adjusted(-around, -around, around, around);
    QImage mask(whole.size(), QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    setUp(painter, whole.topLeft());
    const int margin = static_cast<int>(std::ceil(around / ratio_)) + 1;
    const QRect shown = area.adjusted(-margin, -margin, margin, margin);
    painter.strokePath(Ink::smoothPath(laser.points, Ink::Area(shown), Ink::reach(laser)),
                       QPen(Qt::black, laser.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.end();
    Blur::boxes(mask, radius);
    put(light_, mask, place.translated(-whole.topLeft()), place.topLeft(), laser.color);
}

void LaserPicture::finish(const DrawingItem& laser, const QRect& area) {
    const QRect kept = pixelsOf(area) & light_.rect();
    light_ = light_.copy(kept);
    origin_ = kept.topLeft();
    const auto picture = [&](void (*paintPart)(QPainter&, const DrawingItem&, double, const Ink::Area&)) {
        QImage made(light_.size(), QImage::Format_ARGB32_Premultiplied);
        made.fill(0);
        QPainter painter(&made);
        setUp(painter, origin_);
        paintPart(painter, laser, 1, Ink::Area(area));
        return made;
    };
    line_ = picture(&Ink::paintLaserLine);
    core_ = picture(&Ink::paintLaserCore);
}

void LaserPicture::paint(QPainter& painter, double alpha) const {
    painter.save();
    painter.scale(1 / ratio_, 1 / ratio_);
    painter.setOpacity(alpha);
    for (const QImage* picture : {&light_, &line_, &core_}) {
        if (!picture->isNull()) {
            painter.drawImage(origin_, *picture);
        }
    }
    painter.restore();
}

void LaserPicture::setUp(QPainter& painter, QPoint origin) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-origin);
    painter.scale(ratio_, -ratio_);
    painter.translate(0, -size_.height());
}

} // namespace velmo
