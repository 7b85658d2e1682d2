#include "surfaces/internal/PresenterGround.h"

#include "ui/Theme.h"

#include <QColor>
#include <QPainter>

namespace velmo::PresenterGround {
namespace {

constexpr float kTintAlpha = 0.22F;

QColor colour() {
    return QColor::fromRgbF(0.06F, 0.16F, 0.13F);
}

QColor tint() {
    return QColor::fromRgbF(0.04F, 0.12F, 0.09F, kTintAlpha);
}

} // namespace

QColor plain() {
    return Theme::over(tint(), colour());
}

QImage tinted(const QImage& blurred, QSize pixels) {
    // Tinted while it is small: the same to the eye, and a ninth of the work.
    QImage small = blurred.convertToFormat(QImage::Format_RGB32);
    QPainter painter(&small);
    painter.fillRect(small.rect(), tint());
    painter.end();
    return small.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
}

double cover(double opacity) {
    return 1 - (1 - opacity) * (1 - opacity * static_cast<double>(kTintAlpha));
}

} // namespace velmo::PresenterGround
