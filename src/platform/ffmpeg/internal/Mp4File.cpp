#include "platform/ffmpeg/internal/Mp4File.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <cerrno>
#include <cstdio>

namespace velmo::internal {

namespace {

constexpr int kBufferBytes = 256 * 1024;

} // namespace

Result<std::unique_ptr<Mp4File>> Mp4File::create(const std::filesystem::path& path) {
    auto file = OutputFile::create(path, 0);
    if (!file) {
        return file.error();
    }
    std::unique_ptr<Mp4File> mp4(new Mp4File);
    mp4->file_ = std::move(file).value();
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
    mp4->output_.reset(avio_alloc_context(buffer, kBufferBytes, 1, mp4.get(), nullptr, &onWrite, &onSeek));
    if (mp4->output_ == nullptr) {
        av_free(buffer);
        mp4->remove();
        return systemError(ENOMEM);
    }
    AVFormatContext* format = nullptr;
    if (const int failed = avformat_alloc_output_context2(&format, nullptr, "mp4", nullptr); failed < 0) {
        mp4->remove();
        return libraryError(failed, MediaError::encoder);
    }
    mp4->format_.reset(format);
    format->pb = mp4->output_.get();
    format->flags |= AVFMT_FLAG_CUSTOM_IO;
    return mp4;
}

Mp4File::~Mp4File() = default;

int Mp4File::onWrite(void* self, std::uint8_t* bytes, int count) {
    auto& mp4 = *static_cast<Mp4File*>(self);
    const std::span data(reinterpret_cast<const std::byte*>(bytes), static_cast<std::size_t>(count));
    if (const Result<void> written = mp4.file_->write(mp4.offset_, data); !written) {
        mp4.failure_ = mp4.failure_.value_or(written.error());
        return AVERROR(EIO);
    }
    mp4.offset_ += count;
    return count;
}

std::int64_t Mp4File::onSeek(void* self, std::int64_t offset, int whence) {
    auto& mp4 = *static_cast<Mp4File*>(self);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return mp4.file_->end();
    case SEEK_SET:
        return mp4.offset_ = offset;
    case SEEK_CUR:
        return mp4.offset_ += offset;
    case SEEK_END:
        return mp4.offset_ = mp4.file_->end() + offset;
    default:
        return AVERROR(EINVAL);
    }
}

/// The disk's own words where it was the disk.
Result<void> Mp4File::resultOf(int returned) const {
    if (failure_) {
        return *failure_;
    }
    return returned < 0 ? Result<void>(libraryError(returned, MediaError::encoder)) : Result<void>();
}

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
    const int returned = avformat_write_header(format_.get(), nullptr);
    begun_ = returned >= 0;
    return resultOf(returned);
}

Result<void> Mp4File::write(AVPacket& packet, int track, AVRational timeBase) {
    packet.stream_index = track;
    av_packet_rescale_ts(&packet, timeBase, format_->streams[track]->time_base);
    return resultOf(av_write_frame(format_.get(), &packet));
}

Result<void> Mp4File::finish() {
    if (std::exchange(begun_, false)) {
        const int returned = av_write_trailer(format_.get());
        avio_flush(output_.get());
        if (Result<void> written = resultOf(returned); !written) {
            return written;
        }
    }
    return file_->close();
}

void Mp4File::remove() {
    file_->remove();
}

} // namespace velmo::internal
