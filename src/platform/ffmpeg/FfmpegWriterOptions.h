#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace velmo {

/// How much work the video encoder puts into a frame, most first. All give H.264 High with the same headers, so that
/// one file can hold parts of each.
enum class EncoderPreset { veryfast, superfast, ultrafast };

struct FfmpegWriterOptions {
    int threads = 2;                                ///< that encode one frame together
    EncoderPreset preset = EncoderPreset::veryfast; ///< where it starts; under sustained load it steps down
    std::int64_t minimumFreeBytes = 32 << 20;       ///< free disk space at which recording ends by itself
    bool keepsJournal = false; ///< after a good end, for whoever brings the recording into the library
    std::function<void(const std::string&)> log; ///< one line for the diagnostics log; called on encoder threads
};

} // namespace velmo
