#include "platform/synthetic/internal/TeacherScene.h"

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRadialGradient>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

constexpr QColor rgb(int value) {
    return {value >> 16 & 0xff, value >> 8 & 0xff, value & 0xff};
}

const QColor kSkin = rgb(0xe6b08c);
const QColor kSkinLight = rgb(0xf3c6a4);
const QColor kSkinShade = rgb(0xcb8d69);
const QColor kHair = rgb(0x3b2720);
const QColor kHairLight = rgb(0x5d3d30);
const QColor kJumper = rgb(0x2f6f73);
const QColor kJumperShade = rgb(0x235659);
const QColor kCollar = rgb(0xf4ece0);
const QColor kLips = rgb(0xb4574f);

/// What moves, at one moment. Heads and mouths do not repeat: the periods have no common multiple worth noticing.
struct Pose {
    explicit Pose(double t)
        : sway(11 * std::sin(0.71 * t) + 4 * std::sin(1.63 * t)), nod(5 * std::sin(1.27 * t)),
          tilt(2.2 * std::sin(0.53 * t) + std::sin(1.9 * t)), breath(3 * std::sin(1.5 * t)),
          gaze(4 * std::sin(0.37 * t)), brows(2.5 * std::max(0.0, std::sin(0.9 * t))), mouth(speech(t)),
          lids(blink(t)) {}

    static double speech(double t) {
        const double phrase = std::clamp(0.75 + std::sin(0.8 * t) + 0.4 * std::sin(2.1 * t), 0.0, 1.0); // pauses
        return phrase * (0.5 + 0.3 * std::sin(13 * t) + 0.2 * std::sin(7.3 * t));
    }
    /// 0 open, 1 shut.
    static double blink(double t) {
        const double since = std::min(std::fmod(t, 3.7), std::fmod(t + 1.1, 5.9));
        return since < 0.18 ? std::sin(since / 0.18 * M_PI) : 0;
    }

    double sway;
    double nod;
    double tilt; // degrees
    double breath;
    double gaze;
    double brows;
    double mouth;
    double lids;
};

void ellipse(QPainter& painter, const QBrush& brush, double x, double y, double width, double height) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawEllipse(QPointF(x, y), width / 2, height / 2);
}

void books(QPainter& painter, double shelf) {
    constexpr int kColors[] = {0xb5523b, 0xe0a458, 0x4f7d6b, 0x35506b, 0xd9c6a5, 0x8a4a52, 0x6b8f9c, 0xc77f4a};
    double x = 925;
    for (int i = 0; x < 1235; ++i) {
        const double width = 20 + (i * 37 + static_cast<int>(shelf)) % 19;
        const double height = 92 + (i * 53 + static_cast<int>(shelf)) % 44;
        const bool gap = (i * 7 + static_cast<int>(shelf)) % 9 == 4;
        if (!gap) {
            painter.fillRect(QRectF(x, shelf - height, width - 2, height),
                             rgb(kColors[(i * 5 + static_cast<int>(shelf) / 100) % 8]));
        }
        x += gap ? 26 : width;
    }
    painter.fillRect(QRectF(900, shelf, 360, 13), rgb(0x9a6b46));
    painter.fillRect(QRectF(900, shelf + 13, 360, 9), QColor(60, 30, 10, 50));
}

void plant(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    for (int i = -4; i <= 4; ++i) {
        painter.save();
        painter.translate(150, 560);
        painter.rotate(i * 19.0);
        painter.setBrush(rgb(i % 2 == 0 ? 0x5d8a5b : 0x47744f));
        QPainterPath leaf;
        leaf.quadTo(-44, -130, 0, -250 + std::abs(i) * 14);
        leaf.quadTo(44, -130, 0, 0);
        painter.drawPath(leaf);
        painter.restore();
    }
    painter.setBrush(rgb(0xc9744a));
    QPainterPath pot(QPointF(84, 548));
    pot.lineTo(216, 548);
    pot.lineTo(198, 700);
    pot.lineTo(102, 700);
    pot.closeSubpath();
    painter.drawPath(pot);
    painter.fillRect(QRectF(76, 536, 148, 30), rgb(0xd98557));
}

