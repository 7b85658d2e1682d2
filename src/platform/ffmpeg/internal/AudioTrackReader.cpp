#include "platform/ffmpeg/internal/AudioTrackReader.h"

#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cstdlib>

namespace velmo::internal {

namespace {

// Coarse time stamps of foreign files are not gaps.
constexpr std::int64_t kToleratedFrames = AudioTrackReader::kSampleRate / 200;

} // namespace

Result<std::unique_ptr<AudioTrackReader>> AudioTrackReader::open(const std::filesystem::path& path, std::size_t index) {
    auto demuxer = Demuxer::open(path);
    if (!demuxer) {
        return demuxer.error();
    }
    const auto streams = demuxer.value()->streams(AVMEDIA_TYPE_AUDIO);
    if (index >= streams.size()) {
        return mediaError(MediaError::readFailed);
    }
    std::unique_ptr<AudioTrackReader> reader(new AudioTrackReader);
    reader->demuxer_ = std::move(demuxer).value();
    reader->stream_ = streams[index];
    reader->demuxer_->choose(*reader->stream_);
    reader->decoder_ = openDecoder(*reader->stream_, 1);
    reader->packet_.reset(av_packet_alloc());
    reader->frame_.reset(av_frame_alloc());
    if (reader->decoder_ == nullptr || reader->packet_ == nullptr || reader->frame_ == nullptr) {
        return mediaError(MediaError::readFailed);
    }
    return reader;
}

ReadStep AudioTrackReader::addNext(std::span<float> interleaved, std::size_t& frames) {
    frames = 0;
    while (!interleaved.empty()) {
        const std::size_t given = giveOut(interleaved);
        frames += given;
        interleaved = interleaved.subspan(given * kChannels);
        if (given > 0) {
            continue;
        }
        if (const ReadStep step = decodeMore(); step != ReadStep::sample) {
            return step;
        }
    }
    return ReadStep::sample;
}

std::size_t AudioTrackReader::giveOut(std::span<float> interleaved) {
    const std::size_t wanted = interleaved.size() / kChannels;
    if (silence_ > 0) {
        const auto frames = std::min(wanted, static_cast<std::size_t>(silence_));
        silence_ -= static_cast<std::int64_t>(frames);
        return frames;
    }
    const std::size_t floats = std::min(wanted * kChannels, ready_.size() - used_);
    for (std::size_t i = 0; i < floats; ++i) {
        interleaved[i] += ready_[used_ + i];
    }
    used_ += floats;
    return floats / kChannels;
}

// Only when all was given out. `sample` when there may be more to give out, or more to decode.
ReadStep AudioTrackReader::decodeMore() {
    if (ended_) {
        return ReadStep::end;
    }
    ready_.clear();
    used_ = 0;
    const int received = avcodec_receive_frame(decoder_.get(), frame_.get());
    if (received == 0) {
        place(*frame_);
        return convert(frame_.get()) ? ReadStep::sample : ReadStep::failed;
    }
    if (received == AVERROR_EOF) {
        ended_ = true;
        return convert(nullptr) ? ReadStep::sample : ReadStep::failed;
    }
    if (received != AVERROR(EAGAIN)) {
        return ReadStep::failed;
    }
    const int read = draining_ ? AVERROR_EOF : demuxer_->read(*packet_);
    if (read < 0 && read != AVERROR_EOF) {
        return ReadStep::failed;
    }
    draining_ = read == AVERROR_EOF;
    const int sent = avcodec_send_packet(decoder_.get(), draining_ ? nullptr : packet_.get());
    // A broken packet is left out and heard as a gap.
    return sent < 0 && sent != AVERROR_INVALIDDATA ? ReadStep::failed : ReadStep::sample;
}

// Where the frame's time stamp lies against what was decoded before it.
void AudioTrackReader::place(const AVFrame& frame) {
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE) {
        return;
    }
    const std::int64_t start = av_rescale_q(frame.best_effort_timestamp, stream_->time_base, {1, kSampleRate});
    const std::int64_t held = resampler_ != nullptr ? swr_get_delay(resampler_.get(), kSampleRate) : 0;
    const std::int64_t distance = start - (end_ + held);
    if (distance > kToleratedFrames) {
        silence_ += distance;
        end_ += distance;
    } else if (distance < -kToleratedFrames || start < 0) {
        skip_ = -distance;
    }
}

bool AudioTrackReader::convert(AVFrame* frame) {
    if (frame != nullptr && !prepareResampler(*frame)) {
        return false;
    }
    if (resampler_ == nullptr) {
        return true; // ended before anything was decoded
    }
    const int input = frame == nullptr ? 0 : frame->nb_samples;
    const int room = swr_get_out_samples(resampler_.get(), input);
    if (room < 0) {
        return false;
    }
    ready_.resize(static_cast<std::size_t>(room) * kChannels);
    auto* out = reinterpret_cast<std::uint8_t*>(ready_.data());
    const auto** in = frame == nullptr ? nullptr : const_cast<const std::uint8_t**>(frame->extended_data);
    const int frames = swr_convert(resampler_.get(), &out, room, in, input);
    if (frames < 0) {
        return false;
    }
    const std::int64_t skipped = std::clamp<std::int64_t>(skip_, 0, frames);
    skip_ -= skipped;
    ready_.resize(static_cast<std::size_t>(frames) * kChannels);
    used_ = static_cast<std::size_t>(skipped) * kChannels;
    end_ += frames - skipped;
    return true;
}

bool AudioTrackReader::prepareResampler(AVFrame& frame) {
    if (resampler_ != nullptr) {
        return true;
    }
    AVChannelLayout stereo;
    av_channel_layout_default(&stereo, kChannels);
    SwrContext* resampler = nullptr;
    const int failed = swr_alloc_set_opts2(&resampler, &stereo, AV_SAMPLE_FMT_FLT, kSampleRate, &frame.ch_layout,
                                           static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    resampler_.reset(resampler);
    return failed >= 0 && swr_init(resampler_.get()) >= 0;
}

} // namespace velmo::internal
