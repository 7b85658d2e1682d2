#include "ui/internal/HueBar.h"

#include "ui/FocusRing.h"
#include "ui/Theme.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr int kHeight = 14;
constexpr int kMostHue = 359;

} // namespace

HueBar::HueBar(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setAccessibleName(QStringLiteral("Tono"));
    setRange(0, kMostHue);
    setPageStep(15);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(kHeight);
    new FocusRing(*this, kHeight / 2.0);
}

void HueBar::goTo(double x) {
    const double end = kHeight / 2.0;
    setValue(static_cast<int>(std::lround(std::clamp((x - end) / (width() - 2 * end), 0.0, 1.0) * kMostHue)));
}

void HueBar::mousePressEvent(QMouseEvent* event) {
    goTo(event->position().x());
}

void HueBar::mouseMoveEvent(QMouseEvent* event) {
    goTo(event->position().x());
}

void HueBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double end = kHeight / 2.0;
    QLinearGradient hues(end, 0, width() - end, 0);
    for (int i = 0; i <= 6; ++i) {
        hues.setColorAt(i / 6.0, QColor::fromHsv(std::min(i * 60, kMostHue), 220, 240));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(hues);
    painter.drawRoundedRect(rect(), end, end);
    const double x = end + static_cast<double>(value()) / kMostHue * (width() - 2 * end);
    painter.setBrush(QColor::fromHsv(value(), 255, 255));
    painter.setPen(QPen(Theme::navyDeep, 3.5));
    painter.drawEllipse(QPointF(x, end), end - 2, end - 2);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(QPointF(x, end), end - 2, end - 2);
}

} // namespace velmo
