#pragma once

#include "base/SerialQueue.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "session/MainTimers.h"
#include "surfaces/ScreenSnapshot.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>

namespace velmo {

/// Takes the desktop once a second while the presenter is up, and makes the ground of it that stands behind the stage.
/// Main thread; blurring and stretching are on a queue of its own, pictures are taken on a thread of the service.
/// A picture that is the same as the last one is not made again. What fails leaves the last one as it is.
class PresenterBackdrop {
public:
    /// `capture` and `timers` are borrowed and outlive the backdrop.
    struct Services {
        ScreenCaptureService& capture;
        MainTimers& timers;
        std::unique_ptr<SerialQueue> queue;
    };
    /// `shown` gets each new ground, opaque RGB32 of the size asked for.
    PresenterBackdrop(Services services, std::function<void(QImage)> shown);
    ~PresenterBackdrop();
    PresenterBackdrop(const PresenterBackdrop&) = delete;
    PresenterBackdrop& operator=(const PresenterBackdrop&) = delete;

    void warmUp();
    void start(const ScreenSnapshot::Subject& subject, QSize pixels);
    /// Nothing is told after it.
    void stop();
    /// Raised at each start; what belongs to an earlier one is dropped.
    int generation() const { return generation_; }

private:
    struct Worker;
    using Life = std::weak_ptr<const int>;

    bool isWanted(int generation) const { return running_ && generation == generation_; }
    void shoot(int generation);
    void took(int generation, const FrameRef& picture);
    void made(int generation, QImage ground);

    Services services_;
    std::function<void(QImage)> shown_;
    std::shared_ptr<ScreenSnapshot> snapshot_;
    std::unique_ptr<Worker> worker_; ///< only on the queue
    QSize pixels_;
    int generation_ = 0;
    bool running_ = false;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0); ///< of what is told on the main thread
};

} // namespace velmo
