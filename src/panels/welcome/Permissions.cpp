#include "panels/welcome/Permissions.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

namespace velmo {

namespace {

/// A dialog of the system needs that long to take effect.
constexpr double kSoonSeconds = 1.5;
constexpr int kUndetermined = 0;

Permissions::Pane paneOf(DevicePermissions::Media media) {
    return media == DevicePermissions::Media::video ? Permissions::Pane::camera : Permissions::Pane::microphone;
}

} // namespace

Permissions::Permissions(Services services) : services_(std::move(services)) {}

Permissions::~Permissions() = default;

void Permissions::refresh() {
    readDevices();
    const std::weak_ptr<const int> life = life_;
    services_.findings.look([this, life] {
        if (!life.expired()) {
            readDevices();
        }
    });
    services_.capture.queryShareableContent([this, life](const Result<ShareableContent>& content) {
        const bool granted = content.ok();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [this, life, granted] {
                if (!life.expired()) {
                    setScreen(granted);
                }
            },
            Qt::QueuedConnection);
    });
}

void Permissions::requestScreen() {
    if (!services_.capture.requestAccess()) {
        openSettings(Pane::screen);
    }
    refreshSoon();
}

void Permissions::request(Media media) {
    const PermissionState state = media == Media::video ? camera_ : microphone_;
    if (state == PermissionState::granted) {
        return;
    }
    if (services_.devices.status(media) == kUndetermined) {
        ask(media);
    } else {
        openSettings(paneOf(media));
        refreshSoon();
    }
}

QCoro::Task<void> Permissions::ask(Media media) {
    const std::weak_ptr<const int> life = life_;
    co_await services_.devices.request(media);
    if (!life.expired()) {
        refresh();
    }
}

void Permissions::readDevices() {
    const auto stateOf = [this](Media media) {
        // One that opens and gives nothing may be had, yet the class would be without it.
        return finding(media) == DeviceFinding::silent ? PermissionState::denied
                                                       : permissionState(services_.devices.status(media));
    };
    camera_ = stateOf(Media::video);
    microphone_ = stateOf(Media::audio);
    emit changed();
}

void Permissions::setScreen(bool granted) {
    screen_ = granted ? PermissionState::granted : PermissionState::denied;
    emit changed();
}

void Permissions::openSettings(Pane pane) {
    if (services_.hasSettings(pane)) {
        services_.openSettings(pane);
    }
}

void Permissions::refreshSoon() {
    const std::weak_ptr<const int> life = life_;
    services_.timers.after(kSoonSeconds, [this, life] {
        if (!life.expired()) {
            refresh();
        }
    });
}

} // namespace velmo
