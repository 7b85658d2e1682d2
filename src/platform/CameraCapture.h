#pragma once

#include "base/Result.h"
#include "base/SerialQueue.h"
#include "media/Sample.h"
#include "platform/CameraDevices.h"

#include <functional>
#include <memory>
#include <string>

namespace velmo {

/// A running camera. The destructor ends it; no call of its handlers begins after that, and one that is under way on
/// another thread is waited for. It may block while the device lets go.
class CameraStream {
public:
    virtual ~CameraStream() = default;
};

/// What a running camera calls, on the queue that it was opened with.
struct CameraHandlers {
    /// A picture (`image`: NV12, Rec. 709 video range, upright, not mirrored, shared and read only) at the host-clock
    /// time at which it was taken. Sizes may change between pictures. A picture that the queue has not taken when the
    /// next one comes is dropped.
    std::function<void(const Sample&)> picture;
    /// The camera has ended by itself: unplugged, its file over, its driver in trouble. Once, and nothing follows.
    std::function<void(const Error&)> ended;
};

/// The cameras of the computer, and their pictures.
class CameraService : public CameraDevices {
public:
    static constexpr const char* kErrorDomain = "velmo.camera";
    static constexpr int kErrorNoDevice = 1;  ///< nothing has this id
    static constexpr int kErrorBusy = 2;      ///< another program holds it
    static constexpr int kErrorNoPicture = 3; ///< it gives nothing that can be shown
    static constexpr int kErrorEnded = 4;

    /// Any thread; blocks while the device opens. `queue` is borrowed and outlives the stream.
    virtual Result<std::unique_ptr<CameraStream>> open(const std::string& uniqueID, SerialQueue& queue,
                                                       CameraHandlers handlers) = 0;

    /// As long as what comes back is kept, `changed` is called on any thread after a camera has come or gone.
    /// Letting go of it waits for a call that is under way; not to be done inside of one.
    [[nodiscard]] virtual std::shared_ptr<void> watchDevices(std::function<void()> changed) = 0;
};

} // namespace velmo
