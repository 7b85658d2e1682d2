#include "MicFeed.h"

#include <utility>

MicFeed::MicFeed(std::function<void()> ready)
    : ready_(std::move(ready)), loop_(pa_threaded_mainloop_new()),
      context_(pa_context_new(pa_threaded_mainloop_get_api(loop_), "velmo-stage")) {
    pa_context_set_state_callback(
        context_,
        [](pa_context* context, void* self) {
            if (pa_context_get_state(context) == PA_CONTEXT_READY) {
                static_cast<MicFeed*>(self)->ready_();
            }
        },
        this);
}

MicFeed::~MicFeed() {
    pa_threaded_mainloop_stop(loop_);
    for (pa_stream* stream : streams_) {
        pa_stream_unref(stream);
    }
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    pa_threaded_mainloop_free(loop_);
}

void MicFeed::start() {
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr);
    pa_threaded_mainloop_start(loop_);
}

pa_stream* MicFeed::newStream(const char* name) {
    const pa_sample_spec format{PA_SAMPLE_FLOAT32LE, kRate, 1};
    return streams_.emplace_back(pa_stream_new(context_, name, &format, nullptr));
}

void MicFeed::play(const char* name, std::uint32_t bufferBytes, std::function<void(std::span<float>)> fill) {
    fill_ = std::move(fill);
    played_ = newStream(name);
    pa_stream_set_write_callback(
        played_, [](pa_stream*, std::size_t bytes, void* self) { static_cast<MicFeed*>(self)->write(bytes); }, this);
    pa_buffer_attr attributes = serversChoice();
    attributes.tlength = bufferBytes;
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE |
                                                      PA_STREAM_INTERPOLATE_TIMING);
    pa_stream_connect_playback(played_, "micfeed", &attributes, flags, nullptr, nullptr);
}

void MicFeed::write(std::size_t bytes) {
    buffer_.resize(bytes / sizeof(float));
    fill_(buffer_);
    pa_stream_write(played_, buffer_.data(), buffer_.size() * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
}

pa_buffer_attr MicFeed::serversChoice() {
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.tlength = attributes.prebuf = attributes.minreq = attributes.fragsize =
        UINT32_MAX;
    return attributes;
}
