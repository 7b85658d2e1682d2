#include "surfaces/internal/CameraSession.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

namespace velmo::internal {

namespace {

/// Seconds before the first, second ... attempt after failures in a row. A camera that stays away costs little.
constexpr std::array kPauses{CameraSession::kRestartAfter, 1.0, 2.0, 5.0};

} // namespace

CameraSession::CameraSession(Parts parts) : parts_(std::move(parts)) {
    devicesWatch_ = parts_.cameras.watchDevices([this] { parts_.queue.async([this] { devicesChanged(); }); });
}

void CameraSession::setDevice(const std::optional<std::string>& uniqueID) {
    assert(parts_.queue.isCurrent());
    if (uniqueID == device_) {
        return;
    }
    leave();
    parts_.feed.publish(nullptr);
    device_ = uniqueID;
    if (device_) {
        open();
    }
}

void CameraSession::close() {
    devicesWatch_.reset();
    leave();
    device_.reset();
}

void CameraSession::leave() {
    cancelTimer();
    stream_.reset();
    failures_ = 0;
    hasVideo_ = false;
}

void CameraSession::open() {
    cancelTimer();
    stream_.reset(); // a device can be opened once
    lastSign_ = now();
    pictured_ = false;
    const std::uint64_t number = ++streams_;
    auto opened = parts_.cameras.open(
        *device_, parts_.frameQueue,
        {[this](const Sample& sample) { take(sample); },
         [this, number](const Error&) { parts_.queue.async([this, number] { streamEnded(number); }); }});
    if (!opened.ok()) {
        tryAgainLater();
        return;
    }
    stream_ = std::move(opened).value();
    startTimer(kWatchEvery, [this] { watch(); });
    if (!std::exchange(hasVideo_, true)) {
        parts_.onVideo();
    }
}

void CameraSession::tryAgainLater() {
    stream_.reset();
    const auto pause = static_cast<std::size_t>(std::min<int>(failures_++, kPauses.size() - 1));
    startTimer(kPauses[pause], [this] { open(); });
}

void CameraSession::startTimer(double seconds, std::function<void()> tick) {
    cancelTimer();
    timer_ = parts_.queue.startTimer(seconds, std::move(tick));
}

void CameraSession::cancelTimer() {
    parts_.queue.cancelTimer(std::exchange(timer_, 0));
}

void CameraSession::watch() {
    const bool pictured = pictured_;
    if (now() - lastSign_ < (pictured ? kStalledAfter : kFirstPictureBy)) {
        failures_ = pictured ? 0 : failures_;
        return;
    }
    if (failures_ == 0) {
        ++failures_;
        open();
    } else {
        tryAgainLater();
    }
}

void CameraSession::streamEnded(std::uint64_t stream) {
    if (stream != streams_ || stream_ == nullptr) {
        return;
    }
    failures_ = pictured_ ? 0 : failures_;
    tryAgainLater();
}

void CameraSession::devicesChanged() {
    if (device_ && stream_ == nullptr) {
        failures_ = 0;
        startTimer(kRestartAfter, [this] { open(); });
    }
}

void CameraSession::take(const Sample& sample) {
    lastSign_ = now();
    pictured_ = true;
    parts_.feed.publish(sample.image);
    if (parts_.onPicture) {
        parts_.onPicture(sample.image);
    }
}

} // namespace velmo::internal
