#include "panels/RecordingDot.h"

#include "ui/Theme.h"

#include <QPainter>

#include <array>
#include <cmath>
#include <numbers>

namespace velmo {

namespace {

constexpr int kSide = 17;
constexpr double kDot = 9;
constexpr int kSteps = 12; // a pulse of 1.2 s in tenths

double opacity(int step) {
    constexpr double kLeast = 0.35;
    return kLeast + (1 - kLeast) * (1 + std::cos(2 * std::numbers::pi * step / kSteps)) / 2;
}

} // namespace

RecordingDot::RecordingDot(QWidget* parent) : QWidget(parent) {
    setFixedSize(kSide, kSide);
    pulse_.setInterval(100);
    connect(&pulse_, &QTimer::timeout, this, [this] {
        step_ = (step_ + 1) % kSteps;
        update();
    });
}

void RecordingDot::setPaused(bool paused) {
    if (paused != paused_) {
        paused_ = paused;
        runTimer();
        update();
    }
}

void RecordingDot::runTimer() {
    if (isVisible() && !paused_) {
        pulse_.start();
    } else {
        pulse_.stop();
        step_ = 0;
    }
}

void RecordingDot::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    runTimer();
}

void RecordingDot::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    runTimer();
}

void RecordingDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre(kSide / 2.0, kSide / 2.0);
    if (!paused_) {
        painter.setBrush(Theme::withOpacity(Theme::rec, 0.22));
        painter.drawEllipse(centre, kSide / 2.0, kSide / 2.0);
        painter.setOpacity(opacity(step_));
    }
    painter.setBrush(paused_ ? Theme::amber : Theme::rec);
    painter.drawEllipse(centre, kDot / 2, kDot / 2);
}

} // namespace velmo
