#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/CameraCapture.h"
#include "session/Collaborators.h"
#include "surfaces/CameraFeed.h"

#include <memory>
#include <optional>
#include <string>

namespace velmo {

namespace internal {
class CameraSession;
} // namespace internal

/// The camera behind the second bubble: no sound, no level, no pictures for the compositor. Main thread; the device is
/// opened and closed, and its pictures pass, on "velmo.camera2".
class SecondCameraManager final : public SecondCameraPort {
public:
    /// All borrowed; they outlive the manager.
    struct Services {
        CameraService& cameras;
        const Clock& clock;
        MakeQueue makeQueue = &makeThreadQueue;
    };

    explicit SecondCameraManager(Services services);
    ~SecondCameraManager() override;

    static SecondCameraManager& shared();
    static void setShared(SecondCameraManager* manager);

    /// Pictures of the camera; empty without one.
    CameraFeed& feed() { return feed_; }

    /// Ends when the camera is as asked for. One that cannot be opened is left out without a word and tried again.
    QCoro::Task<void> configure(std::optional<std::string> camera) override;
    /// Takes effect in the background.
    void stop() override;

private:
    CameraFeed feed_;
    std::unique_ptr<internal::CameraSession> session_; // on the queue
    std::unique_ptr<SerialQueue> queue_;               // last, so that it goes first
};

} // namespace velmo
