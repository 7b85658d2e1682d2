#pragma once

#include "base/Result.h"
#include "platform/ffmpeg/internal/Handles.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <vector>

namespace velmo::internal {

/// An opened media file that is read one track at a time. One thread at a time; blocks on disk.
class Demuxer {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr Clock::time_point kNoDeadline = Clock::time_point::max();

    /// An error for what is no media file, and when the deadline passes while it is looked at.
    static Result<std::unique_ptr<Demuxer>> open(const std::filesystem::path& path,
                                                 Clock::time_point deadline = kNoDeadline);

    AVFormatContext& format() const { return *format_; }
    /// Tracks of a kind in the file's order; cover pictures do not count as video.
    std::vector<AVStream*> streams(AVMediaType kind) const;
    /// Reads nothing but this track from now on.
    void choose(const AVStream& stream);
    /// The next packet of the chosen track, or the library's negative number (AVERROR_EOF at the end).
    int read(AVPacket& packet);
    bool isLate() const { return Clock::now() > deadline_; }

private:
    Demuxer() = default;
    static int shouldStop(void* self);

    InputContext format_;
    Clock::time_point deadline_ = kNoDeadline;
    int chosen_ = -1;
};

/// A decoder for a track, opened; null when there is none or it refuses.
CodecContext openDecoder(const AVStream& stream, int threads);

} // namespace velmo::internal
