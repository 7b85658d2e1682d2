#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "media/RecordingMark.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace velmo {

/// A recording that was left behind and can be played now.
struct RepairedRecording {
    std::filesystem::path video;
    std::filesystem::path journal;
    double seconds = 0;
    std::vector<RecordingMark> marks;
    /// Keeps the journal from others until the recording is in the library.
    std::shared_ptr<const FileDescriptor> lock;
};

/// The journals in `folder`, by name.
std::vector<std::filesystem::path> journalsIn(const std::filesystem::path& folder);

/// Makes a whole video of what a recording has left. The journal stays: `forget` it when the recording is in the
/// library. Absent when there is nothing to do:
/// - somebody is working on it, or it is of a version that is not known: it is left alone;
/// - nothing was recorded yet, or the video is gone: what is left of it is taken away;
/// - it is damaged beyond use: it is renamed, and the video is left alone.
/// Errors: domain "POSIX"; all is left as it was, for another time. Blocks on the disk.
Result<std::optional<RepairedRecording>> repairRecording(const std::filesystem::path& journal);

/// Takes the journal away.
void forget(const RepairedRecording& recording);

} // namespace velmo
