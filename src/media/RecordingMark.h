#pragma once

#include <optional>
#include <string>

namespace velmo {

/// A moment that the teacher marked while recording. UTF-8.
struct RecordingMark {
    double time = 0; ///< seconds of the video
    std::string title;
    std::optional<std::string> location; ///< what was opened at that moment
    friend bool operator==(const RecordingMark&, const RecordingMark&) = default;
};

} // namespace velmo
