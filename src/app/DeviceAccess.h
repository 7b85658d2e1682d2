#pragma once

#include "base/SerialQueue.h"
#include "panels/welcome/DeviceFindings.h"
#include "platform/AudioInput.h"
#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "settings/Devices.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace velmo {

/// Camera and microphone as this system gives them: nobody is asked but in a sandbox, and what can be had is found out
/// by trying. Main thread; devices are opened on a queue of its own.
///
/// A microphone that opens and says nothing is no refusal: the recording takes it, the welcome tells of it. A device
/// that is absent is "not determined", so that it is looked for again when it is wanted.
class DeviceAccess final : public QObject, public DevicePermissions, public DeviceFindings {
    Q_OBJECT
public:
    using Media = DevicePermissions::Media;

    /// References are borrowed.
    struct Services {
        const Devices& devices;
        AudioInputService& microphones;
        MainTimers& timers;
        std::unique_ptr<SerialQueue> queue;
        /// Tries the system's camera nodes; on the queue.
        std::function<DeviceFinding()> tryCameras;
        /// Asks the desktop for the cameras, where that is needed; else empty. Main thread.
        std::function<void(std::function<void(bool)>)> askForCamera = {};
    };

    explicit DeviceAccess(Services services);
    ~DeviceAccess() override;

    int status(Media media) const override;
    QCoro::Task<void> request(Media media) override;
    DeviceFinding finding(Media media) const override;
    void look(std::function<void()> found) override;

private:
    void lookFor(Media media, std::function<void()> found);
    void lookForCamera();
    void lookForMicrophone();
    void conclude(Media media, DeviceFinding finding);

    /// What is being found out of one kind of device.
    struct Search {
        DeviceFinding finding = DeviceFinding::unknown;
        std::vector<std::function<void()>> waiting; ///< not empty while it is under way
    };
    Search& search(Media media) { return media == Media::video ? camera_ : microphone_; }

    Services services_;
    Search camera_;
    Search microphone_;
    bool cameraAsked_ = false;
    unsigned attempts_ = 0; ///< with the microphone; tells a late answer from one that counts
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
    std::unique_ptr<AudioInput> listening_; ///< while the microphone is tried; last, so that it ends first
};

} // namespace velmo
