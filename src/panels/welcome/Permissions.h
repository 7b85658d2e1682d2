#pragma once

#include "panels/welcome/DeviceFindings.h"
#include "panels/welcome/PermissionState.h"
#include "platform/ScreenCapture.h"
#include "session/MainTimers.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <memory>

namespace velmo {

/// Whether the program may have the screen, the camera and the microphone. Main thread; everything that answers from
/// elsewhere comes back to it before it counts.
class Permissions final : public QObject {
    Q_OBJECT
public:
    using Media = DevicePermissions::Media;
    enum class Pane { screen, camera, microphone };

    /// References are borrowed and outlive this object.
    struct Services {
        ScreenCaptureService& capture;
        DevicePermissions& devices;
        DeviceFindings& findings;
        MainTimers& timers;
        /// Opens the place in the desktop's settings. Not called where there is none.
        std::function<void(Pane)> openSettings;
        std::function<bool(Pane)> hasSettings;
    };

    explicit Permissions(Services services);
    ~Permissions() override;

    PermissionState screen() const { return screen_; }
    PermissionState camera() const { return camera_; }
    PermissionState microphone() const { return microphone_; }
    DeviceFinding finding(Media media) const { return services_.findings.finding(media); }
    bool hasSettings(Pane pane) const { return services_.hasSettings(pane); }

    /// Finds out anew; `changed` tells of what is different.
    void refresh();
    void requestScreen();
    void request(Media media);

signals:
    void changed();

private:
    QCoro::Task<void> ask(Media media);
    void readDevices();
    void setScreen(bool granted);
    void openSettings(Pane pane);
    void refreshSoon();

    Services services_;
    PermissionState screen_ = PermissionState::unknown;
    PermissionState camera_ = PermissionState::unknown;
    PermissionState microphone_ = PermissionState::unknown;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
};

} // namespace velmo
