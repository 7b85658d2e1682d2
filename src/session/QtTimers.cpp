#include "session/QtTimers.h"

#include <QTimer>

#include <chrono>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

std::chrono::milliseconds milliseconds(double seconds) {
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

class QtTimer final : public MainTimer {
public:
    QtTimer(double seconds, std::function<void()> tick) : tick_(std::move(tick)) {
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick_(); });
        timer_.start(milliseconds(seconds));
    }
    void invalidate() override { timer_.stop(); }

private:
    std::function<void()> tick_;
    QTimer timer_;
};

} // namespace

std::unique_ptr<MainTimer> QtTimers::repeat(double seconds, std::function<void()> tick) {
    return std::make_unique<QtTimer>(seconds, std::move(tick));
}

void QtTimers::after(double seconds, std::function<void()> call) {
    QTimer::singleShot(milliseconds(seconds), Qt::PreciseTimer, std::move(call));
}

} // namespace velmo
