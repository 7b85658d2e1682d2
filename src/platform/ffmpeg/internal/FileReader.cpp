#include "platform/ffmpeg/internal/FileReader.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmo::internal {

namespace {

constexpr std::size_t kMixedFrames = 1024;

MediaTime timeOf(std::int64_t ticks, AVRational timeBase) {
    if (ticks == AV_NOPTS_VALUE) {
        return MediaTime::invalid();
    }
    return {ticks * timeBase.num, timeBase.den};
}

std::int16_t saturated(float value) {
    constexpr float kScale = 32768.0F;
    return static_cast<std::int16_t>(std::lrintf(std::clamp(value * kScale, -kScale, kScale - 1)));
}

} // namespace

Result<std::unique_ptr<AssetReader>> FileReader::open(const std::filesystem::path& path) {
    auto demuxer = Demuxer::open(path);
    if (!demuxer) {
        return demuxer.error();
    }
    std::unique_ptr<FileReader> reader(new FileReader(path));
    reader->demuxer_ = std::move(demuxer).value();
    reader->packet_.reset(av_packet_alloc());
    if (reader->packet_ == nullptr) {
        return systemError(ENOMEM);
    }
    const auto video = reader->demuxer_->streams(AVMEDIA_TYPE_VIDEO);
    reader->videoTracks_ = static_cast<int>(video.size());
    reader->audioTracks_ = static_cast<int>(reader->demuxer_->streams(AVMEDIA_TYPE_AUDIO).size());
    if (!video.empty()) {
        reader->demuxer_->choose(*video.front());
        reader->format_.emplace(*video.front());
    }
    return std::unique_ptr<AssetReader>(std::move(reader));
}

ReadStep FileReader::nextVideoSample(EncodedSample& sample) {
    if (!format_) {
        return ReadStep::end;
    }
    if (const int read = demuxer_->read(*packet_); read < 0) {
        return read == AVERROR_EOF ? ReadStep::end : ReadStep::failed;
    }
    const AVRational timeBase = format_->stream().time_base;
    sample.presentation = timeOf(packet_->pts, timeBase);
    sample.decode = timeOf(packet_->dts, timeBase);
    sample.duration = timeOf(packet_->duration, timeBase);
    sample.isKeyFrame = (packet_->flags & AV_PKT_FLAG_KEY) != 0;
    sample.bytes = {reinterpret_cast<const std::byte*>(packet_->data), static_cast<std::size_t>(packet_->size)};
    return ReadStep::sample;
}

ReadStep FileReader::nextMixedAudio(AudioRef& sound) {
    if (!openAudio()) {
        return ReadStep::failed;
    }
    std::vector<float> sum(kMixedFrames * AudioTrackReader::kChannels);
    std::size_t longest = 0;
    for (const auto& track : audio_) {
        std::size_t frames = 0;
        if (track->addNext(sum, frames) == ReadStep::failed) {
            return ReadStep::failed;
        }
        longest = std::max(longest, frames);
    }
    if (longest == 0) {
        return ReadStep::end;
    }
    const AudioFormat format{AudioTrackReader::kSampleRate, AudioTrackReader::kChannels, AudioFormat::Sample::int16,
                             true};
    sound = AudioBuffer::create(format, static_cast<int>(longest));
    auto* out = reinterpret_cast<std::int16_t*>(sound->bytes().data());
    std::transform(sum.begin(), sum.begin() + static_cast<std::ptrdiff_t>(longest * AudioTrackReader::kChannels), out,
                   &saturated);
    return ReadStep::sample;
}

bool FileReader::openAudio() {
    while (audio_.size() < static_cast<std::size_t>(audioTracks_)) {
        auto track = AudioTrackReader::open(path_, audio_.size());
        if (!track) {
            return false;
        }
        audio_.push_back(std::move(track).value());
    }
    return true;
}

} // namespace velmo::internal
