#include "platform/desktop/QtDelayedCalls.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace velmo {

void QtDelayedCalls::after(double seconds, std::function<void()> call) {
    QTimer::singleShot(std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000 + 0.5)), Qt::PreciseTimer,
                       std::move(call));
}

} // namespace velmo
