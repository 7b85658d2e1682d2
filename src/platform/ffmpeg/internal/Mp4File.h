#pragma once

#include "base/Result.h"
#include "platform/ffmpeg/internal/Handles.h"
#include "platform/ffmpeg/internal/OutputFile.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace velmo::internal {

/// A plain MP4 of any streams, put together by libavformat, which keeps its index in memory until the end. For files
/// that are made from others; what is recorded goes into a `JournaledFile`. One thread at a time.
class Mp4File {
public:
    static Result<std::unique_ptr<Mp4File>> create(const std::filesystem::path& path);
    ~Mp4File();

    /// Before `begin`. The track's number; negative when memory is out.
    int addTrack(const AVCodecParameters& parameters, AVRational timeBase);
    Result<void> begin();
    /// Takes the packet's data with times in `timeBase`.
    Result<void> write(AVPacket& packet, int track, AVRational timeBase);
    /// Writes the index, waits until all is on the disk, and closes.
    Result<void> finish();
    /// Closes and takes the file away.
    void remove();

private:
    Mp4File() = default;
    static int onWrite(void* self, std::uint8_t* bytes, int count);
    static std::int64_t onSeek(void* self, std::int64_t offset, int whence);
    Result<void> resultOf(int returned) const;

    struct FreedFormat {
        void operator()(AVFormatContext* format) const { avformat_free_context(format); }
    };
    struct FreedOutput {
        void operator()(AVIOContext* output) const {
            av_freep(&output->buffer);
            avio_context_free(&output);
        }
    };

    std::unique_ptr<OutputFile> file_;
    std::unique_ptr<AVIOContext, FreedOutput> output_;
    std::unique_ptr<AVFormatContext, FreedFormat> format_;
    std::int64_t offset_ = 0;
    std::optional<Error> failure_; // the first one of the disk
    bool begun_ = false;
};

} // namespace velmo::internal
