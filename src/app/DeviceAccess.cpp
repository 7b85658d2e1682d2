#include "app/DeviceAccess.h"

#include "session/MainThreadResult.h"

#include <QMetaObject>

#include <utility>

namespace velmo {

namespace {

constexpr int kUndetermined = 0;
constexpr int kDenied = 2;
constexpr int kAuthorized = 3;
/// A wireless microphone takes its time to wake up.
constexpr double kSilenceSeconds = 2.0;

} // namespace

DeviceAccess::DeviceAccess(Services services) : services_(std::move(services)) {}

DeviceAccess::~DeviceAccess() {
    life_.reset();
    listening_.reset();
    services_.queue.reset(); // what it still runs finds nobody any more
}

int DeviceAccess::status(Media media) const {
    switch (finding(media)) {
    case DeviceFinding::granted:
    case DeviceFinding::silent:
        return kAuthorized;
    case DeviceFinding::refused:
        return kDenied;
    case DeviceFinding::unknown:
    case DeviceFinding::absent:
        break;
    }
    return kUndetermined;
}

DeviceFinding DeviceAccess::finding(Media media) const {
    return media == Media::video ? camera_.finding : microphone_.finding;
}

QCoro::Task<void> DeviceAccess::request(Media media) {
    if (status(media) == kAuthorized) {
        co_return;
    }
    MainThreadResult<Done> found{Done{}};
    lookFor(media, [tell = found.callback()] { tell(Done{}); });
    const Done ignored = co_await found;
    Q_UNUSED(ignored);
}

void DeviceAccess::look(std::function<void()> found) {
    const auto left = std::make_shared<int>(2);
    const auto one = [left, found = std::move(found)] {
        if (--*left == 0) {
            found();
        }
    };
    lookFor(Media::video, one);
    lookFor(Media::audio, one);
}

void DeviceAccess::lookFor(Media media, std::function<void()> found) {
    Search& current = search(media);
    current.waiting.push_back(std::move(found));
    if (current.waiting.size() > 1) {
        return; // one answer for all who ask meanwhile
    }
    if (media == Media::audio) {
        lookForMicrophone();
    } else if (services_.askForCamera && !std::exchange(cameraAsked_, true)) {
        services_.askForCamera([this, life = std::weak_ptr(life_)](bool permitted) {
            if (life.expired()) {
                return;
            }
            permitted ? lookForCamera() : conclude(Media::video, DeviceFinding::refused);
        });
    } else {
        lookForCamera();
    }
}

void DeviceAccess::lookForCamera() {
    services_.queue->async([this, life = std::weak_ptr(life_), tryCameras = services_.tryCameras] {
        const DeviceFinding nodes = tryCameras();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [this, life, nodes] {
                if (!life.expired()) {
                    // What is listed can be had, also where it has no node.
                    const bool listed = !services_.devices.cameras().empty();
                    conclude(Media::video, listed ? DeviceFinding::granted : nodes);
                }
            },
            Qt::QueuedConnection);
    });
}

void DeviceAccess::lookForMicrophone() {
    const auto conclusion = [this, life = std::weak_ptr(life_), attempt = ++attempts_](DeviceFinding finding) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [this, life, attempt, finding] {
                if (!life.expired() && attempt == attempts_ && !microphone_.waiting.empty()) {
                    listening_.reset();
                    conclude(Media::audio, finding);
                }
            },
            Qt::QueuedConnection);
    };
    const auto device = services_.devices.microphone(QString());
    if (!device) {
        conclusion(DeviceFinding::absent);
        return;
    }
    if (microphone_.finding == DeviceFinding::granted) {
        conclusion(DeviceFinding::granted); // not opened again and again while it works
        return;
    }
    auto opened = services_.microphones.openMicrophone(device->uniqueID, *services_.queue,
                                                       [conclusion, told = false](const Sample&) mutable {
                                                           if (!std::exchange(told, true)) {
                                                               conclusion(DeviceFinding::granted);
                                                           }
                                                       });
    if (!opened) {
        conclusion(DeviceFinding::refused);
        return;
    }
    listening_ = std::move(opened).value();
    services_.timers.after(kSilenceSeconds, [conclusion] { conclusion(DeviceFinding::silent); });
}

void DeviceAccess::conclude(Media media, DeviceFinding finding) {
    Search& current = search(media);
    current.finding = finding;
    for (const auto& each : std::exchange(current.waiting, {})) {
        each();
    }
}

} // namespace velmo
