#pragma once

#include "media/AssetReader.h"
#include "platform/ffmpeg/internal/Handles.h"

namespace velmo::internal {

/// What this room's readers and writers mean by a track's format.
class VideoTrackFormat final : public TrackFormat {
public:
    /// Both belong to the reader's demuxer.
    VideoTrackFormat(const AVStream& stream) : stream_(stream) {}
    const AVStream& stream() const { return stream_; }

private:
    const AVStream& stream_;
};

} // namespace velmo::internal
