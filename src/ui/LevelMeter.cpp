#include "ui/LevelMeter.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr int kHeight = 8;
constexpr int kGap = 3;
constexpr int kMostFall = 4; // segments a reading: 20 readings a second empty a full meter in about 120 ms after speech

} // namespace

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
    setFixedHeight(kHeight);
    setMinimumWidth(kSegments * (kGap + 4));
    setAccessibleName(tr("Nivel del micrófono"));
}

int LevelMeter::segmentsFor(double level) {
    if (!(level > 0)) {
        return 0;
    }
    return std::clamp(static_cast<int>(std::ceil(level * kSegments - 1e-9)), 0, kSegments);
}

QColor LevelMeter::colorOf(int segment) {
    if (segment < 9) {
        return Theme::brand;
    }
    if (segment < 16) {
        return Theme::skyBright;
    }
    return segment < 19 ? Theme::gold : Theme::rec;
}

void LevelMeter::setLevel(double level) {
    const int wanted = std::max(segmentsFor(level), lit_ - kMostFall);
    if (wanted != lit_) {
        lit_ = wanted;
        update();
    }
}

void LevelMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double step = (width() + kGap) / static_cast<double>(kSegments);
    for (int i = 0; i < kSegments; ++i) {
        painter.setBrush(i < lit_ ? colorOf(i) : Theme::withOpacity(Theme::border, 0.14));
        painter.drawRoundedRect(QRectF(i * step, 0, step - kGap, kHeight), 3, 3);
    }
}

} // namespace velmo
