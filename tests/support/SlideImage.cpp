#include "support/SlideImage.h"

#include <QFont>
#include <QPainter>

namespace velmo::test {

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
