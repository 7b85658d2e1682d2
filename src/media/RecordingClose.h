#pragma once

#include "base/Result.h"
#include "media/JournalReader.h"
#include "media/RecordingMark.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo {

/// What the journal tells of a recording, beside what lies in the video.
struct JournalSummary {
    std::vector<JournalTrack> tracks;
    std::vector<RecordingMark> marks;     ///< in order of making
    std::int64_t microseconds = 0;        ///< the longest that it was known to last
    std::int64_t syncedEnd = 0;           ///< bytes of the video that are known to have reached the disk
    std::optional<std::int64_t> finished; ///< the video has its index and plays so many microseconds
};

/// Reads it from the beginning.
JournalSummary summaryOf(JournalReader& journal);

enum class Closing {
    afterWriting, ///< all is there as the journal says
    afterCrash,   ///< what had not reached the disk may be missing or garbled and is looked at first
};

struct ClosedVideo {
    std::int64_t microseconds = 0; ///< that it plays
    bool hasPictures = false;      ///< nothing is written without
};

/// Gives the video its index, behind its last good sample, and waits until all is on the disk. The file is cut or grown
/// to what belongs to it. Doing it again gives the same file, also when the time before was cut short.
/// Samples that cannot be read are left out; it is an error only when no picture remains then.
/// `video` is open for reading and writing. Errors: domain "POSIX".
Result<ClosedVideo> closeVideo(int video, JournalReader& journal, const JournalSummary& summary, Closing closing);

} // namespace velmo
