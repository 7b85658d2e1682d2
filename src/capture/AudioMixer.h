#pragma once

#include "base/Result.h"
#include "media/AssetReader.h"
#include "media/PassthroughWriter.h"

#include <filesystem>
#include <functional>
#include <string>

namespace velmo {

/// Makes the audio tracks of a finished recording into one stereo track; its video is copied untouched.
/// No state but its collaborators. Calls block on disk and encoding: meant for a worker, one file at a time.
class AudioMixer {
public:
    /// One line for the system's log (not the program's own). Called on the thread of the call.
    using SystemLog = std::function<void(const std::string&)>;

    /// Both factories are borrowed and must outlive the mixer.
    AudioMixer(const AssetReaderFactory& readers, const PassthroughWriterFactory& writers, SystemLog systemLog);

    /// Replaces the file in one step when it has two or more audio tracks and a video track. Never fails: whatever goes
    /// wrong leaves the recording as it was.
    void mixIfNeeded(const std::filesystem::path& file) const;

private:
    Result<void> mix(const std::filesystem::path& file) const;

    const AssetReaderFactory& readers_;
    const PassthroughWriterFactory& writers_;
    SystemLog systemLog_;
};

} // namespace velmo
