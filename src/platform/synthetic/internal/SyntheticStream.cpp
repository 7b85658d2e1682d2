#include "platform/synthetic/internal/SyntheticStream.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <pthread.h>
#include <utility>

namespace velmo::internal {

namespace {

constexpr std::int64_t kRate = 30;

MediaTime timeOf(std::int64_t tick) {
    return {tick, kRate};
}

} // namespace

SyntheticStream::SyntheticStream(const Clock& clock, std::shared_ptr<CameraMailbox> mailbox, ScenePictures pictures)
    : clock_(clock), mailbox_(std::move(mailbox)), pictures_(std::move(pictures)), thread_([this] { run(); }) {}

SyntheticStream::~SyntheticStream() {
    {
        const std::lock_guard guard(lock_);
        stop_ = true;
    }
    stopping_.notify_one();
    thread_.join();
    mailbox_->shut();
}

void SyntheticStream::run() {
    pthread_setname_np(pthread_self(), "camera.synth");
    const auto tickNow = [this] { return static_cast<std::int64_t>(std::floor(clock_.now().seconds() * kRate)); };
    std::int64_t tick = tickNow() + 1;
    for (std::int64_t number = 0;; ++number) {
        const MediaTime time = timeOf(tick);
        Sample sample;
        sample.timing.presentation = time;
        sample.image = pictures_.make(number, time.seconds());
        if (!waitUntil(time.seconds())) {
            return;
        }
        if (sample.image) {
            mailbox_->deliver(std::move(sample));
        }
        tick = std::max(tick, tickNow()) + 1; // one that came late is not made up for
    }
}

bool SyntheticStream::waitUntil(double seconds) {
    std::unique_lock guard(lock_);
    const std::chrono::duration<double> left(seconds - clock_.now().seconds());
    stopping_.wait_for(guard, left, [this] { return stop_; });
    return !stop_;
}

} // namespace velmo::internal
