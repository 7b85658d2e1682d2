#include "compositor/PointerBubble.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace velmo::PointerBubble {

namespace {

using std::numbers::pi;

constexpr double kArrival = 0.28; // seconds
constexpr double kVanishing = 0.4;
constexpr int kRimSegments = 96;

struct Phase {
    double scale;
    double alpha;
};

double breathing(double age) {
    return 1 + std::sin((age - kArrival) * 5) * 0.035;
}

Phase phaseAt(double age) {
    if (age < kArrival) {
        const double p = age / kArrival;
        const double grown = (1 - std::pow(1 - p, 3)) * 0.45 + 0.55;
        return {(1 + std::sin(p * pi) * 0.12) * grown, std::min(p * 1.8, 1.0)};
    }
    if (age < duration) {
        return {breathing(age), 1};
    }
    const double q = std::min((age - duration) / kVanishing, 1.0);
    return {breathing(age) * (1 + q * 0.15), 1 - q};
}

// Ages before the arrival have a negative alpha by the law: they are as invisible as 0.
QColor painted(const Color& color, double alpha) {
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue), component(alpha));
}

Color mixed(const Color& a, const Color& b, double share) {
    return {std::lerp(a.red, b.red, share), std::lerp(a.green, b.green, share), std::lerp(a.blue, b.blue, share), 1};
}

// Only between its two radii: the middle of the bubble stays as clear as its body.
void paintHalo(QPainter& painter, QPointF center, double radius, const Color& color, double alpha) {
    const double inner = radius * 0.6;
    const double outer = radius * 1.7;
    QRadialGradient halo(center, outer);
    halo.setColorAt(inner / outer, painted(color, alpha * 0.28));
    halo.setColorAt(1, painted(color, 0));
    QPainterPath ring;
    ring.addEllipse(center, outer, outer);
    ring.addEllipse(center, inner, inner);
    painter.fillPath(ring, halo);
}

void paintBody(QPainter& painter, QPointF center, double radius, const Color& color, double alpha) {
    painter.setPen(Qt::NoPen);
    for (const Color& fill : {Color{1, 1, 1, 1}, color}) {
        painter.setBrush(painted(fill, alpha * 0.1));
        painter.drawEllipse(center, radius, radius);
    }
}

void paintRim(QPainter& painter, QPointF center, double radius, double width, double base, double alpha,
              std::span<const Color> colors) {
    constexpr double kDegrees = 180 / pi;
    const double middle = radius - width / 2;
    const QRectF circle(center.x() - middle, center.y() - middle, 2 * middle, 2 * middle);
    QPainterPath arc; // one path and one pen for all segments: they keep their memory
    QPen pen(QBrush(Qt::SolidPattern), width, Qt::SolidLine, Qt::FlatCap);
    for (int i = 0; i < kRimSegments; ++i) {
        const double turn = static_cast<double>(i) / kRimSegments;
        const double position = turn * static_cast<double>(colors.size());
        const auto first = static_cast<std::size_t>(position);
        const Color color = mixed(colors[first], colors[(first + 1) % colors.size()], position - std::floor(position));
        const double start = (base + turn * 2 * pi) * kDegrees;
        arc.clear();
        arc.arcMoveTo(circle, start);
        arc.arcTo(circle, start, (2 * pi / kRimSegments + 0.01) * kDegrees);
        pen.setColor(painted(color, alpha));
        painter.strokePath(arc, pen);
    }
}

void paintInnerLine(QPainter& painter, QPointF center, double radius, double rimWidth, double alpha) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(painted({1, 1, 1, 1}, alpha * 0.45), std::max(rimWidth * 0.22, 0.8)));
    painter.drawEllipse(center, radius - rimWidth, radius - rimWidth);
}

} // namespace

bool isVisible(double age) {
    return age >= 0 && age < duration + kVanishing;
}

void draw(QPainter& painter, Point center, double radius, double age, std::span<const Color> colors) {
    if (colors.empty()) {
        return;
    }
    const Phase phase = phaseAt(age);
    const double scaled = radius * phase.scale;
    const double rimWidth = std::max(scaled * 0.09, 2.0);
    const QPointF middle(center.x, center.y);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintHalo(painter, middle, scaled, colors.front(), phase.alpha);
    paintBody(painter, middle, scaled, colors.front(), phase.alpha);
    paintRim(painter, middle, scaled, rimWidth, age * 2.2, phase.alpha, colors);
    paintInnerLine(painter, middle, scaled, rimWidth, phase.alpha);
    painter.restore();
}

std::vector<Color> paletteColors(std::span<const std::uint32_t> hexes) {
    std::vector<Color> colors;
    colors.reserve(hexes.size());
    std::transform(hexes.begin(), hexes.end(), std::back_inserter(colors), Color::fromHex);
    return colors;
}

} // namespace velmo::PointerBubble
