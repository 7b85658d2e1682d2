#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "media/RecordingJournal.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace velmo {

/// Writes the journal of one recording. Each record is handed to the system at once, so that it outlives this process;
/// `descriptor` can be synced from another thread. One thread at a time otherwise.
///
/// The journal stays locked against other processes until it is removed, also when the writer has gone: the work on
/// the recording goes on for a while. Errors: domain "POSIX", the system's number.
class JournalWriter {
public:
    /// Makes the journal of `video`. EEXIST when there is one: it is another recording's, which may wait for repair.
    static Result<std::unique_ptr<JournalWriter>> create(const std::filesystem::path& video, const RecordingId& id);
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;

    /// A record that could not be written leaves no trace.
    Result<void> add(const JournalRecord& record);
    /// Bytes so far.
    std::int64_t size() const { return size_; }
    /// Of the open file, until the journal is removed.
    int descriptor() const { return descriptor_; }

private:
    explicit JournalWriter(int descriptor);
    Result<void> append();
    void claim();

    const int descriptor_; // owned by the holds
    std::int64_t size_ = 0;
    std::int64_t claimed_ = 0;
    std::vector<std::byte> record_;
};

/// A journal of another time, locked, so that nobody else works on it. Absent when somebody does, or when it cannot be
/// opened.
std::shared_ptr<const FileDescriptor> openAndLockJournal(const std::filesystem::path& journal);

} // namespace velmo
