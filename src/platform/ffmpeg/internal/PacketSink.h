#pragma once

#include "base/MediaTime.h"
#include "base/Result.h"
#include "platform/ffmpeg/internal/Handles.h"

namespace velmo::internal {

/// What a track needs of the file that it is part of. Any thread.
class PacketSink {
public:
    virtual ~PacketSink() = default;

    /// False once nothing more goes into the file; what still waits may be thrown away.
    virtual bool isOpen() const = 0;
    /// False while the disk is so far behind that no track should go on.
    virtual bool hasRoom() const = 0;
    /// Returns at once. Packets of one track in order, times in the track's time base.
    virtual void put(PacketPtr packet, int track) = 0;
    /// The track's last packet was put. Once a track.
    virtual void trackEnded() = 0;
    virtual void trackFailed(const Error& error) = 0;
    /// A sample of this time in the file came in. On the thread that appends.
    virtual void reached(MediaTime time) = 0;
};

} // namespace velmo::internal
