#include "library/views/Backdrop.h"

#include "ui/Theme.h"

#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QRadialGradient>

namespace velmo {

namespace {

constexpr int kHeight = 300;
constexpr int kGridStep = 32;
constexpr double kGridOpacity = 0.055;

struct Light {
    QColor color;
    double opacity;
    double x; ///< in widths
    double y; ///< in heights
};

constexpr Light kLights[] = {{Theme::brand, 0.26, 0.14, -0.10}, {Theme::sky, 0.12, 0.78, -0.20}};

void paintLight(QPainter& painter, const Light& light, int width) {
    QRadialGradient glow(QPointF(light.x * width, light.y * kHeight), width * 0.45);
    glow.setColorAt(0, Theme::withOpacity(light.color, light.opacity));
    glow.setColorAt(1, Theme::withOpacity(light.color, 0));
    painter.fillRect(0, 0, width, kHeight, glow);
}

void paintGrid(QPainter& painter, int width) {
    const QColor line = Theme::withOpacity(Theme::surface, kGridOpacity);
    for (int x = kGridStep; x < width; x += kGridStep) {
        painter.fillRect(x, 0, 1, kHeight, line);
    }
    for (int y = kGridStep; y < kHeight; y += kGridStep) {
        painter.fillRect(0, y, width, 1, line);
    }
}

QPixmap makeTop(int width, double ratio) {
    QPixmap top(QSize(width, kHeight) * ratio);
    top.setDevicePixelRatio(ratio);
    top.fill(Qt::transparent);
    QPainter painter(&top);
    for (const Light& light : kLights) {
        paintLight(painter, light, width);
    }
    paintGrid(painter, width);
    QLinearGradient fade(0, 0, 0, kHeight);
    fade.setColorAt(0, Qt::black);
    fade.setColorAt(1, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(0, 0, width, kHeight, fade);
    return top;
}

} // namespace

void Backdrop::paintEvent(QPaintEvent* event) {
    const double ratio = devicePixelRatioF();
    if (top_.size() != QSize(width(), kHeight) * ratio) {
        top_ = makeTop(width(), ratio);
    }
    QPainter painter(this);
    painter.fillRect(event->rect(), Theme::navy);
    painter.drawPixmap(0, 0, top_);
}

} // namespace velmo
