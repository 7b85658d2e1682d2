#pragma once

#include <QEasingCurve>
#include <QVariantAnimation>

#include <functional>

namespace velmo {

/// A value that moves to where it is sent in a set time, and says each step. Main thread.
/// With the desktop's reduced motion, or while its widget is hidden, callers use `jump`.
class Fade final : public QVariantAnimation {
    Q_OBJECT
public:
    /// Times of the look, in milliseconds.
    static constexpr int kHover = 90;
    static constexpr int kSwitch = 140;
    static constexpr int kPanel = 200;

    Fade(QObject* parent, int milliseconds, QEasingCurve::Type curve, std::function<void()> step);

    double value() const { return value_; }
    void moveTo(double target);
    void jump(double target);

private:
    std::function<void()> step_;
    double value_ = 0;
};

} // namespace velmo
