#include "platform/synthetic/internal/HandsScene.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

constexpr QColor rgb(int value) {
    return {value >> 16 & 0xff, value >> 8 & 0xff, value & 0xff};
}

constexpr double kRound = 9;    // s from one empty sheet to the next
constexpr double kDrawing = 7;  // s of them with the pen on the paper
constexpr double kPoints = 140; // of the curve
constexpr double kLeft = 330;
constexpr double kRight = 850;
constexpr double kMiddle = 330;

const QRectF kPaper(236, 56, 808, 720);
const QColor kSkin = rgb(0xd9a07c);
const QColor kSkinLight = rgb(0xecbb98);
const QColor kSkinShade = rgb(0xb97d5b);

/// A damped wave, `part` of the way along.
QPointF curve(double part) {
    const double x = part * 12;
    return {kLeft + part * (kRight - kLeft), kMiddle - 150 * std::exp(-0.16 * x) * std::cos(1.35 * x)};
}

/// How much of the curve is drawn; the pen rests at its end until the sheet is new.
double drawn(double seconds) {
    const double part = std::clamp(std::fmod(seconds, kRound) / kDrawing, 0.0, 1.0);
    return part * part * (3 - 2 * part);
}

void finger(QPainter& painter, const QPointF& from, const QPointF& knuckle, const QPointF& tip, double width) {
    QPainterPath path(from);
    path.quadTo(knuckle, tip);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kSkinShade, width + 5, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(path);
    painter.setPen(QPen(kSkin, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(path);
}

/// A right hand that comes from the lower right; the tip of its pen is the origin.
void hand(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(70, 40, 20, 42));
    painter.drawEllipse(QPointF(168, 214), 140, 92); // its shadow
    QPainterPath sleeve(QPointF(196, 330));
    sleeve.lineTo(380, 230);
    sleeve.lineTo(820, 620);
    sleeve.lineTo(480, 820);
    sleeve.closeSubpath();
    painter.setBrush(rgb(0x2f6f73));
    painter.drawPath(sleeve);
    finger(painter, {208, 168}, {120, 128}, {88, 176}, 40);
    finger(painter, {190, 150}, {96, 92}, {62, 130}, 42);
    QPainterPath palm(QPointF(150, 128));
    palm.cubicTo(214, 70, 300, 120, 350, 226);
    palm.lineTo(236, 322);
    palm.cubicTo(160, 300, 96, 230, 150, 128);
    QLinearGradient skin(130, 90, 300, 300);
    skin.setColorAt(0, kSkinLight);
    skin.setColorAt(1, kSkin);
    painter.setPen(Qt::NoPen);
    painter.setBrush(skin);
    painter.drawPath(palm);
    painter.setPen(QPen(rgb(0x27435c), 15, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(16, 18), QPointF(196, 10));
    painter.setPen(QPen(rgb(0xe0a458), 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(1, 1), QPointF(15, 17));
    finger(painter, {196, 122}, {110, 30}, {44, 34}, 40);
    finger(painter, {156, 214}, {62, 120}, {50, 56}, 40);
}

} // namespace

void HandsScene::paintStill(QPainter& painter) const {
    QLinearGradient wood(0, 0, kWidth, kHeight);
    wood.setColorAt(0, rgb(0xb98559));
    wood.setColorAt(1, rgb(0x8d5f3c));
    painter.fillRect(QRect(0, 0, kWidth, kHeight), wood);
    painter.setPen(QPen(QColor(70, 40, 18, 46), 2));
    for (int i = 0; i < 26; ++i) {
        QPainterPath grain(QPointF(-10, i * 30 + i * 13 % 17));
        grain.cubicTo(400, i * 30 - 14 + i * 7 % 23, 860, i * 30 + 24 - i * 5 % 19, kWidth + 10, i * 30 + i * 11 % 21);
        painter.drawPath(grain);
    }
    for (int i = 8; i > 0; --i) {
        painter.fillRect(kPaper.adjusted(-i, -i + 6, i, i + 6), QColor(40, 22, 10, 14));
    }
    painter.fillRect(kPaper, rgb(0xfdfaf3));
    painter.setPen(QPen(rgb(0xd3e0e6), 1));
    for (double x = kPaper.left() + 32.5; x < kPaper.right(); x += 32) {
        painter.drawLine(QPointF(x, kPaper.top()), QPointF(x, kPaper.bottom()));
    }
    for (double y = kPaper.top() + 32.5; y < kPaper.bottom(); y += 32) {
        painter.drawLine(QPointF(kPaper.left(), y), QPointF(kPaper.right(), y));
    }
    painter.setPen(QPen(rgb(0x40505a), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(kLeft - 30, kMiddle), QPointF(kRight + 70, kMiddle));
    painter.drawLine(QPointF(kLeft, kMiddle + 190), QPointF(kLeft, kMiddle - 200));
}

void HandsScene::paintMoving(QPainter& painter, double seconds) const {
    const double until = drawn(seconds);
    QPolygonF ink;
    for (double i = 0; i <= kPoints * until; ++i) {
        ink << curve(i / kPoints);
    }
    ink << curve(until);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(rgb(0xb03a2e), 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(ink);
    painter.save();
    painter.translate(curve(until) + QPointF(std::sin(9 * seconds), std::cos(7 * seconds)));
    hand(painter);
    painter.restore();
}

} // namespace velmo::internal
