#include "platform/ffmpeg/internal/PassthroughFile.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <algorithm>
#include <cstring>

namespace velmo::internal {

Result<std::unique_ptr<PassthroughWriter>>
PassthroughFile::create(const std::filesystem::path& path, const VideoTrackFormat& video, const AudioSettings& audio) {
    std::unique_ptr<PassthroughFile> self(new PassthroughFile);
    PassthroughFile& output = *self;
    output.packet_.reset(av_packet_alloc());
    if (output.packet_ == nullptr || !canEncode(audio)) {
        return mediaError(MediaError::encoder);
    }
    output.audioFormat_ = {static_cast<double>(audio.sampleRate), audio.channels, AudioFormat::Sample::int16, true};
    auto encoder = AacEncoder::open(audio, [&output](const PacketPtr& packet) {
        output.put(*packet, output.audioTrack_, output.encoder_->timeBase());
    });
    if (!encoder) {
        return encoder.error();
    }
    output.encoder_ = std::move(encoder).value();
    auto file = Mp4File::create(path);
    if (!file) {
        return file.error();
    }
    output.file_ = std::move(file).value();
    output.videoTimeBase_ = video.stream().time_base;
    output.videoTrack_ = output.file_->addTrack(*video.stream().codecpar, output.videoTimeBase_);
    const CodecParameters parameters(avcodec_parameters_alloc());
    avcodec_parameters_from_context(parameters.get(), &output.encoder_->context());
    output.audioTrack_ = output.file_->addTrack(*parameters, output.encoder_->timeBase());
    if (Result<void> begun = output.file_->begin(); !begun) {
        return begun.error();
    }
    return std::unique_ptr<PassthroughWriter>(std::move(self));
}

PassthroughFile::~PassthroughFile() {
    if (!finished_ && file_ != nullptr) {
        file_->remove();
    }
}

bool PassthroughFile::appendVideo(const EncodedSample& sample) {
    const auto ticks = [this](MediaTime time) {
        return time.isValid() ? time.convertedTo(videoTimeBase_.den) / videoTimeBase_.num : AV_NOPTS_VALUE;
    };
    if (!state_ || av_new_packet(packet_.get(), static_cast<int>(sample.bytes.size())) < 0) {
        return false;
    }
    std::memcpy(packet_->data, sample.bytes.data(), sample.bytes.size());
    packet_->pts = ticks(sample.presentation);
    packet_->dts = ticks(sample.decode);
    packet_->duration = std::max<std::int64_t>(ticks(sample.duration), 0);
    packet_->flags = sample.isKeyFrame ? AV_PKT_FLAG_KEY : 0;
    put(*packet_, videoTrack_, videoTimeBase_);
    av_packet_unref(packet_.get());
    return state_.ok();
}

bool PassthroughFile::appendAudio(const AudioRef& sound) {
    if (!state_ || !sound || sound->format() != audioFormat_) {
        return false;
    }
    const auto* samples = reinterpret_cast<const std::int16_t*>(sound->bytes().data());
    const std::size_t count =
        static_cast<std::size_t>(sound->frames()) * static_cast<std::size_t>(audioFormat_.channels);
    floats_.resize(count);
    std::transform(samples, samples + count, floats_.begin(),
                   [](std::int16_t sample) { return static_cast<float>(sample) / 32768.0F; });
    if (!encoder_->encode(floats_) && state_) {
        state_ = mediaError(MediaError::encoder);
    }
    return state_.ok();
}

Result<void> PassthroughFile::finish() {
    if (state_ && !encoder_->finish() && state_) {
        state_ = mediaError(MediaError::encoder);
    }
    if (!state_) {
        return state_;
    }
    finished_ = true;
    Result<void> written = file_->finish();
    if (!written) {
        file_->remove();
    }
    return written;
}

void PassthroughFile::put(AVPacket& packet, int track, AVRational timeBase) {
    if (state_) {
        state_ = file_->write(packet, track, timeBase);
    }
}

} // namespace velmo::internal