/// Out of focus, as behind a person in front of a camera: small, and back to size.
QImage blurred(const QImage& image, int factor) {
    const QImage small =
        image.scaled(image.width() / factor, image.height() / factor, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return small.scaled(image.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void body(QPainter& painter, const Pose& pose) {
    const double y = pose.breath;
    QPainterPath shape(QPointF(318, 722));
    shape.cubicTo(322, 610 + y, 392, 566 + y, 520, 534 + y);
    shape.cubicTo(580, 516 + y, 700, 516 + y, 760, 534 + y);
    shape.cubicTo(888, 566 + y, 958, 610 + y, 962, 722);
    shape.closeSubpath();
    QLinearGradient cloth(320, 0, 960, 0);
    cloth.setColorAt(0, kJumper.lighter(112));
    cloth.setColorAt(0.45, kJumper);
    cloth.setColorAt(1, kJumperShade);
    painter.setPen(Qt::NoPen);
    painter.setBrush(cloth);
    painter.drawPath(shape);
    painter.setPen(QPen(QColor(20, 50, 52, 90), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(424, 640 + y), QPointF(436, 722));
    painter.drawLine(QPointF(856, 640 + y), QPointF(844, 722));
}

void neck(QPainter& painter, const Pose& pose) {
    const double x = 640 + pose.sway * 0.4;
    const double y = pose.breath;
    QPainterPath shape(QPointF(x - 58, 420));
    shape.cubicTo(x - 56, 500, 574, 520 + y, 560, 540 + y);
    shape.quadTo(640, 606 + y, 720, 540 + y);
    shape.cubicTo(706, 520 + y, x + 56, 500, x + 58, 420);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSkinShade);
    painter.drawPath(shape);
    painter.setBrush(kCollar);
    QPainterPath left(QPointF(560, 522 + y));
    left.quadTo(578, 566 + y, 636, 596 + y);
    left.lineTo(596, 632 + y);
    left.quadTo(540, 590 + y, 536, 536 + y);
    left.closeSubpath();
    painter.drawPath(left);
    painter.drawPath(QTransform(-1, 0, 0, 1, 1280, 0).map(left));
}

void backHair(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHair);
    QPainterPath shape(QPointF(640, 100));
    shape.cubicTo(486, 98, 452, 236, 462, 340);
    shape.cubicTo(468, 420, 476, 470, 520, 498);
    shape.quadTo(640, 470, 760, 498);
    shape.cubicTo(804, 470, 812, 420, 818, 340);
    shape.cubicTo(828, 236, 794, 98, 640, 100);
    painter.drawPath(shape);
}

void face(QPainter& painter) {
    for (const double side : {-1.0, 1.0}) {
        ellipse(painter, kSkinShade, 640 + side * 143, 318, 34, 66);
    }
    QPainterPath shape(QPointF(640, 136));
    shape.cubicTo(560, 136, 500, 196, 502, 292);
    shape.cubicTo(504, 390, 566, 474, 640, 476);
    shape.cubicTo(714, 474, 776, 390, 778, 292);
    shape.cubicTo(780, 196, 720, 136, 640, 136);
    QRadialGradient skin(606, 270, 230);
    skin.setColorAt(0, kSkinLight);
    skin.setColorAt(0.65, kSkin);
    skin.setColorAt(1, kSkinShade);
    painter.setPen(Qt::NoPen);
    painter.setBrush(skin);
    painter.drawPath(shape);
    for (const double side : {-1.0, 1.0}) {
        QRadialGradient blush(640 + side * 84, 358, 46);
        blush.setColorAt(0, QColor(226, 110, 96, 84));
        blush.setColorAt(1, QColor(226, 110, 96, 0));
        ellipse(painter, blush, 640 + side * 84, 358, 92, 80);
    }
}

void fringe(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    QLinearGradient hair(500, 110, 760, 260);
    hair.setColorAt(0, kHairLight);
    hair.setColorAt(0.5, kHair);
    painter.setBrush(hair);
    QPainterPath shape(QPointF(640, 102));
    shape.cubicTo(540, 100, 482, 176, 488, 316);
    shape.cubicTo(506, 268, 540, 222, 600, 196);
    shape.cubicTo(660, 236, 744, 232, 792, 316);
    shape.cubicTo(800, 176, 740, 100, 640, 102);
    painter.drawPath(shape);
}

void eye(QPainter& painter, double x, const Pose& pose) {
    const double open = 1 - pose.lids;
    constexpr double kY = 308;
    if (open > 0.12) {
        painter.save();
        QPainterPath slit;
        slit.addEllipse(QPointF(x, kY), 27, 17 * open);
        painter.setClipPath(slit, Qt::IntersectClip);
        painter.fillPath(slit, Qt::white);
        ellipse(painter, rgb(0x5b3a24), x + pose.gaze, kY, 27, 27);
        ellipse(painter, rgb(0x1d120c), x + pose.gaze, kY, 14, 14);
        ellipse(painter, Qt::white, x + pose.gaze - 5, kY - 5, 7, 7);
        painter.restore();
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(rgb(0x3a241b), 5, Qt::SolidLine, Qt::RoundCap));
    QPainterPath lid(QPointF(x - 28, kY + 2));
    lid.quadTo(x, kY + 6 - 38 * open, x + 28, kY + 2);
    painter.drawPath(lid);
    painter.setPen(QPen(kHair, 9, Qt::SolidLine, Qt::RoundCap));
    QPainterPath brow(QPointF(x - 32, 262 - pose.brows));
    brow.quadTo(x, 248 - pose.brows, x + 32, 262 - pose.brows);
    painter.drawPath(brow);
}

void glasses(QPainter& painter) {
    painter.setPen(QPen(rgb(0x22333b), 5, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(QColor(255, 255, 255, 26));
    painter.drawRoundedRect(QRectF(527, 274, 98, 74), 32, 32);
    painter.drawRoundedRect(QRectF(655, 274, 98, 74), 32, 32);
    QPainterPath bridge(QPointF(625, 302));
    bridge.quadTo(640, 292, 655, 302);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(bridge);
    painter.drawLine(QPointF(527, 300), QPointF(502, 292));
    painter.drawLine(QPointF(753, 300), QPointF(778, 292));
}

void noseAndMouth(QPainter& painter, const Pose& pose) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kSkinShade.darker(108), 5, Qt::SolidLine, Qt::RoundCap));
    QPainterPath nose(QPointF(646, 318));
    nose.quadTo(668, 366, 636, 370);
    painter.drawPath(nose);
    const double open = 26 * pose.mouth;
    QPainterPath lips(QPointF(592, 410));
    lips.quadTo(640, 416 - open * 0.1, 688, 410);
    lips.quadTo(640, 438 + open * 1.5, 592, 410);
    painter.save();
    painter.setClipPath(lips, Qt::IntersectClip);
    painter.fillPath(lips, rgb(0x6d2a2a));
    painter.fillRect(QRectF(606, 404, 68, 11 + open * 0.15), rgb(0xfdf8f2));
    ellipse(painter, rgb(0xd4716a), 640, 442 + open * 0.7, 62, 30);
    painter.restore();
    painter.setPen(QPen(kLips, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(lips);
}

} // namespace

void TeacherScene::paintStill(QPainter& painter) const {
    QImage room(kWidth, kHeight, QImage::Format_RGB32);
    {
        QPainter back(&room);
        back.setRenderHint(QPainter::Antialiasing);
        QLinearGradient wall(0, 0, kWidth, kHeight);
        wall.setColorAt(0, rgb(0xf8e3c4));
        wall.setColorAt(0.55, rgb(0xe9c69b));
        wall.setColorAt(1, rgb(0xc79a6f));
        back.fillRect(room.rect(), wall);
        QRadialGradient lamp(260, 120, 620);
        lamp.setColorAt(0, QColor(255, 246, 224, 210));
        lamp.setColorAt(1, QColor(255, 246, 224, 0));
        back.fillRect(room.rect(), lamp);
        books(back, 210);
        books(back, 390);
        books(back, 570);
        plant(back);
    }
    painter.drawImage(0, 0, blurred(room, 7));
}

void TeacherScene::paintMoving(QPainter& painter, double seconds) const {
    const Pose pose(seconds);
    painter.save();
    const auto turnHead = [&painter, &pose] {
        painter.translate(640 + pose.sway, 480 + pose.nod);
        painter.rotate(pose.tilt);
        painter.translate(-640, -480);
    };
    painter.save();
    turnHead();
    backHair(painter);
    painter.restore();
    body(painter, pose);
    neck(painter, pose);
    turnHead();
    face(painter);
    noseAndMouth(painter, pose);
    eye(painter, 576, pose);
    eye(painter, 704, pose);
    glasses(painter);
    fringe(painter);
    painter.restore();
}

} // namespace velmo::internal
