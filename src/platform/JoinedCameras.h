#pragma once

#include "platform/CameraCapture.h"

#include <vector>

namespace velmo {

/// Several camera services seen as one: the devices of the first come first, an id belongs to the first service that
/// has it.
class JoinedCameras final : public CameraService {
public:
    /// All borrowed.
    explicit JoinedCameras(std::vector<CameraService*> services);

    std::vector<CameraDevice> cameras() const override;
    std::optional<CameraDevice> defaultCamera() const override;
    Result<std::unique_ptr<CameraStream>> open(const std::string& uniqueID, SerialQueue& queue,
                                               CameraHandlers handlers) override;
    [[nodiscard]] std::shared_ptr<void> watchDevices(std::function<void()> changed) override;

private:
    std::vector<CameraService*> services_;
};

} // namespace velmo
