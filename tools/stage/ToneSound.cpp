#include "ToneSound.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <pulse/pulseaudio.h>
#include <vector>

namespace {

constexpr int kRate = 48000;
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

pa_buffer_attr serversChoice() {
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.tlength = attributes.prebuf = attributes.minreq = attributes.fragsize =
        UINT32_MAX;
    return attributes;
}

} // namespace

struct ToneSound::Core {
    pa_threaded_mainloop* loop = nullptr;
    pa_context* context = nullptr;
    pa_stream* stream = nullptr;
    pa_stream* monitor = nullptr;
    std::int64_t written = 0;
    std::vector<float> buffer;

    void start() {
        const pa_sample_spec format{PA_SAMPLE_FLOAT32LE, kRate, 1};
        stream = pa_stream_new(context, "tone", &format, nullptr);
        pa_stream_set_write_callback(
            stream, [](pa_stream*, std::size_t bytes, void* self) { static_cast<Core*>(self)->write(bytes); }, this);
        pa_buffer_attr played = serversChoice();
        played.tlength = kBufferBytes;
        const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE |
                                                          PA_STREAM_INTERPOLATE_TIMING);
        pa_stream_connect_playback(stream, "micfeed", &played, flags, nullptr, nullptr);

        monitor = pa_stream_new(context, "latency", &format, nullptr);
        pa_stream_set_read_callback(
            monitor, [](pa_stream* heard, std::size_t, void*) { dropAll(heard); }, nullptr);
        pa_buffer_attr heard = serversChoice();
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

    void write(std::size_t bytes) {
        buffer.resize(bytes / sizeof(float));
        announceMark();
        for (float& sample : buffer) {
            const double phase = static_cast<double>(written * kToneHz % kRate) / kRate;
            const float loudness = written % kRate < kMark ? 2 * kLoudness : kLoudness;
            sample = loudness * static_cast<float>(std::sin(2 * M_PI * phase));
            ++written;
        }
        pa_stream_write(stream, buffer.data(), buffer.size() * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
    }

    /// If one begins among the frames that are written next.
    void announceMark() const {
        const std::int64_t away = (kRate - written % kRate) % kRate;
        pa_usec_t latency = 0;
        int isNegative = 0;
        if (away < static_cast<std::int64_t>(buffer.size()) &&
            pa_stream_get_latency(stream, &latency, &isNegative) == 0) {
            const double seconds = static_cast<double>(latency) / 1e6 * (isNegative != 0 ? -1 : 1);
            std::printf("mark %.6f\n", hostSeconds() + seconds + static_cast<double>(away) / kRate);
            std::fflush(stdout);
        }
    }
};

ToneSound::ToneSound() : core_(std::make_unique<Core>()) {
    core_->loop = pa_threaded_mainloop_new();
    core_->context = pa_context_new(pa_threaded_mainloop_get_api(core_->loop), "velmo-stage");
    pa_context_set_state_callback(
        core_->context,
        [](pa_context* context, void* self) {
            if (pa_context_get_state(context) == PA_CONTEXT_READY) {
                static_cast<Core*>(self)->start();
            }
        },
        core_.get());
    pa_context_connect(core_->context, nullptr, PA_CONTEXT_NOFLAGS, nullptr);
    pa_threaded_mainloop_start(core_->loop);
}

ToneSound::~ToneSound() {
    pa_threaded_mainloop_stop(core_->loop);
    for (pa_stream* stream : {core_->stream, core_->monitor}) {
        if (stream != nullptr) {
            pa_stream_unref(stream);
        }
    }
    pa_context_disconnect(core_->context);
    pa_context_unref(core_->context);
    pa_threaded_mainloop_free(core_->loop);
}
