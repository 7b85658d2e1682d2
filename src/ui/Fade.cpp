#include "ui/Fade.h"

#include <utility>

namespace velmo {

Fade::Fade(QObject* parent, int milliseconds, QEasingCurve::Type curve, std::function<void()> step)
    : QVariantAnimation(parent), step_(std::move(step)) {
    setDuration(milliseconds);
    setEasingCurve(curve);
    connect(this, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        value_ = value.toDouble();
        step_();
    });
}

void Fade::moveTo(double target) {
    if (state() == Running && endValue().toDouble() == target) {
        return;
    }
    stop();
    if (target == value_) {
        return;
    }
    setStartValue(value_);
    setEndValue(target);
    start();
}

void Fade::jump(double target) {
    stop();
    value_ = target;
    step_();
}

} // namespace velmo
