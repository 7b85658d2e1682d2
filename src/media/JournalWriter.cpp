#include "media/JournalWriter.h"

#include "base/PosixError.h"
#include "media/internal/JournalFormat.h"
#include "media/internal/JournalHolds.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr std::int64_t kClaimStep = 256 << 10; // promised by the disk ahead of what is written

} // namespace

Result<std::unique_ptr<JournalWriter>> JournalWriter::create(const std::filesystem::path& video,
                                                             const RecordingId& id) {
    const std::filesystem::path journal = journalOf(video);
    const int descriptor = ::open(journal.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        return posixError(errno);
    }
    static_cast<void>(::flock(descriptor, LOCK_EX | LOCK_NB)); // where the file system has no locks, without
    internal::holdJournal(journal, descriptor);
    std::unique_ptr<JournalWriter> writer(new JournalWriter(descriptor));
    const auto header = internal::journalHeader(id);
    writer->record_.assign(header.begin(), header.end());
    if (const Result<void> written = writer->append(); !written) {
        removeJournal(video);
        return written.error();
    }
    return writer;
}

JournalWriter::JournalWriter(int descriptor) : descriptor_(descriptor) {}

Result<void> JournalWriter::add(const JournalRecord& record) {
    record_.clear();
    internal::encodeRecord(record, record_);
    return append();
}

Result<void> JournalWriter::append() {
    claim();
    std::size_t done = 0;
    while (done < record_.size()) {
        const ssize_t count = ::pwrite(descriptor_, record_.data() + done, record_.size() - done,
                                       size_ + static_cast<std::int64_t>(done));
        if (count < 0 && errno != EINTR) {
            const int number = errno;
            static_cast<void>(::ftruncate(descriptor_, size_)); // half a record would be skipped by readers anyway
            return posixError(number);
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    size_ += static_cast<std::int64_t>(done);
    return {};
}

/// Where the disk promises nothing, the write itself tells.
void JournalWriter::claim() {
    const auto needed = size_ + static_cast<std::int64_t>(record_.size());
    if (needed > claimed_) {
        static_cast<void>(::fallocate(descriptor_, FALLOC_FL_KEEP_SIZE, claimed_, needed + kClaimStep - claimed_));
        claimed_ = needed + kClaimStep;
    }
}

std::shared_ptr<const FileDescriptor> openAndLockJournal(const std::filesystem::path& journal) {
    auto file = std::make_shared<const FileDescriptor>(::open(journal.c_str(), O_RDWR | O_CLOEXEC));
    if (file->number() < 0 || (::flock(file->number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)) {
        return nullptr;
    }
    return file;
}

} // namespace velmo
