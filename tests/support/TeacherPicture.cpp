#include "support/TeacherPicture.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::test {
namespace {

std::uint8_t code(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

double luma(QRgb pixel) {
    return 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
}

void paintWall(QPainter& painter) {
    QLinearGradient wall(0, 0, 160, 90);
    wall.setColorAt(0, QColor(0x4d6b5a));
    wall.setColorAt(1, QColor(0x8f8f70));
    painter.fillRect(QRectF(0, 0, 160, 90), wall);
    painter.setBrush(QColor(0xd8c9a0));
    painter.drawPolygon(QPolygonF{{128, 18}, {144, 18}, {149, 32}, {123, 32}});
    painter.setBrush(QColor(0x3b4640));
    painter.drawRect(QRectF(135, 32, 2, 50));
    painter.drawRect(QRectF(8, 28, 38, 2));
    const unsigned books[] = {0xb5835f, 0xa9b58f, 0x7fa58c, 0xb07355, 0xc2a874};
    for (int i = 0; i < 5; ++i) {
        painter.setBrush(QColor(books[i]));
        painter.drawRect(QRectF(12 + i * 6, 13 + i % 3 * 3, 5, 15 - i % 3 * 3));
    }
}

void paintTeacher(QPainter& painter, double phase) {
    const double turn = 2 * std::numbers::pi * phase;
    painter.translate(2 * std::sin(turn), 0);
    painter.setBrush(QColor(0x2d1b18));
    painter.drawRoundedRect(QRectF(54, 16, 52, 66), 24, 24);
    painter.setBrush(QColor(0x25996a));
    painter.drawRoundedRect(QRectF(44, 74, 72, 40), 18, 18);
    painter.setBrush(QColor(0xc58a5e));
    painter.drawRect(QRectF(73, 62, 14, 16));
    painter.setBrush(QColor(0xe2b184));
    painter.drawEllipse(QRectF(61, 24, 38, 46));
    painter.setBrush(QColor(0x7c3a34));
    painter.drawChord(QRectF(73, 52, 14, 9 + 2 * std::sin(3 * turn)), 180 * 16, 180 * 16);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x2b1d1a), 1.2));
    painter.drawRoundedRect(QRectF(64, 40, 13, 9), 3, 3);
    painter.drawRoundedRect(QRectF(83, 40, 13, 9), 3, 3);
    painter.drawLine(QPointF(77, 43), QPointF(83, 43));
}

} // namespace

QImage teacherImage(int width, int height, double phase) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(width / 160.0, height / 90.0);
    paintWall(painter);
    paintTeacher(painter, phase);
    return image;
}

FrameRef teacherPicture(int width, int height, double phase) {
    return cameraPicture(teacherImage(width, height, phase));
}

FrameRef cameraPicture(const QImage& image) {
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    const FrameRef frame = PixelBuffer::create(PixelFormat::nv12, source.width(), source.height());
    for (int y = 0; y < source.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        std::uint8_t* to = frame->plane(0).row(y);
        for (int x = 0; x < source.width(); ++x) {
            to[x] = code(16 + luma(from[x]) * 219 / 255);
        }
    }
    const PlaneView chroma = frame->plane(1);
    for (int y = 0; y < chroma.height; ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(source.constScanLine(2 * y));
        for (int x = 0; x < chroma.width; ++x) {
            const QRgb pixel = from[2 * x];
            chroma.row(y)[2 * x] = code(128 + (qBlue(pixel) - luma(pixel)) / 1.8556 * 224 / 255);
            chroma.row(y)[2 * x + 1] = code(128 + (qRed(pixel) - luma(pixel)) / 1.5748 * 224 / 255);
        }
    }
    return frame;
}

QImage slideImage(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(0xfcfaf5));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width / 640.0, height / 360.0);
    painter.fillRect(QRectF(0, 0, 640, 10), QColor(0x1a7a54));
    painter.setPen(QColor(0x10281f));
    QFont font;
    font.setBold(true);
    font.setPixelSize(28);
    painter.setFont(font);
    painter.drawText(QPointF(40, 66), QStringLiteral("Derivada direccional"));
    font.setBold(false);
    font.setPixelSize(15);
    painter.setFont(font);
    painter.drawText(QPointF(40, 100), QStringLiteral("¿Cuánto cambia f si camino en la dirección u?"));
    const unsigned rings[] = {0x1f6fb5, 0x3a9eac, 0x23a774, 0xc7983c};
    for (int i = 0; i < 4; ++i) {
        painter.setPen(QPen(QColor(rings[i]), 3));
        painter.drawEllipse(QPointF(440, 205), 150 - 34 * i, 100 - 22 * i);
    }
    for (int i = 0; i < 3; ++i) {
        painter.fillRect(QRectF(40, 200 + 20 * i, 190 - 14 * (i % 2), 8), QColor(0xc6d2cc));
    }
    return image;
}

} // namespace velmo::test
