#include "platform/ffmpeg/internal/CameraReader.h"

#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavdevice/avdevice.h>
}

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <pthread.h>
#include <utility>

namespace velmo::internal {

namespace {

constexpr double kBetweenLooks = 0.004; // s; a driver that has no picture is asked again
constexpr double kOldestStamp = 1;      // s; beyond that the driver's clock is another one
constexpr double kNewestStamp = 0.005;

Error cameraError(int code, const char* text) {
    return {CameraService::kErrorDomain, code, text};
}

Error openError(int returned) {
    switch (AVUNERROR(returned)) {
    case EBUSY:
        return cameraError(CameraService::kErrorBusy, "Otro programa está usando la cámara.");
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return cameraError(CameraService::kErrorNoDevice, "La cámara no está conectada.");
    default:
        return cameraError(CameraService::kErrorNoPicture, "La cámara no da imagen.");
    }
}

void registerDevicesOnce() {
    static const bool done = (silenceLibraries(), avdevice_register_all(), true);
    static_cast<void>(done);
}

} // namespace

CameraReader::CameraReader(const CameraInput& input, const Clock& clock, std::shared_ptr<CameraMailbox> mailbox)
    : kind_(input.kind), latency_(input.latency), clock_(clock), mailbox_(std::move(mailbox)),
      converter_(kind_ == CameraInput::Kind::device ? VideoRangeConverter::Untagged::camera
                                                    : VideoRangeConverter::Untagged::file) {}

Result<std::unique_ptr<CameraReader>> CameraReader::open(const CameraInput& input, const Clock& clock,
                                                         std::shared_ptr<CameraMailbox> mailbox) {
    registerDevicesOnce();
    std::unique_ptr<CameraReader> reader(new CameraReader(input, clock, std::move(mailbox)));
    if (const auto opened = reader->openInput(input); !opened.ok()) {
        return opened.error();
    }
    reader->thread_ = std::thread([self = reader.get()] { self->run(); });
    return reader;
}

CameraReader::~CameraReader() {
    {
        const std::lock_guard guard(lock_);
        stop_ = true;
    }
    stopping_.notify_one();
    if (thread_.joinable()) {
        thread_.join();
    }
    mailbox_->shut();
}

Result<void> CameraReader::openInput(const CameraInput& input) {
    const AVInputFormat* format = input.format.empty() ? nullptr : av_find_input_format(input.format.c_str());
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr || (format == nullptr && !input.format.empty())) {
        avformat_free_context(context);
        return openError(AVERROR(EINVAL));
    }
    context->interrupt_callback = {&CameraReader::shouldStop, this};
    if (input.kind == CameraInput::Kind::device) {
        context->flags |= AVFMT_FLAG_NONBLOCK; // a silent device must not hold the thread for ever
    }
    AVDictionary* options = nullptr;
    for (const auto& [name, value] : input.options) {
        av_dict_set(&options, name.c_str(), value.c_str(), 0);
    }
    // The call frees `context` when it fails.
    const int opened = avformat_open_input(&context, input.url.c_str(), format, &options);
    av_dict_free(&options);
    if (opened < 0) {
        return openError(opened);
    }
    input_.reset(context);
    const int best = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (best < 0) {
        return openError(best);
    }
    stream_ = context->streams[best];
    decoder_ = CameraDecoder::create(*stream_);
    return decoder_ != nullptr ? Result<void>() : openError(AVERROR(EINVAL));
}

void CameraReader::run() {
    pthread_setname_np(pthread_self(), "camera.read");
    const PacketPtr packet(av_packet_alloc());
    const auto take = [this](const AVFrame& frame) { deliver(frame); };
    while (!stop_) {
        const int result = av_read_frame(input_.get(), packet.get());
        if (result == AVERROR(EAGAIN)) {
            pause(kBetweenLooks);
            continue;
        }
        if (result < 0) {
            decoder_->decode(nullptr, take);
            mailbox_->end(cameraError(CameraService::kErrorEnded, "La cámara se desconectó."));
            return;
        }
        if (packet->stream_index == stream_->index) {
            decoder_->decode(packet.get(), take);
        }
        av_packet_unref(packet.get());
    }
}

void CameraReader::deliver(const AVFrame& frame) {
    Sample sample;
    sample.image = converter_.convert(frame);
    const std::int64_t stamp = frame.best_effort_timestamp;
    const MediaTime time = kind_ == CameraInput::Kind::device ? deviceTime(stamp) : playingTime(stamp);
    if (!sample.image || !time.isValid()) {
        return;
    }
    sample.timing.presentation = time - MediaTime::fromSeconds(latency_);
    mailbox_->deliver(std::move(sample));
}

/// Drivers stamp on the host clock, all but a few.
MediaTime CameraReader::deviceTime(std::int64_t stamp) const {
    const MediaTime now = clock_.now();
    if (stamp == AV_NOPTS_VALUE) {
        return now;
    }
    const double seconds = static_cast<double>(stamp) * av_q2d(stream_->time_base);
    const double age = now.seconds() - seconds;
    return age > kOldestStamp || age < -kNewestStamp ? now : MediaTime::fromSeconds(seconds);
}

MediaTime CameraReader::playingTime(std::int64_t stamp) {
    const double now = clock_.now().seconds();
    if (stamp == AV_NOPTS_VALUE) {
        return MediaTime::fromSeconds(now);
    }
    const double position = static_cast<double>(stamp) * av_q2d(stream_->time_base);
    if (!playingFrom_) {
        playingFrom_ = now - position;
    }
    const double due = *playingFrom_ + position;
    return due <= now || pause(due - now) ? MediaTime::fromSeconds(due) : MediaTime::invalid();
}

bool CameraReader::pause(double seconds) {
    std::unique_lock guard(lock_);
    stopping_.wait_for(guard, std::chrono::duration<double>(seconds), [this] { return stop_.load(); });
    return !stop_;
}

int CameraReader::shouldStop(void* self) {
    return static_cast<const CameraReader*>(self)->stop_ ? 1 : 0;
}

} // namespace velmo::internal
