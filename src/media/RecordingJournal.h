#pragma once

#include "media/RecordingMark.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <variant>
#include <vector>

// The journal of a recording: a hidden file beside the video that tells what lies where in it, so that a video whose
// index was never written can still be given one. It begins with the version and the recording's identity, which the
// video carries too; records follow, each with its own checksum.

namespace velmo {

using RecordingId = std::array<std::uint8_t, 16>;

/// How to read the samples of a track.
struct JournalTrack {
    enum class Kind : std::uint8_t { video = 1, audio = 2 };
    Kind kind = Kind::video;
    std::uint32_t timescale = 0; ///< ticks a second; of sound, its sample rate
    std::uint32_t width = 0;     ///< pixels; 0 for sound
    std::uint32_t height = 0;
    std::uint32_t channels = 0;    ///< 0 for pictures
    std::uint32_t bitRate = 0;     ///< bits a second
    std::vector<std::byte> config; ///< H.264: the decoder configuration record; AAC: the AudioSpecificConfig
    friend bool operator==(const JournalTrack&, const JournalTrack&) = default;
};

/// One encoded sample in the video file.
struct JournalSample {
    std::uint8_t track = 0; ///< by order of the tracks
    bool isKey = false;
    std::uint32_t size = 0;     ///< bytes
    std::int64_t time = 0;      ///< ticks of the track; may be negative for what a decoder throws away
    std::uint32_t duration = 0; ///< ticks
    std::int64_t offset = 0;    ///< bytes from the beginning of the file
    std::uint32_t checksum = 0; ///< of its bytes
    friend bool operator==(const JournalSample&, const JournalSample&) = default;
};

/// So long the recording lasts by now, also when nothing moves on the screen.
struct JournalProgress {
    std::int64_t microseconds = 0;
    friend bool operator==(const JournalProgress&, const JournalProgress&) = default;
};

/// What lies before `end` in the video has reached the disk.
struct JournalSynced {
    std::int64_t end = 0;
    friend bool operator==(const JournalSynced&, const JournalSynced&) = default;
};

/// The video has its index. The rest of the work on it may still be to do.
struct JournalFinished {
    std::int64_t microseconds = 0; ///< that it plays
    friend bool operator==(const JournalFinished&, const JournalFinished&) = default;
};

using JournalRecord =
    std::variant<JournalTrack, JournalSample, RecordingMark, JournalProgress, JournalSynced, JournalFinished>;

/// ".X.mp4.velmo-journal" for "X.mp4".
std::filesystem::path journalOf(const std::filesystem::path& video);
/// The reverse; absent for a file that is not named as a journal.
std::optional<std::filesystem::path> videoOfJournal(const std::filesystem::path& journal);
/// ".X.mp4.velmo-video": where a video waits that could not be closed.
std::filesystem::path asideOf(const std::filesystem::path& video);

/// Whether there is more to be had of a recording than what lies under its name, or may be: a folder that cannot be
/// looked into says yes. Any thread.
bool hasJournal(const std::filesystem::path& video);
/// Whether somebody, here or in another process, is still writing, repairing or saving the recording. Not so one that
/// was left behind and that nobody has taken up. Any thread.
bool isWorkedOn(const std::filesystem::path& video);
/// Gives up the lock on the journal of a recording that this process does not work on any more. Any thread.
void unlockJournal(const std::filesystem::path& video);
/// Takes the journal of a recording away that is safely in the library or thrown away. Nothing happens without one.
/// Any thread; blocks on the disk.
void removeJournal(const std::filesystem::path& video);

} // namespace velmo
