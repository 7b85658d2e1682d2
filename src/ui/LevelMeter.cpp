#include "ui/LevelMeter.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kHeight = 8;
constexpr int kGap = 3;
constexpr int kFall = 120; // ms, of all segments

} // namespace

LevelMeter::LevelMeter(QWidget* parent)
    : QWidget(parent),
      fall_(this, kFall, QEasingCurve::Linear, [this] { light(static_cast<int>(std::ceil(fall_.value()))); }) {
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
    const int wanted = segmentsFor(level);
    if (std::exchange(wanted_, wanted) == wanted) {
        return;
    }
    if (wanted >= lit_ || !isVisible()) {
        fall_.jump(wanted);
    } else {
        fall_.stop(); // a duration that changes on the way would move it
        fall_.setDuration(kFall * (lit_ - wanted) / kSegments);
        fall_.moveTo(wanted);
    }
}

void LevelMeter::light(int segments) {
    if (std::exchange(lit_, segments) != segments) {
        update();
    }
}

void LevelMeter::hideEvent(QHideEvent* event) {
    fall_.jump(wanted_);
    QWidget::hideEvent(event);
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
