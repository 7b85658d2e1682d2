#include "surfaces/CameraManager.h"

#include "base/Clock.h"
#include "session/MainThreadResult.h"
#include "surfaces/SoundLevel.h"
#include "surfaces/internal/CameraSession.h"
#include "surfaces/internal/FrameTap.h"

#include <QMetaObject>
#include <QPointer>

#include <cassert>
#include <limits>
#include <utility>

namespace velmo {

namespace {

CameraManager* registered = nullptr;

} // namespace

CameraManager& CameraManager::shared() {
    assert(registered != nullptr);
    return *registered;
}

void CameraManager::setShared(CameraManager* manager) {
    registered = manager;
}

CameraManager::CameraManager(Services services)
    : inputs_(services.inputs), clock_(services.clock), timers_(services.timers),
      lastLevel_(std::numeric_limits<double>::lowest()), tap_(std::make_unique<internal::FrameTap>()),
      audioQueue_(services.makeQueue("velmo.camera.audio")), frameQueue_(services.makeQueue("velmo.camera.cuadros")),
      queue_(services.makeQueue("velmo.camera")) {
    session_ = std::make_unique<internal::CameraSession>(internal::CameraSession::Parts{
        services.cameras, clock_, *queue_, *frameQueue_, feed_,
        [this](const FrameRef& picture) { tap_->pass(picture); }, [this] { publishVideo(turnOnQueue_, true); }});
}

CameraManager::~CameraManager() {
    queue_->sync([this] {
        session_->close();
        microphone_.reset();
    });
    queue_.reset(); // what was handed over before runs now, while all that it names is there
    frameQueue_.reset();
    audioQueue_.reset();
}

QCoro::Task<void> CameraManager::configure(std::optional<std::string> camera, std::optional<std::string> microphone) {
    const QPointer<CameraManager> self(this);
    const std::uint64_t turn = ++turn_;
    const bool listens = microphone.has_value();
    MainThreadResult<bool> done(false);
    queue_->async([this, turn, camera = std::move(camera), microphone = std::move(microphone), tell = done.callback()] {
        tell(setDevices(turn, camera, microphone));
    });
    const bool hasVideo = co_await done;
    if (self.isNull() || turn != turn_) {
        co_return;
    }
    setListens(listens);
    setHasVideo(hasVideo);
}

void CameraManager::stop() {
    ++turn_;
    setListens(false);
    setHasVideo(false);
    queue_->async([this, turn = turn_] { setDevices(turn, std::nullopt, std::nullopt); });
}

/// Whether there is video then. On the queue.
bool CameraManager::setDevices(std::uint64_t turn, const std::optional<std::string>& camera,
                               const std::optional<std::string>& microphone) {
    turnOnQueue_ = turn;
    if (camera != session_->device() || microphone != audioID_) {
        frameQueue_->sync([this] { tap_->close(); });
        session_->setDevice(camera);
        listenTo(microphone);
    }
    return session_->hasVideo();
}

void CameraManager::listenTo(const std::optional<std::string>& microphone) {
    if (microphone == audioID_) {
        return;
    }
    microphone_.reset();
    audioID_ = microphone;
    if (!audioID_) {
        return;
    }
    auto opened = inputs_.openMicrophone(*audioID_, *audioQueue_, [this](const Sample& sample) { hear(sample); });
    if (opened.ok()) {
        microphone_ = std::move(opened).value();
    }
}

void CameraManager::hear(const Sample& sample) {
    const double now = clock_.now().seconds();
    if (now - lastLevel_ < kBetweenLevels) {
        return;
    }
    lastLevel_ = now;
    const double level = sample.audio ? soundLevel(sample.audio->floats()) : 0;
    QMetaObject::invokeMethod(
        this,
        [this, level] {
            heard_ = true;
            setLevel(listens_ ? level : 0);
        },
        Qt::QueuedConnection);
}

void CameraManager::setListens(bool listens) {
    if (std::exchange(listens_, listens) == listens) {
        return;
    }
    silenceLook_.reset();
    if (!listens) {
        setLevel(0);
        return;
    }
    silenceLook_ = timers_.repeat(kSilence, [this] {
        if (!std::exchange(heard_, false)) {
            setLevel(0);
        }
    });
}

void CameraManager::startFrames(bool mirrored, std::function<void(FrameRef)> onFrame) {
    queue_->async([this, mirrored, onFrame = std::move(onFrame)]() mutable {
        frameQueue_->sync([&] { tap_->open(mirrored, std::move(onFrame)); });
    });
}

void CameraManager::stopFrames() {
    queue_->async([this] { frameQueue_->sync([this] { tap_->close(); }); });
}

void CameraManager::publishVideo(std::uint64_t turn, bool hasVideo) {
    QMetaObject::invokeMethod(
        this,
        [this, turn, hasVideo] {
            if (turn == turn_) {
                setHasVideo(hasVideo);
            }
        },
        Qt::QueuedConnection);
}

void CameraManager::setHasVideo(bool hasVideo) {
    if (std::exchange(hasVideo_, hasVideo) != hasVideo) {
        emit hasVideoChanged();
    }
}

void CameraManager::setLevel(double level) {
    if (std::exchange(level_, level) != level) {
        emit levelChanged();
    }
}

} // namespace velmo
