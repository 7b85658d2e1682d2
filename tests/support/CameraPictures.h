#pragma once

#include "media/PixelBuffer.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

/// Pictures such as a camera gives, for whatever shows them.
namespace velmo::test {

/// `image` as NV12 in video range; chroma is that of the upper left of each four pixels.
inline FrameRef cameraPicture(const QImage& image) {
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    FrameRef frame = PixelBuffer::create(PixelFormat::nv12, source.width(), source.height());
    const auto byte = [](double value) { return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L)); };
    for (int y = 0; y < source.height(); ++y) {
        for (int x = 0; x < source.width(); ++x) {
            const QColor color = source.pixelColor(x, y);
            const double luma = 0.2126 * color.redF() + 0.7152 * color.greenF() + 0.0722 * color.blueF();
            frame->plane(0).row(y)[x] = byte(16 + 219 * luma);
            if (x % 2 == 0 && y % 2 == 0) {
                std::uint8_t* chroma = frame->plane(1).row(y / 2) + x;
                chroma[0] = byte(128 + 224 * (color.blueF() - luma) / 1.8556);
                chroma[1] = byte(128 + 224 * (color.redF() - luma) / 1.5748);
            }
        }
    }
    return frame;
}

inline FrameRef flatCameraPicture(QSize size, const QColor& color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return cameraPicture(image);
}

/// A teacher before a shelf, drawn for a height of 720.
inline QImage teacher(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient wall(0, 0, size.width(), size.height());
    wall.setColorAt(0, QColor(0x4c5c4a));
    wall.setColorAt(1, QColor(0x6d745c));
    painter.fillRect(image.rect(), wall);
    painter.translate(size.width() / 2.0, 0);
    painter.scale(size.height() / 720.0, size.height() / 720.0);
    painter.setPen(Qt::NoPen);
    const auto fill = [&](QColor color, const QRectF& rect, double radius) {
        painter.setBrush(color);
        painter.drawRoundedRect(rect, radius, radius);
    };
    fill(0x33403a, {-620, 240, 330, 16}, 4);
    fill(0x9aa68c, {-600, 120, 44, 120}, 6);
    fill(0xb98a63, {-548, 150, 40, 90}, 6);
    fill(0x7f98a6, {-500, 110, 46, 130}, 6);
    fill(0x33403a, {330, 330, 300, 16}, 4);
    fill(0xd9c79b, {420, 210, 60, 120}, 8);
    fill(0x32201d, {-165, 60, 330, 470}, 150);
    fill(0x1f8f63, {-280, 540, 560, 300}, 130);
    fill(0xd49a6a, {-55, 430, 110, 150}, 50);
    fill(0xe2ab7a, {-120, 120, 240, 340}, 118);
    fill(0x32201d, {-130, 90, 260, 90}, 60);
    fill(Qt::white, {-78, 255, 46, 30}, 14);
    fill(Qt::white, {32, 255, 46, 30}, 14);
    fill(0x2a1a14, {-66, 258, 24, 24}, 12);
    fill(0x2a1a14, {44, 258, 24, 24}, 12);
    fill(Qt::white, {-45, 375, 90, 30}, 15);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x2a2420), 7));
    painter.drawRoundedRect(QRectF(-98, 235, 84, 70), 22, 22);
    painter.drawRoundedRect(QRectF(14, 235, 84, 70), 22, 22);
    painter.drawLine(-14, 262, 14, 262);
    return image;
}

} // namespace velmo::test
