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

/// Looks different from every side.
inline QImage unevenPicture(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient ground(0, 0, size.width(), size.height());
    ground.setColorAt(0, Qt::darkBlue);
    ground.setColorAt(1, Qt::yellow);
    painter.fillRect(image.rect(), ground);
    painter.fillRect(QRect(size.width() / 3, size.height() / 5, size.width() / 9, size.height() / 3), Qt::red);
    painter.fillRect(QRect(size.width() / 2, size.height() / 2, size.width() / 40 + 1, size.height() / 2), Qt::white);
    return image;
}

} // namespace velmo::test
