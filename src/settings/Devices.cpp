#include "settings/Devices.h"

#include <algorithm>

namespace velmo {

namespace {

const QString kNoDevice = QStringLiteral("none");

template <typename Device>
std::optional<Device> find(const std::vector<Device>& devices, const QString& id) {
    const auto found = std::find_if(devices.begin(), devices.end(), [wanted = id.toStdString()](const Device& device) {
        return device.uniqueID == wanted;
    });
    return found == devices.end() ? std::nullopt : std::optional(*found);
}

} // namespace

Devices::Devices(const CameraDevices* cameras, const AudioInputService* microphones)
    : cameras_(cameras), microphones_(microphones) {}

std::vector<CameraDevice> Devices::cameras() const {
    return cameras_ == nullptr ? std::vector<CameraDevice>() : cameras_->cameras();
}

std::vector<AudioDevice> Devices::microphones() const {
    return microphones_ == nullptr ? std::vector<AudioDevice>() : microphones_->microphones();
}

std::optional<CameraDevice> Devices::camera(const QString& id) const {
    if (id == kNoDevice || cameras_ == nullptr) {
        return std::nullopt;
    }
    const auto chosen = find(cameras_->cameras(), id);
    return chosen ? chosen : cameras_->defaultCamera();
}

std::optional<AudioDevice> Devices::microphone(const QString& id) const {
    if (id == kNoDevice || microphones_ == nullptr) {
        return std::nullopt;
    }
    const auto chosen = find(microphones_->microphones(), id);
    return chosen ? chosen : microphones_->defaultMicrophone();
}

} // namespace velmo
