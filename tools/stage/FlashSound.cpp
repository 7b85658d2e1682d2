#include "FlashSound.h"

#include <cmath>
#include <cstdint>
#include <pulse/pulseaudio.h>
#include <vector>

namespace {

constexpr int kRate = 48000;
constexpr int kPeriod = 2 * kRate;
constexpr int kBeep = kRate / 10;

// The first second is silent, so that the stream has settled.
bool soundsAt(std::int64_t frame) {
    return frame >= kRate && (frame - kRate) % kPeriod < kBeep;
}

} // namespace

struct FlashSound::Core {
    pa_threaded_mainloop* loop = nullptr;
    pa_context* context = nullptr;
    pa_stream* stream = nullptr;
    std::int64_t written = 0;
    std::vector<float> buffer;

    void start() {
        const pa_sample_spec format{PA_SAMPLE_FLOAT32LE, kRate, 1};
        stream = pa_stream_new(context, "beeps", &format, nullptr);
        pa_stream_set_write_callback(
            stream, [](pa_stream*, std::size_t bytes, void* self) { static_cast<Core*>(self)->write(bytes); }, this);
        pa_buffer_attr attributes{};
        attributes.maxlength = attributes.prebuf = attributes.minreq = attributes.fragsize = UINT32_MAX;
        attributes.tlength = kRate / 20 * sizeof(float);
        const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE |
                                                          PA_STREAM_INTERPOLATE_TIMING);
        pa_stream_connect_playback(stream, "micfeed", &attributes, flags, nullptr, nullptr);
    }

    void write(std::size_t bytes) {
        buffer.resize(bytes / sizeof(float));
        for (float& sample : buffer) {
            const double phase = static_cast<double>(written % kRate) / kRate;
            sample = soundsAt(written) ? static_cast<float>(0.5 * std::sin(2 * M_PI * 1000 * phase)) : 0.0F;
            ++written;
        }
        pa_stream_write(stream, buffer.data(), buffer.size() * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
    }
};

FlashSound::FlashSound() : core_(std::make_unique<Core>()) {
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

FlashSound::~FlashSound() {
    pa_threaded_mainloop_stop(core_->loop);
    if (core_->stream != nullptr) {
        pa_stream_unref(core_->stream);
    }
    pa_context_disconnect(core_->context);
    pa_context_unref(core_->context);
    pa_threaded_mainloop_free(core_->loop);
}

bool FlashSound::beepIsSounding() const {
    pa_threaded_mainloop_lock(core_->loop);
    pa_usec_t position = 0;
    const bool known = core_->stream != nullptr && pa_stream_get_state(core_->stream) == PA_STREAM_READY &&
                       pa_stream_get_time(core_->stream, &position) == 0;
    pa_threaded_mainloop_unlock(core_->loop);
    return known && soundsAt(static_cast<std::int64_t>(position) * kRate / 1'000'000);
}
