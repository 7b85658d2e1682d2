#pragma once

#include "platform/AudioInput.h"
#include "platform/CameraDevices.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmo {

/// Cameras and microphones by the ids that the settings hold. Main thread.
///
/// The id "none" is no device; an id that is empty or that no device has is the system's default device, so that a
/// first start and an unplugged camera both find one.
class Devices {
public:
    /// Both borrowed; null where the system has no such devices.
    Devices(const CameraDevices* cameras, const AudioInputService* microphones);

    std::vector<CameraDevice> cameras() const;
    std::vector<AudioDevice> microphones() const;
    std::optional<CameraDevice> camera(const QString& id) const;
    std::optional<AudioDevice> microphone(const QString& id) const;

private:
    const CameraDevices* cameras_;
    const AudioInputService* microphones_;
};

} // namespace velmo
