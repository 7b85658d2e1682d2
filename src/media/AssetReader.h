#pragma once

#include "base/MediaTime.h"
#include "base/Result.h"
#include "media/AudioBuffer.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace velmo {

/// How the compressed samples of a track are to be read. Opaque: only the backend that made it looks inside.
class TrackFormat {
public:
    virtual ~TrackFormat() = default;
};

/// One compressed sample as it lies in the file. `bytes` belong to the reader and last until its next call.
struct EncodedSample {
    MediaTime presentation;
    MediaTime decode;
    MediaTime duration;
    bool isKeyFrame = false;
    std::span<const std::byte> bytes;
};

/// What a step of reading came to: a sample, the end of the track, or a file that could not be read on.
enum class ReadStep { sample, end, failed };

/// Reads one finished file from its beginning: the first video track as it is, all its audio as one.
/// The two are read independently of each other, each in its own order, and memory does not grow with the file.
/// All calls from one thread; they block on disk and decoding.
class AssetReader {
public:
    virtual ~AssetReader() = default;

    virtual int videoTrackCount() const = 0;
    virtual int audioTrackCount() const = 0;

    /// Of the first video track; lives as long as the reader. Null without a video track.
    virtual const TrackFormat* videoFormat() const = 0;
    /// The next compressed sample of the first video track, in file order.
    virtual ReadStep nextVideoSample(EncodedSample& sample) = 0;

    /// The next stretch of all audio tracks summed at unit gain, saturated: 48 kHz, stereo, interleaved `int16`,
    /// beginning at the file's zero and without gaps. A track that starts late or ends early is silent there.
    virtual ReadStep nextMixedAudio(AudioRef& sound) = 0;
};

class AssetReaderFactory {
public:
    virtual ~AssetReaderFactory() = default;
    /// Any thread. An error for a file that is absent or no media file.
    virtual Result<std::unique_ptr<AssetReader>> openReader(const std::filesystem::path& file) const = 0;
};

} // namespace velmo
