#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace velmo::test {

/// Runs the event loop until `condition` holds; false after ten seconds.
template <typename Condition>
bool waitFor(Condition condition) {
    const QDeadlineTimer deadline(10'000);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

} // namespace velmo::test
