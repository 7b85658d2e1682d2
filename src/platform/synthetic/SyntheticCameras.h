#pragma once

#include "base/Clock.h"
#include "platform/CameraCapture.h"

namespace velmo {

/// Two cameras that need no hardware, for demonstrations and tests: a teacher who speaks, and hands that write on
/// paper. 1280x720, 30 pictures a second on the host clock's own grid, each delivered at the moment that its time says.
///
/// With a counter the number of the picture since the opening stands in the upper left corner as velmo-judge reads it.
/// With a flash the picture is white in the first 100 ms of each period of the host clock.
class SyntheticCameras final : public CameraService {
public:
    static constexpr const char* kTeacher = "synthetic:teacher";
    static constexpr const char* kHands = "synthetic:hands";

    struct Options {
        bool counter = true;
        double flashEvery = 0; ///< s; 0 is never
    };

    /// `clock` is the host clock, borrowed; it outlives the service and its streams.
    explicit SyntheticCameras(const Clock& clock, Options options);

    std::vector<CameraDevice> cameras() const override;
    std::optional<CameraDevice> defaultCamera() const override;
    Result<std::unique_ptr<CameraStream>> open(const std::string& uniqueID, SerialQueue& queue,
                                               CameraHandlers handlers) override;
    /// These never come or go.
    [[nodiscard]] std::shared_ptr<void> watchDevices(std::function<void()> changed) override;

private:
    const Clock& clock_;
    const Options options_;
};

} // namespace velmo
