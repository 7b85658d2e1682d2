#include "integration/pulse/Beeper.h"

#include "base/Clock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <sys/time.h>

namespace velmo {

namespace {

constexpr int kRate = 48000;
constexpr int kBeepFrames = kRate / 20;

void wake(void* loop) {
    pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop*>(loop), 0);
}

template <typename State>
void waitFor(pa_threaded_mainloop* loop, State state, int wanted, int failed) {
    while (state() != wanted) {
        if (state() == failed) {
            throw std::runtime_error("cannot play");
        }
        pa_threaded_mainloop_wait(loop);
    }
}

} // namespace

Beeper::Beeper(const std::string& sink) : loop_(pa_threaded_mainloop_new()) {
    pa_threaded_mainloop_start(loop_);
    pa_threaded_mainloop_lock(loop_);
    context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), "beeper");
    pa_context_set_state_callback(
        context_, [](pa_context*, void* loop) { wake(loop); }, loop_);
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    waitFor(
        loop_, [this] { return pa_context_get_state(context_); }, PA_CONTEXT_READY, PA_CONTEXT_FAILED);
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, kRate, 2};
    stream_ = pa_stream_new(context_, "beeps", &format, nullptr);
    pa_stream_set_state_callback(
        stream_, [](pa_stream*, void* loop) { wake(loop); }, loop_);
    pa_stream_set_write_callback(
        stream_, [](pa_stream*, std::size_t wanted, void* self) { static_cast<Beeper*>(self)->write(wanted); }, this);
    pa_stream_set_underflow_callback(
        stream_, [](pa_stream*, void* self) { ++static_cast<Beeper*>(self)->underflows_; }, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = static_cast<std::uint32_t>(-1);
    buffer.tlength = kRate / 2 * 8; // a busy machine must not make it run dry
    pa_stream_connect_playback(stream_, sink.c_str(), &buffer,
                               static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE), nullptr,
                               nullptr);
    waitFor(
        loop_, [this] { return pa_stream_get_state(stream_); }, PA_STREAM_READY, PA_STREAM_FAILED);
    holdLatencyDown(sink);
    pa_threaded_mainloop_unlock(loop_);
}

void Beeper::holdLatencyDown(const std::string& sink) {
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, kRate, 2};
    monitor_ = pa_stream_new(context_, "latency", &format, nullptr);
    pa_stream_set_state_callback(
        monitor_, [](pa_stream*, void* loop) { wake(loop); }, loop_);
    pa_stream_set_read_callback(
        monitor_,
        [](pa_stream* stream, std::size_t, void*) {
            const void* data = nullptr;
            std::size_t bytes = 0;
            if (pa_stream_peek(stream, &data, &bytes) == 0 && bytes > 0) {
                pa_stream_drop(stream);
            }
        },
        nullptr);
    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.tlength = buffer.prebuf = buffer.minreq = static_cast<std::uint32_t>(-1);
    buffer.fragsize = kRate / 200 * 8;
    pa_stream_connect_record(monitor_, (sink + ".monitor").c_str(), &buffer, PA_STREAM_ADJUST_LATENCY);
    waitFor(
        loop_, [this] { return pa_stream_get_state(monitor_); }, PA_STREAM_READY, PA_STREAM_FAILED);
}

Beeper::~Beeper() {
    pa_threaded_mainloop_stop(loop_);
    pa_stream_set_write_callback(stream_, nullptr, nullptr);
    for (pa_stream* stream : {stream_, monitor_}) {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    pa_threaded_mainloop_free(loop_);
}

void Beeper::write(std::size_t wanted) {
    // One block of the server's memory is less than what it asks for at the start.
    while (wanted > 0) {
        const std::size_t written = writeBlock(wanted);
        if (written == 0) {
            return;
        }
        wanted -= std::min(written, wanted);
    }
}

std::size_t Beeper::writeBlock(std::size_t bytes) {
    void* data = nullptr;
    if (pa_stream_begin_write(stream_, &data, &bytes) < 0 || data == nullptr) {
        return 0;
    }
    if (wanted_) {
        wanted_ = false;
        known_ = true;
        beepFramesLeft_ = kBeepFrames;
        heardAt_ = firstFrameHeardAt_ + static_cast<double>(framesWritten_) / kRate;
        pa_threaded_mainloop_signal(loop_, 0);
    }
    float* frames = static_cast<float*>(data);
    const std::size_t count = bytes / 8;
    for (std::size_t i = 0; i < count; ++i) {
        // A cosine: the first frame is already loud.
        const bool beeping = beepFramesLeft_ > 0;
        const float value = beeping ? 0.8F * std::cos(static_cast<float>(kBeepFrames - beepFramesLeft_) * 0.13F) : 0.0F;
        beepFramesLeft_ -= beeping ? 1 : 0;
        frames[2 * i] = frames[2 * i + 1] = value;
    }
    pa_stream_write(stream_, data, bytes, nullptr, 0, PA_SEEK_RELATIVE);
    framesWritten_ += static_cast<std::int64_t>(count);
    return bytes;
}

// The server's plain account of one moment: its interpolation over time wanders by milliseconds.
double Beeper::askWhenFirstFrameWasHeard() {
    pa_operation* asked = pa_stream_update_timing_info(
        stream_, [](pa_stream*, int, void* loop) { wake(loop); }, loop_);
    while (pa_operation_get_state(asked) == PA_OPERATION_RUNNING) {
        pa_threaded_mainloop_wait(loop_);
    }
    pa_operation_unref(asked);
    const pa_timing_info* info = pa_stream_get_timing_info(stream_);
    timeval wall{};
    gettimeofday(&wall, nullptr);
    const auto age = static_cast<double>(wall.tv_sec - info->timestamp.tv_sec) +
                     static_cast<double>(wall.tv_usec - info->timestamp.tv_usec) / 1e6;
    return HostClock::shared().now().seconds() - age + static_cast<double>(info->sink_usec) / 1e6 -
           static_cast<double>(info->read_index) / 8 / kRate;
}

double Beeper::beep() {
    pa_threaded_mainloop_lock(loop_);
    // One account may be late where the machine is busy.
    std::array<double, 5> accounts{};
    std::generate(accounts.begin(), accounts.end(), [this] { return askWhenFirstFrameWasHeard(); });
    std::sort(accounts.begin(), accounts.end());
    firstFrameHeardAt_ = accounts[accounts.size() / 2];
    wanted_ = true;
    known_ = false;
    while (!known_) {
        pa_threaded_mainloop_wait(loop_);
    }
    const double at = heardAt_;
    pa_threaded_mainloop_unlock(loop_);
    return at;
}

} // namespace velmo
