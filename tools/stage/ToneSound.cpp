#include "ToneSound.h"

#include "MicFeed.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <span>

namespace {

constexpr int kRate = MicFeed::kRate;
constexpr int kToneHz = 1000;
constexpr int kMark = kRate / 10;
constexpr float kLoudness = 0.1F;
constexpr std::uint32_t kAheadBytes = kRate / 500 * sizeof(float);
constexpr std::uint32_t kBufferBytes = kRate / 2 * sizeof(float);

double hostSeconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

struct ToneSound::Core {
    MicFeed feed{[this] {
        feed.play("tone", kBufferBytes, [this](std::span<float> samples) { fill(samples); });
        listen();
    }};
    std::int64_t written = 0;

    void listen() {
        pa_stream* const monitor = feed.newStream("latency");
        pa_stream_set_read_callback(
            monitor, [](pa_stream* heard, std::size_t, void*) { dropAll(heard); }, nullptr);
        pa_buffer_attr heard = MicFeed::serversChoice();
        heard.fragsize = kAheadBytes;
        pa_stream_connect_record(monitor, "micfeed.monitor", &heard, PA_STREAM_ADJUST_LATENCY);
    }

    static void dropAll(pa_stream* heard) {
        const void* data = nullptr;
        std::size_t bytes = 0;
        while (pa_stream_readable_size(heard) > 0 && pa_stream_peek(heard, &data, &bytes) == 0 && bytes > 0) {
            pa_stream_drop(heard);
        }
    }

    void fill(std::span<float> samples) {
        announceMark(samples.size());
        for (float& sample : samples) {
            const double phase = static_cast<double>(written * kToneHz % kRate) / kRate;
            const float loudness = written % kRate < kMark ? 2 * kLoudness : kLoudness;
            sample = loudness * static_cast<float>(std::sin(2 * M_PI * phase));
            ++written;
        }
    }

    /// If one begins among the `count` frames that are written next.
    void announceMark(std::size_t count) const {
        const std::int64_t away = (kRate - written % kRate) % kRate;
        pa_usec_t latency = 0;
        int isNegative = 0;
        if (away < static_cast<std::int64_t>(count) &&
            pa_stream_get_latency(feed.played(), &latency, &isNegative) == 0) {
            const double seconds = static_cast<double>(latency) / 1e6 * (isNegative != 0 ? -1 : 1);
            std::printf("mark %.6f\n", hostSeconds() + seconds + static_cast<double>(away) / kRate);
            std::fflush(stdout);
        }
    }
};

ToneSound::ToneSound() : core_(std::make_unique<Core>()) {
    core_->feed.start();
}

ToneSound::~ToneSound() = default;
