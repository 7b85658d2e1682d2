#pragma once

#include "capture/RecorderServices.h"
#include "session/CaptureRecorder.h"

namespace velmo {

/// Makes the recorders of the program's sessions: each a `ScreenRecorder` with its compositor. Main thread.
class ScreenRecorderFactory final : public CaptureRecorderFactory {
public:
    /// What `services` refers to is borrowed and must outlive the recorders.
    explicit ScreenRecorderFactory(RecorderServices services);
    std::unique_ptr<CaptureRecorder> makeRecorder() override;

private:
    RecorderServices services_;
};

} // namespace velmo
