#include "platform/pulse/internal/PulseInput.h"

#include <pulse/sample.h>

#include <cstring>
#include <sys/time.h>
#include <utility>

namespace velmo {

namespace {

constexpr int kRate = 48000;
constexpr int kChannels = 2;
constexpr std::size_t kFrameBytes = kChannels * sizeof(float);
constexpr std::size_t kFragmentBytes = kRate / 50 * kFrameBytes;
constexpr std::size_t kMostKept = 50;
constexpr int kReadsBetweenTimings = 5;

constexpr pa_stream_flags_t kFlags = static_cast<pa_stream_flags_t>(
    // Not moved by the server: another microphone instead of the chosen one would be a surprise, and a changed
    // default output is followed here.
    PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);

/// Wall-clock time as libpulse stamps it, on the host clock.
MediaTime onHostClock(const timeval& stamp, const Clock& clock) {
    timeval wall{};
    gettimeofday(&wall, nullptr);
    const std::int64_t age = (wall.tv_sec - stamp.tv_sec) * 1'000'000LL + (wall.tv_usec - stamp.tv_usec);
    return clock.now() - MediaTime(age, 1'000'000);
}

PulseInput& input(void* self) {
    return *static_cast<PulseInput*>(self);
}

} // namespace

PulseInput::PulseInput(std::shared_ptr<PulseSession> session, const Clock& clock, std::optional<std::string> microphone,
                       SerialQueue& queue, AudioInputService::Handler handler)
    : session_(std::move(session)), clock_(clock), microphone_(std::move(microphone)),
      gate_(std::make_shared<DeliveryGate>(queue, std::move(handler))), captureClock_(kRate) {
    kept_.reserve(kMostKept);
    const PulseSession::Lock lock(*session_);
    session_->addClient(*this);
    sessionChanged();
}

PulseInput::~PulseInput() {
    {
        const PulseSession::Lock lock(*session_);
        session_->removeClient(*this);
        close();
    }
    gate_->shut();
}

std::optional<std::string> PulseInput::wantedSource() const {
    const SoundDevices& devices = session_->currentDevices();
    if (session_->context() == nullptr) {
        return std::nullopt;
    }
    if (!microphone_) {
        return devices.systemMonitor();
    }
    return devices.has(*microphone_) ? microphone_ : std::nullopt;
}

void PulseInput::sessionChanged() {
    const std::optional<std::string> wanted = wantedSource();
    if (stream_ != nullptr && wanted == openedOn_) {
        return;
    }
    close();
    if (wanted) {
        open(*wanted);
    }
}

void PulseInput::open(const std::string& source) {
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, kRate, kChannels};
    pa_channel_map map;
    pa_channel_map_init_stereo(&map);
    stream_ = pa_stream_new(session_->context(), microphone_ ? "Micrófono" : "Sonido de la computadora", &format, &map);
    if (stream_ == nullptr) {
        session_->callClientsLater();
        return;
    }
    openedOn_ = source;
    readsSinceTiming_ = 0;
    captureClock_.restart();
    pa_stream_set_state_callback(
        stream_, [](pa_stream*, void* self) { input(self).stateChanged(); }, this);
    pa_stream_set_read_callback(
        stream_, [](pa_stream*, std::size_t, void* self) { input(self).read(); }, this);
    pa_buffer_attr buffer;
    std::memset(&buffer, 0xff, sizeof buffer); // all -1: the server's choice
    buffer.fragsize = kFragmentBytes;
    if (pa_stream_connect_record(stream_, source.c_str(), &buffer, kFlags) < 0) {
        close();
        session_->callClientsLater();
    }
}

void PulseInput::close() {
    kept_.clear();
    if (stream_ == nullptr) {
        return;
    }
    if (timingAsked_ != nullptr) {
        pa_operation_cancel(timingAsked_);
        pa_operation_unref(std::exchange(timingAsked_, nullptr));
    }
    pa_stream* old = std::exchange(stream_, nullptr);
    pa_stream_set_state_callback(old, nullptr, nullptr);
    pa_stream_set_read_callback(old, nullptr, nullptr);
    pa_stream_disconnect(old);
    pa_stream_unref(old);
}

void PulseInput::stateChanged() {
    const pa_stream_state_t state = pa_stream_get_state(stream_);
    if (state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED) {
        close();
        // The list of devices says when the source is back; should it never have left, this does.
        session_->callClientsLater();
    }
}

// The server's own account of one moment is taken as it is: libpulse's interpolation between such moments needs
// seconds to find the rate, and until then runs off by up to 10 ms a second.
void PulseInput::askForTiming() {
    const int interval = captureClock_.settled() ? kReadsBetweenTimings : 1;
    if (timingAsked_ != nullptr || ++readsSinceTiming_ < interval) {
        return;
    }
    readsSinceTiming_ = 0;
    timingAsked_ = pa_stream_update_timing_info(
        stream_, [](pa_stream*, int, void* self) { input(self).timingArrived(); }, this);
}

void PulseInput::timingArrived() {
    pa_operation_unref(std::exchange(timingAsked_, nullptr));
    const pa_timing_info* info = pa_stream_get_timing_info(stream_);
    if (info == nullptr || info->write_index_corrupt || info->read_index_corrupt) {
        return;
    }
    // At the stamp the source heard the frame that comes `sourceAge` after those written; a monitor hears what its
    // sink plays later.
    const auto waiting = (info->write_index - info->read_index) / static_cast<std::int64_t>(kFrameBytes);
    const auto sourceAge = static_cast<std::int64_t>(info->source_usec) - static_cast<std::int64_t>(info->sink_usec);
    captureClock_.observe(onHostClock(info->timestamp, clock_) - MediaTime(waiting, kRate) -
                          MediaTime(sourceAge, 1'000'000));
}

void PulseInput::read() {
    while (stream_ != nullptr && pa_stream_readable_size(stream_) > 0) {
        const void* data = nullptr;
        std::size_t bytes = 0;
        if (pa_stream_peek(stream_, &data, &bytes) < 0 || bytes == 0) {
            return;
        }
        take(data, bytes);
        pa_stream_drop(stream_);
        captureClock_.add(static_cast<int>(bytes / kFrameBytes));
        if (captureClock_.settled()) {
            deliverKept();
        } else if (kept_.size() >= kMostKept) {
            kept_.clear();
            captureClock_.restart();
        }
    }
    askForTiming();
}

void PulseInput::take(const void* data, std::size_t bytes) {
    AudioRef sound = AudioBuffer::create({}, static_cast<int>(bytes / kFrameBytes));
    if (data != nullptr) {
        std::memcpy(sound->bytes().data(), data, sound->bytes().size());
    } else { // a hole: the server lost this much
        std::memset(sound->bytes().data(), 0, sound->bytes().size());
    }
    kept_.push_back(std::move(sound));
}

void PulseInput::deliverKept() {
    for (AudioRef& sound : kept_) {
        const std::optional<MediaTime> time = captureClock_.next(sound->frames());
        if (time) {
            Sample sample;
            sample.timing = {MediaTime(sound->frames(), kRate), *time, MediaTime::invalid()};
            sample.audio = std::move(sound);
            gate_->deliver(std::move(sample));
        }
    }
    kept_.clear();
}

} // namespace velmo
