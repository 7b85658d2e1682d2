#include "platform/ffmpeg/internal/Demuxer.h"

#include "platform/ffmpeg/internal/Errors.h"

namespace velmo::internal {

Result<std::unique_ptr<Demuxer>> Demuxer::open(const std::filesystem::path& path, Clock::time_point deadline) {
    std::unique_ptr<Demuxer> demuxer(new Demuxer);
    demuxer->deadline_ = deadline;
    std::error_code failure;
    // Only plain files: a pipe or a device with a video's name could hold the reader up for ever.
    if (!std::filesystem::is_regular_file(path, failure)) {
        return failure ? systemError(failure.value()) : mediaError(MediaError::notMedia);
    }
    AVFormatContext* format = avformat_alloc_context();
    if (format == nullptr) {
        return systemError(ENOMEM);
    }
    format->interrupt_callback = {&Demuxer::shouldStop, demuxer.get()};
    // "file:" keeps a name with a colon from being taken for another protocol. The family is given, since what only
    // bears a video's name may be a list of other files and addresses. The call frees `format` when it fails.
    const AVInputFormat* const family = av_find_input_format("mp4");
    if (const int failed = avformat_open_input(&format, ("file:" + path.string()).c_str(), family, nullptr);
        failed < 0) {
        return libraryError(failed, MediaError::notMedia);
    }
    demuxer->format_.reset(format);
    if (const int failed = avformat_find_stream_info(format, nullptr); failed < 0) {
        return libraryError(failed, MediaError::notMedia);
    }
    return demuxer;
}

std::vector<AVStream*> Demuxer::streams(AVMediaType kind) const {
    std::vector<AVStream*> found;
    for (unsigned i = 0; i < format_->nb_streams; ++i) {
        AVStream* stream = format_->streams[i];
        if (stream->codecpar->codec_type == kind && (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
            found.push_back(stream);
        }
    }
    return found;
}

void Demuxer::choose(const AVStream& stream) {
    chosen_ = stream.index;
    for (unsigned i = 0; i < format_->nb_streams; ++i) {
        format_->streams[i]->discard = static_cast<int>(i) == chosen_ ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

int Demuxer::read(AVPacket& packet) {
    while (true) {
        av_packet_unref(&packet);
        if (const int result = av_read_frame(format_.get(), &packet); result < 0) {
            return result;
        }
        if (packet.stream_index == chosen_) {
            return 0;
        }
    }
}

int Demuxer::shouldStop(void* self) {
    return static_cast<const Demuxer*>(self)->isLate() ? 1 : 0;
}

CodecContext openDecoder(const AVStream& stream, int threads) {
    const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (context == nullptr || avcodec_parameters_to_context(context.get(), stream.codecpar) < 0) {
        return nullptr;
    }
    context->pkt_timebase = stream.time_base;
    context->thread_count = threads;
    return avcodec_open2(context.get(), codec, nullptr) < 0 ? nullptr : std::move(context);
}

} // namespace velmo::internal
