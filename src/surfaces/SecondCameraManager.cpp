#include "surfaces/SecondCameraManager.h"

#include "session/MainThreadResult.h"
#include "surfaces/internal/CameraSession.h"

#include <cassert>
#include <utility>

namespace velmo {

namespace {

SecondCameraManager* registered = nullptr;

} // namespace

SecondCameraManager& SecondCameraManager::shared() {
    assert(registered != nullptr);
    return *registered;
}

void SecondCameraManager::setShared(SecondCameraManager* manager) {
    registered = manager;
}

SecondCameraManager::SecondCameraManager(Services services) : queue_(services.makeQueue("velmo.camera2")) {
    session_ = std::make_unique<internal::CameraSession>(
        internal::CameraSession::Parts{services.cameras, services.clock, *queue_, *queue_, feed_, {}, [] {}});
}

SecondCameraManager::~SecondCameraManager() {
    queue_->sync([this] { session_->close(); });
    queue_.reset();
}

QCoro::Task<void> SecondCameraManager::configure(std::optional<std::string> camera) {
    MainThreadResult<Done> done(Done{});
    queue_->async([this, camera = std::move(camera), tell = done.callback()] {
        session_->setDevice(camera);
        tell(Done{});
    });
    co_await done;
}

void SecondCameraManager::stop() {
    queue_->async([this] { session_->setDevice(std::nullopt); });
}

} // namespace velmo
