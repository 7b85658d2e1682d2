#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "capture/DiagLog.h"
#include "media/AssetWriter.h"
#include "platform/ScreenCapture.h"

#include <functional>
#include <memory>
#include <string>

namespace velmo {

/// What a recorder stands on. All references are borrowed and must outlive it.
struct RecorderServices {
    ScreenCaptureService& capture;
    AssetWriterFactory& writers;
    const Clock& clock; ///< the one that capture times are on
    const DiagLog& log;
    /// Makes a queue with that label; called four times for each recorder.
    MakeQueue makeQueue = &makeThreadQueue;
    /// Waits on the spot for some seconds. Only at the end of a recording, on the writer's queue.
    std::function<void(double seconds)> sleep = &RecorderServices::sleepNow;

    static void sleepNow(double seconds);
};

} // namespace velmo
