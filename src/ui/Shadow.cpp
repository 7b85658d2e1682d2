#include "ui/Shadow.h"

#include "ui/Blur.h"

#include <QCache>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>
#include <span>

namespace velmo::Shadow {

namespace {

constexpr Soft kHover[] = {{6, 16, 0.35}};
constexpr Soft kFloating[] = {{10, 26, 0.42}, {2, 6, 0.30}};
constexpr Soft kDialog[] = {{18, 48, 0.50}};
// Narrower than the button, so that it has faded out where the button's own room ends.
constexpr Soft kGlow = {5, 13, 0.45};
constexpr double kGlowInset = 13;
constexpr double kGlowReach = 16;

/// How far out a blur is still seen; even, since the masks are at half size.
double reach(double blurWidth) {
    return 2 * std::ceil(1.25 * blurWidth / 2);
}

std::span<const Soft> layers(Elevation elevation) {
    switch (elevation) {
    case Elevation::hover:
        return kHover;
    case Elevation::floating:
        return kFloating;
    case Elevation::dialog:
        return kDialog;
    }
    return {};
}

/// A rounded square with soft edges, as small as its corners allow, at half size: it is soft anyway.
const QPixmap& patch(double radius, double blurWidth, const QColor& color) {
    static QCache<QString, QPixmap> cache(64);
    const QString key = QStringLiteral("%1/%2/%3").arg(radius).arg(blurWidth).arg(color.name(QColor::HexArgb));
    if (QPixmap* found = cache.object(key)) {
        return *found;
    }
    const double out = reach(blurWidth);
    const double corner = radius + 2 * out;
    const int side = static_cast<int>(std::ceil(2 * corner + 4)) / 2;
    QImage alpha(side, side, QImage::Format_Alpha8);
    alpha.fill(0);
    QPainter painter(&alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(0.5, 0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRectF(out, out, 2 * side - 2 * out, 2 * side - 2 * out), radius, radius);
    painter.end();
    // Three boxes, at half size, that together reach just that far.
    Blur::boxes(alpha, std::max(1, static_cast<int>(out / 6)));
    QImage tinted(side, side, QImage::Format_ARGB32_Premultiplied);
    tinted.fill(0);
    QPainter tint(&tinted);
    tint.drawImage(0, 0, alpha);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(tinted.rect(), color);
    tint.end();
    auto* made = new QPixmap(QPixmap::fromImage(tinted));
    cache.insert(key, made);
    return *made;
}

void paintLayer(QPainter& painter, const QRectF& shape, double radius, const Soft& layer, QColor color) {
    color.setAlphaF(static_cast<float>(layer.opacity));
    const double out = reach(layer.blur);
    const double shapeRadius = std::min({radius, shape.width() / 2, shape.height() / 2});
    // Even as well: where two pieces meet between pixels a line is seen.
    const double most = std::min({shapeRadius + 2 * out, shape.width() / 2 + out, shape.height() / 2 + out});
    const double corner = 2 * std::floor(most / 2);
    const QPixmap& source = patch(shapeRadius, layer.blur, color);
    const QRectF target = shape.translated(0, layer.down).adjusted(-out, -out, out, out);
    const double side = source.width();
    const double cut = corner / 2;
    const double xs[] = {target.left(), target.left() + corner, target.right() - corner, target.right()};
    const double ys[] = {target.top(), target.top() + corner, target.bottom() - corner, target.bottom()};
    const double cuts[] = {0, cut, side - cut, side};
    const bool smooth = painter.testRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF to(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
            const QRectF from(QPointF(cuts[column], cuts[row]), QPointF(cuts[column + 1], cuts[row + 1]));
            if (to.isValid()) {
                painter.drawPixmap(to, source, from);
            }
        }
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
}

} // namespace

QMargins margins(const Soft& shadow) {
    const int around = static_cast<int>(std::ceil(reach(shadow.blur)));
    const int down = static_cast<int>(shadow.down);
    return {around, around - down, around, around + down};
}

QMargins margins(Elevation elevation) {
    QMargins room;
    for (const Soft& layer : layers(elevation)) {
        room = room | margins(layer);
    }
    return room;
}

void paint(QPainter& painter, const QRectF& shape, double radius, Elevation elevation) {
    for (const Soft& layer : layers(elevation)) {
        paintLayer(painter, shape, radius, layer, Qt::black);
    }
}

void paint(QPainter& painter, const QRectF& shape, double radius, const Soft& shadow) {
    const double before = painter.opacity();
    painter.setOpacity(before * shadow.opacity);
    paintLayer(painter, shape, radius, {shadow.down, shadow.blur, 1}, Qt::black);
    painter.setOpacity(before);
}

void paintGlow(QPainter& painter, const QRectF& shape, double radius, const QColor& color) {
    painter.save();
    painter.setClipRect(shape.adjusted(-kGlow.blur, 0, kGlow.blur, kGlowReach), Qt::IntersectClip);
    paintLayer(painter, shape.adjusted(kGlowInset, 0, -kGlowInset, 0), radius, kGlow, color);
    painter.restore();
}

} // namespace velmo::Shadow
