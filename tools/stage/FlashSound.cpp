#include "FlashSound.h"

#include "MicFeed.h"

#include <cmath>
#include <cstdint>
#include <mutex>
#include <span>

namespace {

constexpr int kRate = MicFeed::kRate;
constexpr int kPeriod = 2 * kRate;
constexpr int kBeep = kRate / 10;

// The first second is silent, so that the stream has settled.
bool soundsAt(std::int64_t frame) {
    return frame >= kRate && (frame - kRate) % kPeriod < kBeep;
}

} // namespace

struct FlashSound::Core {
    MicFeed feed{[this] {
        feed.play("beeps", kRate / 20 * sizeof(float), [this](std::span<float> samples) { fill(samples); });
    }};
    std::int64_t written = 0;

    void fill(std::span<float> samples) {
        for (float& sample : samples) {
            const double phase = static_cast<double>(written % kRate) / kRate;
            sample = soundsAt(written) ? static_cast<float>(0.5 * std::sin(2 * M_PI * 1000 * phase)) : 0.0F;
            ++written;
        }
    }
};

FlashSound::FlashSound() : core_(std::make_unique<Core>()) {
    core_->feed.start();
}

FlashSound::~FlashSound() = default;

bool FlashSound::beepIsSounding() const {
    const std::lock_guard guard(core_->feed);
    pa_stream* const stream = core_->feed.played();
    pa_usec_t position = 0;
    const bool known = stream != nullptr && pa_stream_get_state(stream) == PA_STREAM_READY &&
                       pa_stream_get_time(stream, &position) == 0;
    return known && soundsAt(static_cast<std::int64_t>(position) * kRate / 1'000'000);
}
