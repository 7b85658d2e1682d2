#include "media/RecordingJournal.h"

#include "base/FileDescriptor.h"
#include "media/internal/JournalHolds.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <system_error>

namespace velmo {

namespace {

constexpr std::string_view kJournalSuffix = ".velmo-journal";
constexpr std::string_view kAsideSuffix = ".velmo-video";

std::filesystem::path hiddenBeside(const std::filesystem::path& video, std::string_view suffix) {
    return video.parent_path() / ("." + video.filename().native() + std::string(suffix));
}

} // namespace

std::filesystem::path journalOf(const std::filesystem::path& video) {
    return hiddenBeside(video, kJournalSuffix);
}

std::optional<std::filesystem::path> videoOfJournal(const std::filesystem::path& journal) {
    const std::string name = journal.filename().native();
    if (!name.starts_with('.') || !name.ends_with(kJournalSuffix) || name.size() <= kJournalSuffix.size() + 1) {
        return std::nullopt;
    }
    return journal.parent_path() / name.substr(1, name.size() - kJournalSuffix.size() - 1);
}

std::filesystem::path asideOf(const std::filesystem::path& video) {
    return hiddenBeside(video, kAsideSuffix);
}

bool hasJournal(const std::filesystem::path& video) {
    std::error_code ignored;
    // Whoever hears "no" may delete the video: only what is certainly not there is none.
    return std::filesystem::symlink_status(journalOf(video), ignored).type() != std::filesystem::file_type::not_found;
}

bool isWorkedOn(const std::filesystem::path& video) {
    const std::filesystem::path journal = journalOf(video);
    if (internal::holdsJournal(journal)) {
        return true;
    }
    const FileDescriptor file(::open(journal.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    return file.number() >= 0 && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

void unlockJournal(const std::filesystem::path& video) {
    internal::releaseJournal(journalOf(video));
}

void removeJournal(const std::filesystem::path& video) {
    const std::filesystem::path journal = journalOf(video);
    std::error_code ignored;
    std::filesystem::remove(journal, ignored);
    internal::releaseJournal(journal);
}

} // namespace velmo
