#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velmo {

struct CameraDevice {
    std::string uniqueID;
    std::string name;
    friend bool operator==(const CameraDevice&, const CameraDevice&) = default;
};

/// The cameras of the computer. Main thread; never waits for a device.
class CameraDevices {
public:
    virtual ~CameraDevices() = default;
    /// First found first.
    virtual std::vector<CameraDevice> cameras() const = 0;
    /// Absent when there is none.
    virtual std::optional<CameraDevice> defaultCamera() const = 0;
};

} // namespace velmo
