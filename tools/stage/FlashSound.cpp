#include "FlashSound.h"

#include "MicFeed.h"

#include <cmath>
#include <cstdint>
#include <ctime>
#include <mutex>
#include <span>

namespace {

constexpr int kRate = MicFeed::kRate;

constexpr double kPeriodSeconds = 2;
constexpr double kBeepSeconds = 0.1;

double hostNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

} // namespace

struct FlashSound::Core {
    explicit Core(Times when) : times(when) {}

    const Times times;
    MicFeed feed{[this] {
        feed.play("beeps", kRate / 20 * sizeof(float), [this](std::span<float> samples) { fill(samples); });
    }};
    std::int64_t written = 0;
    double origin = 0; // the time of the first frame, in the time that the beeps go by

    void fill(std::span<float> samples) {
        if (written < kRate) { // the stream settles
            findOrigin();
        }
        for (float& sample : samples) {
            const double phase = static_cast<double>(written % kRate) / kRate;
            sample = soundsAt(written) ? static_cast<float>(0.5 * std::sin(2 * M_PI * 1000 * phase)) : 0.0F;
            ++written;
        }
    }

    void findOrigin() {
        pa_usec_t position = 0;
        if (times == Times::own) {
            origin = kPeriodSeconds - 1;
        } else if (pa_stream_get_time(feed.played(), &position) == 0) {
            origin = hostNow() - static_cast<double>(position) / 1e6;
        }
    }

    /// The first second is silent.
    bool soundsAt(std::int64_t frame) const {
        return frame >= kRate && std::fmod(origin + static_cast<double>(frame) / kRate, kPeriodSeconds) < kBeepSeconds;
    }
};

FlashSound::FlashSound(Times times) : core_(std::make_unique<Core>(times)) {
    core_->feed.start();
}

FlashSound::~FlashSound() = default;

bool FlashSound::beepIsSounding() const {
    const std::lock_guard guard(core_->feed);
    pa_stream* const stream = core_->feed.played();
    pa_usec_t position = 0;
    const bool known = stream != nullptr && pa_stream_get_state(stream) == PA_STREAM_READY &&
                       pa_stream_get_time(stream, &position) == 0;
    return known && core_->soundsAt(static_cast<std::int64_t>(position) * kRate / 1'000'000);
}
