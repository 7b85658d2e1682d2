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

QLinearGradient skin() {
    QLinearGradient light(60, -20, 360, 320);
    light.setColorAt(0, kSkinLight);
    light.setColorAt(1, kSkin);
    return light;
}

void finger(QPainter& painter, const QPointF& from, const QPointF& knuckle, const QPointF& tip, double width) {
    QPainterPath path(from);
    path.quadTo(knuckle, tip);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kSkinShade, width + 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(path);
    painter.setPen(QPen(QBrush(skin()), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(path);
    painter.setPen(Qt::NoPen); // no line where it grows out of the hand
    painter.setBrush(skin());
    painter.drawEllipse(from, width / 2 + 3, width / 2 + 3);
}

void nail(QPainter& painter, const QPointF& at, double degrees) {
    painter.save();
    painter.translate(at);
    painter.rotate(degrees);
    painter.setPen(Qt::NoPen);
    painter.setBrush(rgb(0xf6d6c2));
    painter.drawRoundedRect(QRectF(-11, -7, 22, 14), 7, 7);
    painter.restore();
}

void sleeve(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(rgb(0x2f6f73));
    painter.drawPolygon(
        QPolygonF({QPointF(292, 352), QPointF(420, 214), QPointF(1000, 640), QPointF(1000, 900), QPointF(700, 900)}));
    painter.setBrush(rgb(0x3d8488));
    painter.drawPolygon(QPolygonF({QPointF(284, 344), QPointF(412, 206), QPointF(444, 230), QPointF(316, 370)}));
}

void palm(QPainter& painter) {
    QPainterPath shape(QPointF(188, 48));
    shape.cubicTo(262, 14, 348, 92, 404, 218);
    shape.lineTo(298, 340);
    shape.cubicTo(226, 322, 148, 286, 136, 214);
    shape.cubicTo(130, 160, 146, 74, 188, 48);
    painter.setPen(QPen(kSkinShade, 2));
    painter.setBrush(skin());
    painter.drawPath(shape);
}

void pen(QPainter& painter) {
    painter.setPen(QPen(rgb(0x27435c), 15, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(24, 5), QPointF(262, 48));
    painter.setPen(QPen(rgb(0xe0a458), 15, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(228, 42), QPointF(242, 44.5));
    painter.setPen(Qt::NoPen);
    painter.setBrush(rgb(0xd9d2c4));
    painter.drawPolygon(QPolygonF({QPointF(0, 0), QPointF(25, -3), QPointF(22, 12)}));
}

/// A right hand that comes from the lower right; the tip of its pen is the origin.
void hand(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(70, 40, 20, 36));
    painter.drawEllipse(QPointF(196, 236), 150, 104); // its shadow
    sleeve(painter);
    finger(painter, {206, 262}, {124, 262}, {142, 216}, 44); // the fingers that the hand rests on
    finger(painter, {196, 216}, {96, 210}, {112, 160}, 46);
    palm(painter);
    finger(painter, {196, 150}, {84, 118}, {74, 46}, 42);
    pen(painter);
    finger(painter, {212, 196}, {150, 126}, {96, 58}, 44);
    nail(painter, {92, 54}, 48);
    finger(painter, {226, 92}, {140, -58}, {66, -2}, 40);
    nail(painter, {64, 0}, -38);
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
