#include "platform/JoinedCameras.h"

#include <utility>

namespace velmo {

JoinedCameras::JoinedCameras(std::vector<CameraService*> services) : services_(std::move(services)) {}

std::vector<CameraDevice> JoinedCameras::cameras() const {
    std::vector<CameraDevice> all;
    for (const CameraService* service : services_) {
        const std::vector<CameraDevice> some = service->cameras();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

std::optional<CameraDevice> JoinedCameras::defaultCamera() const {
    for (const CameraService* service : services_) {
        if (auto device = service->defaultCamera()) {
            return device;
        }
    }
    return std::nullopt;
}

Result<std::unique_ptr<CameraStream>> JoinedCameras::open(const std::string& uniqueID, SerialQueue& queue,
                                                          CameraHandlers handlers) {
    Error error{kErrorDomain, kErrorNoDevice, "La cámara no está conectada."};
    for (CameraService* service : services_) {
        auto opened = service->open(uniqueID, queue, handlers);
        if (opened.ok()) {
            return opened;
        }
        if (opened.error().code != kErrorNoDevice) {
            error = opened.error();
        }
    }
    return error;
}

std::shared_ptr<void> JoinedCameras::watchDevices(std::function<void()> changed) {
    auto all = std::make_shared<std::vector<std::shared_ptr<void>>>();
    for (CameraService* service : services_) {
        all->push_back(service->watchDevices(changed));
    }
    return all;
}

} // namespace velmo
