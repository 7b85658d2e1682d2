#include "platform/ffmpeg/internal/Mp4File.h"

#include "platform/ffmpeg/internal/Errors.h"

namespace velmo::internal {

namespace {

// What the index takes: its boxes, and for each packet entries of size, time, place and chunk.
constexpr std::int64_t kIndexBytes = 64 << 10;
constexpr std::int64_t kIndexBytesPerPacket = 48;

} // namespace

Result<std::unique_ptr<Mp4File>> Mp4File::create(const std::filesystem::path& path, std::int64_t minimumFree) {
    auto file = OutputFile::create(path, minimumFree);
    if (!file) {
        return file.error();
    }
    std::unique_ptr<Mp4File> mp4(new Mp4File);
    mp4->file_ = std::move(file).value();
    AVFormatContext* format = nullptr;
    if (const int failed = avformat_alloc_output_context2(&format, nullptr, "mp4", nullptr); failed < 0) {
        return libraryError(failed, MediaError::encoder);
    }
    mp4->format_.reset(format);
    format->pb = mp4->file_->context();
    format->flags |= AVFMT_FLAG_CUSTOM_IO;
    return mp4;
}

Mp4File::~Mp4File() = default;

int Mp4File::addTrack(const AVCodecParameters& parameters, AVRational timeBase) {
    AVStream* stream = avformat_new_stream(format_.get(), nullptr);
    if (stream == nullptr || avcodec_parameters_copy(stream->codecpar, &parameters) < 0) {
        return -1;
    }
    stream->codecpar->codec_tag = 0;
    stream->time_base = timeBase;
    stream->sample_aspect_ratio = parameters.sample_aspect_ratio;
    return stream->index;
}

Result<void> Mp4File::begin() {
    if (const int failed = avformat_write_header(format_.get(), nullptr); failed < 0) {
        return libraryError(failed, MediaError::encoder);
    }
    begun_ = true;
    file_->flush();
    return file_->failure() ? Result<void>(*file_->failure()) : Result<void>();
}

Result<void> Mp4File::write(AVPacket& packet, int track, AVRational timeBase) {
    const std::int64_t index = kIndexBytes + kIndexBytesPerPacket * (packets_ + 1);
    if (Result<void> room = file_->claim(packet.size, index); !room) {
        return room;
    }
    packet.stream_index = track;
    av_packet_rescale_ts(&packet, timeBase, format_->streams[track]->time_base);
    if (const int failed = av_write_frame(format_.get(), &packet); failed < 0) {
        return libraryError(failed, MediaError::encoder);
    }
    ++packets_;
    file_->flush();
    return file_->failure() ? Result<void>(*file_->failure()) : Result<void>();
}

Result<void> Mp4File::finish(OutputFile::Durability durability) {
    if (begun_) {
        begun_ = false;
        if (const int failed = av_write_trailer(format_.get()); failed < 0) {
            return libraryError(failed, MediaError::encoder);
        }
    }
    return file_->close(durability);
}

void Mp4File::remove() {
    file_->remove();
}

} // namespace velmo::internal
