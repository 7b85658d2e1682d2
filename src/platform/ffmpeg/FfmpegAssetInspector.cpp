#include "platform/ffmpeg/FfmpegAssetInspector.h"

#include "platform/ffmpeg/internal/Demuxer.h"
#include "platform/ffmpeg/internal/Errors.h"
#include "platform/ffmpeg/internal/UprightPicture.h"

#include <chrono>
#include <cmath>

namespace velmo {

using namespace internal;

namespace {

constexpr std::chrono::seconds kPatience{10};
constexpr int kDecoderThreads = 2;

struct OpenedVideo {
    std::unique_ptr<Demuxer> demuxer;
    AVStream* stream = nullptr;
};

Result<OpenedVideo> openVideo(const std::filesystem::path& file) {
    auto demuxer = Demuxer::open(file, Demuxer::Clock::now() + kPatience);
    if (!demuxer) {
        return demuxer.error();
    }
    const auto streams = demuxer.value()->streams(AVMEDIA_TYPE_VIDEO);
    if (streams.empty()) {
        return mediaError(MediaError::notMedia);
    }
    return OpenedVideo{std::move(demuxer).value(), streams.front()};
}

// The picture that is shown at `time`: the last one that does not begin after it. Null at the end of the track.
FramePtr decodeUpTo(const OpenedVideo& video, AVCodecContext& decoder, std::int64_t time) {
    PacketPtr packet(av_packet_alloc());
    FramePtr shown(av_frame_alloc());
    FramePtr next(av_frame_alloc());
    if (packet == nullptr || shown == nullptr || next == nullptr) {
        return nullptr;
    }
    bool draining = false;
    while (!video.demuxer->isLate()) {
        const int received = avcodec_receive_frame(&decoder, next.get());
        if (received == 0) {
            if (shown->width > 0 && next->best_effort_timestamp > time) {
                break;
            }
            std::swap(shown, next);
        } else if (received == AVERROR_EOF || (received < 0 && draining)) {
            break;
        } else {
            draining = video.demuxer->read(*packet) < 0;
            avcodec_send_packet(&decoder, draining ? nullptr : packet.get());
        }
    }
    return shown->width > 0 ? std::move(shown) : nullptr;
}

} // namespace

FfmpegAssetInspector::FfmpegAssetInspector() {
    silenceLibraries();
}

Result<double> FfmpegAssetInspector::duration(const std::filesystem::path& file) const {
    const auto video = openVideo(file);
    if (!video) {
        return video.error();
    }
    const std::int64_t duration = video.value().demuxer->format().duration;
    if (duration == AV_NOPTS_VALUE || duration <= 0) {
        return mediaError(MediaError::notMedia);
    }
    return static_cast<double>(duration) / AV_TIME_BASE;
}

Result<FrameRef> FfmpegAssetInspector::image(const std::filesystem::path& file, double seconds, int maximumSide) const {
    auto opened = openVideo(file);
    if (!opened) {
        return opened.error();
    }
    const OpenedVideo& video = opened.value();
    const AVStream& stream = *video.stream;
    const double length = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
    if (!std::isfinite(seconds) || seconds < 0 || (stream.duration != AV_NOPTS_VALUE && seconds >= length)) {
        return mediaError(MediaError::noPicture);
    }
    const CodecContext decoder = openDecoder(stream, kDecoderThreads);
    if (decoder == nullptr) {
        return mediaError(MediaError::notMedia);
    }
    video.demuxer->choose(stream);
    const std::int64_t start = stream.start_time == AV_NOPTS_VALUE ? 0 : stream.start_time;
    const std::int64_t time = start + std::llround(seconds / av_q2d(stream.time_base));
    if (time > start && av_seek_frame(&video.demuxer->format(), stream.index, time, AVSEEK_FLAG_BACKWARD) < 0) {
        return mediaError(MediaError::noPicture);
    }
    const FramePtr frame = decodeUpTo(video, *decoder, time);
    FrameRef picture = frame == nullptr ? nullptr : uprightPicture(*frame, stream, maximumSide);
    return picture ? Result<FrameRef>(std::move(picture)) : Result<FrameRef>(mediaError(MediaError::noPicture));
}

} // namespace velmo
