#pragma once

#include "media/RecordingJournal.h"
#include "media/internal/SampleTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmo {

// The beginning of a recording's video file: what it is, whose it is, and the head of the data that reaches to the end
// of the file until it is closed.
inline constexpr std::size_t kVideoHeadBytes = 80;
inline constexpr std::size_t kDataHeadAt = 64; ///< of the part that closing replaces
inline constexpr std::size_t kDataHeadBytes = 16;

std::array<std::byte, kVideoHeadBytes> videoHead(const RecordingId& id);
/// Whether a file that begins so is that recording.
bool isHeadOf(std::span<const std::byte> head, const RecordingId& id);
/// Closes the data at `end`, where the index begins.
std::array<std::byte, kDataHeadBytes> closedDataHead(std::int64_t end);

/// Makes the index (`moov`) of an MP4 with H.264 pictures in the order in which they are shown, and AAC sound.
/// Grows by the bytes that the index itself takes.
class Mp4Index {
public:
    void addTrack(JournalTrack track);
    /// In file order. False, and nothing added, for a sample that cannot be: of no track, or not after the one before.
    bool add(const JournalSample& sample);
    /// Pictures stay until the sound is over, and until `microseconds` of the recording at least.
    void holdPictureUntil(std::int64_t microseconds);

    bool hasPictures() const;
    /// Behind the last sample that was added.
    std::int64_t dataEnd() const { return dataEnd_; }
    /// Microseconds that it plays.
    std::int64_t duration() const;
    /// Tracks without a sample are left out.
    std::vector<std::byte> build() const;

private:
    struct Track {
        JournalTrack format;
        internal::SampleTable samples;
    };

    std::vector<Track> tracks_;
    std::size_t lastTrack_ = 0;
    std::int64_t dataEnd_ = kVideoHeadBytes;
};

} // namespace velmo
