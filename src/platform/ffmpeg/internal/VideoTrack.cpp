#include "platform/ffmpeg/internal/VideoTrack.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

namespace velmo::internal {

namespace {

// A still lecture has few frames: without this its key frames would lie minutes apart.
constexpr std::int64_t kKeyFrameTicks = 2 * kVideoTimeBase.den;

const char* nameOf(EncoderPreset preset) {
    constexpr const char* kNames[] = {"veryfast", "superfast", "ultrafast"};
    return kNames[static_cast<std::size_t>(preset)];
}

bool haveSameHeaders(const AVCodecContext& a, const AVCodecContext& b) {
    return a.extradata_size == b.extradata_size && std::equal(a.extradata, a.extradata + a.extradata_size, b.extradata);
}

} // namespace

VideoTrack::VideoTrack(const VideoSettings& settings, FfmpegWriterOptions options, PacketSink& sink)
    : settings_(settings), options_(std::move(options)), sink_(sink), preset_(options_.preset),
      load_(1.0 / settings.expectedSourceFrameRate, kQueueLimit), queue_("velmo.writer.video") {}

Result<void> VideoTrack::open() {
    auto encoder = H264Encoder::open(settings_, preset_, options_.threads);
    if (!encoder) {
        return encoder.error();
    }
    encoder_ = std::move(encoder).value();
    return {};
}

bool VideoTrack::isReadyForMoreMediaData() const {
    return !finished_ && sessionStart_.isValid() && waiting_.load(std::memory_order_relaxed) < kQueueLimit &&
           sink_.isOpen() && sink_.hasRoom();
}

bool VideoTrack::append(const Sample& sample) {
    const FrameRef& picture = sample.image;
    if (!isReadyForMoreMediaData() || !picture || picture->format() != PixelFormat::nv12 ||
        picture->width() != settings_.width || picture->height() != settings_.height) {
        return false;
    }
    const MediaTime presentation = sample.presentation() - sessionStart_;
    const std::int64_t time = presentation.convertedTo(kVideoTimeBase.den);
    if (!presentation.isValid() || time <= lastTime_) {
        return false;
    }
    lastTime_ = time;
    std::int64_t duration = sample.timing.duration.convertedTo(kVideoTimeBase.den);
    if (duration <= 0) {
        duration = kVideoTimeBase.den / settings_.expectedSourceFrameRate;
    }
    waiting_.fetch_add(1, std::memory_order_relaxed);
    queue_.async([this, picture = sample.image, time, duration] { encode(picture, time, duration); });
    sink_.reached(presentation);
    return true;
}

void VideoTrack::markAsFinished() {
    if (!finished_) {
        finished_ = true;
        queue_.async([this] { drain(); });
    }
}

void VideoTrack::encode(const FrameRef& picture, std::int64_t time, std::int64_t duration) {
    if (failed_ || !sink_.isOpen()) {
        waiting_.fetch_sub(1, std::memory_order_relaxed);
        return;
    }
    // Two key frames in a row with the same number would be taken for one picture, so the change waits for one between.
    if (stepDownIsDue_ && !lastWasKey_) {
        stepDown();
    }
    const auto begin = std::chrono::steady_clock::now();
    const bool keyIsDue = time - lastKeyTime_ >= kKeyFrameTicks;
    PacketPtr packet =
        encoder_->encode(picture, time, duration, keyIsDue ? H264Encoder::Frame::key : H264Encoder::Frame::free);
    waiting_.fetch_sub(1, std::memory_order_relaxed);
    if (packet == nullptr) {
        failed_ = true;
        sink_.trackFailed(mediaError(MediaError::encoder));
        return;
    }
    lastWasKey_ = (packet->flags & AV_PKT_FLAG_KEY) != 0;
    lastKeyTime_ = lastWasKey_ ? packet->pts : lastKeyTime_;
    sink_.put(std::move(packet), number_);
    watchLoad(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
}

void VideoTrack::watchLoad(double encodingTime) {
    if (preset_ != EncoderPreset::ultrafast &&
        load_.isTooHigh(encodingTime, waiting_.load(std::memory_order_relaxed))) {
        stepDownIsDue_ = true;
        if (options_.log) {
            options_.log("grabación: el codificador no da abasto (" +
                         std::to_string(std::lround(load_.averageTime() * 1000)) + " ms por cuadro), baja de " +
                         nameOf(preset_) + " a " + nameOf(static_cast<EncoderPreset>(static_cast<int>(preset_) + 1)));
        }
    }
}

void VideoTrack::stepDown() {
    stepDownIsDue_ = false;
    const auto easier = static_cast<EncoderPreset>(static_cast<int>(preset_) + 1);
    auto encoder = H264Encoder::open(settings_, easier, options_.threads);
    if (!encoder || !haveSameHeaders(encoder.value()->context(), encoder_->context())) {
        if (options_.log) {
            options_.log(std::string("grabación: el codificador no admite ") + nameOf(easier));
        }
        return;
    }
    encoder_ = std::move(encoder).value();
    preset_ = easier;
}

void VideoTrack::drain() {
    while (!failed_ && sink_.isOpen()) {
        PacketPtr packet = encoder_->drain();
        if (packet == nullptr) {
            break;
        }
        sink_.put(std::move(packet), number_);
    }
    sink_.trackEnded();
}

} // namespace velmo::internal
