#pragma once

#include "support/FakeCameraService.h"
#include "support/FakeMicrophones.h"
#include "support/ManualClock.h"
#include "support/ManualQueues.h"
#include "surfaces/CameraFeed.h"
#include "unit/session/ManualTimers.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace velmo::test {

/// Cameras, microphones, queues and a clock in the test's hand.
class CameraWorld : public testing::Test {
protected:
    /// Everything that is under way comes to an end, on queues and on the main thread.
    void settle() {
        for (int round = 0; round < 8; ++round) {
            queues.runAll();
            QCoreApplication::sendPostedEvents();
        }
    }
    /// Lets the time pass in steps, timers of the queue included.
    void advance(const std::string& queue, double seconds, double step) {
        for (double left = seconds; left > 1e-6; left -= step) {
            clock.advance(step);
            queues[queue].fireTimers();
            settle();
        }
    }
    static FrameRef picture(int width = 64, int height = 36) {
        return PixelBuffer::create(PixelFormat::nv12, width, height);
    }

    ManualClock clock{100};
    ManualTimers timers{clock};
    ManualQueues queues;
    FakeCameraService cameras;
    FakeMicrophones microphones;
};

} // namespace velmo::test
