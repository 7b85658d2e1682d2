#pragma once

#include "base/Result.h"
#include "platform/ffmpeg/internal/Handles.h"
#include "platform/ffmpeg/internal/OutputFile.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace velmo::internal {

/// A plain MP4: media data goes to disk as it comes, the index is written at the end. One thread at a time.
class Mp4File {
public:
    static Result<std::unique_ptr<Mp4File>> create(const std::filesystem::path& path, std::int64_t minimumFree);
    ~Mp4File();

    /// Before `begin`. The track's number; negative when memory is out.
    int addTrack(const AVCodecParameters& parameters, AVRational timeBase);
    Result<void> begin();
    /// Takes the packet's data with times in `timeBase`. The error says why no more can be taken; what was written
    /// before can still be finished.
    Result<void> write(AVPacket& packet, int track, AVRational timeBase);
    /// Writes the index and closes.
    Result<void> finish(OutputFile::Durability durability);
    /// Closes and takes the file away.
    void remove();

private:
    Mp4File() = default;

    struct FreedFormat {
        void operator()(AVFormatContext* format) const { avformat_free_context(format); }
    };

    std::unique_ptr<OutputFile> file_;
    std::unique_ptr<AVFormatContext, FreedFormat> format_;
    std::int64_t packets_ = 0;
    bool begun_ = false;
};

} // namespace velmo::internal
