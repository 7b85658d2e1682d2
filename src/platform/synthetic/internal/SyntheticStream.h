#pragma once

#include "base/Clock.h"
#include "platform/CameraCapture.h"
#include "platform/CameraMailbox.h"
#include "platform/synthetic/internal/ScenePictures.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace velmo::internal {

/// A thread that makes each picture before its time and delivers it when it has come.
class SyntheticStream final : public CameraStream {
public:
    SyntheticStream(const Clock& clock, std::shared_ptr<CameraMailbox> mailbox, ScenePictures pictures);
    ~SyntheticStream() override;

private:
    void run();
    /// False when the stream ends.
    bool waitUntil(double seconds);

    const Clock& clock_;
    const std::shared_ptr<CameraMailbox> mailbox_;
    ScenePictures pictures_;
    std::mutex lock_;
    std::condition_variable stopping_;
    bool stop_ = false; // protected by lock_
    std::thread thread_;
};

} // namespace velmo::internal
