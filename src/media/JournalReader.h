#pragma once

#include "media/RecordingJournal.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo {

/// Reads a journal from an open file, from the beginning, in small memory. Records that are damaged or torn are passed
/// over. One thread.
class JournalReader {
public:
    enum class State {
        good,
        torn,     ///< shorter than its header: made a moment before the end
        newer,    ///< of a version that this program does not know
        unusable, ///< no journal, or its header is damaged
        failed,   ///< could not be read
    };

    /// `descriptor` is borrowed.
    explicit JournalReader(int descriptor);

    State state() const { return state_; }
    /// Only when `good`.
    const RecordingId& id() const { return id_; }
    /// Absent at the end; then `failed` says whether all could be read.
    std::optional<JournalRecord> next();
    bool failed() const { return state_ == State::failed; }
    /// From the first record again.
    void rewind();

private:
    bool fill(std::size_t wanted);
    std::size_t left() const { return buffer_.size() - at_; }

    int descriptor_;
    State state_ = State::unusable;
    RecordingId id_{};
    std::vector<std::byte> buffer_;
    std::size_t at_ = 0;      // of what is read next in the buffer
    std::int64_t offset_ = 0; // of the buffer's end in the file
    bool atEnd_ = false;
};

} // namespace velmo
