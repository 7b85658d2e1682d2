#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace velmo::test {

/// Runs the event loop until `condition` holds. False when it does not within `limit`, which is for a machine that does
/// much else under a sanitizer: it tells nothing of how long things take.
template <typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(60)) {
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QEventLoop loop;
        QTimer::singleShot(std::chrono::milliseconds(10), &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

/// Runs the event loop for `time`.
inline void pass(std::chrono::milliseconds time) {
    waitUntil([] { return false; }, time);
}

} // namespace velmo::test
