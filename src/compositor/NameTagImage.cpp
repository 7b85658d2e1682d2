#include "compositor/NameTagImage.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

namespace velmo::NameTag {

namespace {

constexpr double kRoleSize = 0.74; // all of the name's size
constexpr double kPad = 0.9;
constexpr double kDot = 0.42;
constexpr double kGap = 0.5;
constexpr double kRolePitch = 0.92; // of the role's height
constexpr double kLeastText = 10;   // points

const QColor kNameColor = QColor::fromRgbF(0.95F, 0.94F, 0.9F);
const QColor kRoleColor = QColor::fromRgbF(0.5F, 0.91F, 0.72F);
const QColor kBackground = QColor::fromRgbF(0.04F, 0.13F, 0.1F, 0.88F);
const QColor kOutline = QColor::fromRgbF(0.5F, 0.91F, 0.72F, 0.35F);
const QColor kDotColor = QColor::fromRgbF(0.27F, 0.83F, 0.58F);

/// Sums of sizes come out a trifle above the whole number that they are.
double wholeAbove(double value) {
    return std::ceil(value - 1e-6);
}

/// A device on which a point of a font is a pixel, whatever the screen's resolution.
QImage pointSized(int width, int height) {
    constexpr int kDotsPerMeter = 2835; // 72 an inch
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.setDotsPerMeterX(kDotsPerMeter);
    image.setDotsPerMeterY(kDotsPerMeter);
    return image;
}

QFont fontOf(double size, QFont::Weight weight) {
    QFont font(QStringList{QStringLiteral("Inter"), QStringLiteral("Cantarell"), QStringLiteral("Noto Sans")} +
               QGuiApplication::font().families());
    font.setPointSizeF(size);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting); // the same shapes and widths at every scale
    return font;
}

/// A line of text, cut to its room.
struct TextLine {
    QFont font;
    QFontMetricsF metrics;
    QString text;
    double width;

    TextLine(const QString& whole, double size, QFont::Weight weight, QPaintDevice* device)
        : font(fontOf(size, weight)), metrics(font, device), text(whole), width(metrics.horizontalAdvance(whole)) {}

    void cutTo(double room) {
        if (width > room) {
            text = metrics.elidedText(text, Qt::ElideRight, room);
        }
    }
    double height() const { return metrics.height(); }

    /// On whole device pixels, so that the letters' feet are sharp.
    void draw(QPainter& painter, double left, double top, double scale, const QColor& color) const {
        const double baseline = std::round((top + metrics.ascent()) * scale) / scale;
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(QPointF(left, baseline), text);
    }
};

void drawPill(QPainter& painter, QSizeF size) {
    const QRectF whole(QPointF(), size);
    const double radius = size.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBackground);
    painter.drawRoundedRect(whole, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kOutline, 1));
    painter.drawRoundedRect(whole.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

} // namespace

std::optional<Image> image(const QString& name, const QString& role, double size, double maxWidth, double scale) {
    if (!(size > 0) || !(scale > 0)) {
        return std::nullopt;
    }
    const double pad = size * kPad;
    const double dot = size * kDot;
    const double gap = size * kGap;
    QImage metricsDevice = pointSized(1, 1);
    TextLine first(name, size, QFont::DemiBold, &metricsDevice);
    TextLine second(role, size * kRoleSize, QFont::Medium, &metricsDevice);
    const double textWidth =
        std::min(std::max(first.width, role.isEmpty() ? 0.0 : second.width), maxWidth - 2 * pad - dot - gap);
    if (!(textWidth > kLeastText)) {
        return std::nullopt;
    }
    first.cutTo(textWidth);
    second.cutTo(textWidth);
    const double secondPitch = role.isEmpty() ? 0 : second.height() * kRolePitch;
    const double textHeight = first.height() + secondPitch;
    const QSizeF points(wholeAbove(dot + 2 * pad + gap + textWidth), wholeAbove(textHeight + 2 * dot));

    QImage pixels = pointSized(static_cast<int>(wholeAbove(points.width() * scale)),
                               static_cast<int>(wholeAbove(points.height() * scale)));
    if (pixels.isNull()) {
        return std::nullopt;
    }
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(scale, scale);
    drawPill(painter, points);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kDotColor);
    painter.drawEllipse(QRectF(pad, (points.height() - dot) / 2, dot, dot));
    const double left = pad + dot + gap;
    const double top = (points.height() - textHeight) / 2; // the dot's size, and half of what was rounded up
    first.draw(painter, left, top, scale, kNameColor);
    if (!role.isEmpty()) {
        second.draw(painter, left, top + textHeight - second.height(), scale, kRoleColor);
    }
    return Image{pixels, points};
}

} // namespace velmo::NameTag
