#pragma once

#include "base/Result.h"
#include "media/AssetReader.h"
#include "media/AssetWriter.h"

#include <filesystem>
#include <memory>

namespace velmo {

/// Writes an MP4 of one video track whose samples are taken as they are, and one AAC track.
/// All calls from one thread; they block on disk and on the sound encoder. Destroyed before `finish`, it removes
/// what it wrote.
class PassthroughWriter {
public:
    virtual ~PassthroughWriter() = default;

    /// In file order, with the times it had. False when it could not be written.
    virtual bool appendVideo(const EncodedSample& sample) = 0;
    /// Interleaved `int16` of the rate and channels asked for, continuing where the last one ended; the first starts
    /// at zero. False when it could not be written.
    virtual bool appendAudio(const AudioRef& sound) = 0;

    /// Writes the index and waits until the file is on the disk.
    virtual Result<void> finish() = 0;
};

class PassthroughWriterFactory {
public:
    virtual ~PassthroughWriterFactory() = default;
    /// Any thread. `video` comes from a reader of the same backend and is used during the call only.
    virtual Result<std::unique_ptr<PassthroughWriter>> makePassthroughWriter(const std::filesystem::path& file,
                                                                             const TrackFormat& video,
                                                                             const AudioSettings& audio) const = 0;
};

} // namespace velmo
