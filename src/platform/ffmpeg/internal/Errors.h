#pragma once

#include "base/Result.h"
#include "media/AssetWriter.h"

namespace velmo::internal {

/// Codes of this room's own errors; those of the system keep their errno.
enum class MediaError {
    notMedia = kFirstMediaError,
    noPicture = 1002,
    encoder = 1003,
    readFailed = 1004,
    nothingRecorded = 1005
};

Error mediaError(MediaError code);
/// The words for a system error number (positive).
Error systemError(int number);
/// From a library's negative return value: the system's words where it carries an errno, else `otherwise`.
Error libraryError(int returned, MediaError otherwise);

/// Keeps the libraries from writing to the terminal. Any thread, any number of times.
void silenceLibraries();

} // namespace velmo::internal
