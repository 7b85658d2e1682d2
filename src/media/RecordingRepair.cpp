#include "media/RecordingRepair.h"

#include "base/AtomicFile.h"
#include "media/JournalReader.h"
#include "media/JournalWriter.h"
#include "media/Mp4Index.h"
#include "media/RecordingClose.h"
#include "media/internal/JournalFormat.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace velmo {

namespace {

using Path = std::filesystem::path;

bool isThere(const Path& path) {
    std::error_code ignored;
    return std::filesystem::symlink_status(path, ignored).type() != std::filesystem::file_type::not_found;
}

void takeAway(const Path& path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

/// Not when there is no such file, or when what was read of it is another one's.
Result<bool> carries(const Path& video, const RecordingId& id) {
    const FileDescriptor file(::open(video.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (file.number() < 0) {
        return errno == ENOENT ? Result<bool>(false) : posixError(errno);
    }
    std::array<std::byte, kVideoHeadBytes> head{};
    const ssize_t count = ::pread(file.number(), head.data(), head.size(), 0);
    if (count < 0) {
        return posixError(errno);
    }
    return isHeadOf(std::span(head).first(static_cast<std::size_t>(count)), id);
}

/// A file whose kind cannot be told is looked into.
bool mayBeRenamed(const std::filesystem::directory_entry& entry) {
    std::error_code unknown;
    const auto kind = entry.symlink_status(unknown).type();
    return entry.path().extension() == ".mp4" &&
           (kind == std::filesystem::file_type::regular || kind == std::filesystem::file_type::none);
}

/// Where the recording is by now: under its name, put aside, or renamed by the user. Absent only when all that is there
/// could be looked at.
Result<std::optional<Path>> findVideo(const Path& named, const RecordingId& id) {
    std::optional<Error> doubt;
    const auto isIt = [&](const Path& candidate) {
        const Result<bool> carried = carries(candidate, id);
        if (!carried && !doubt) {
            doubt = carried.error();
        }
        return carried && carried.value();
    };
    for (const Path& candidate : {named, asideOf(named)}) {
        if (isIt(candidate)) {
            return std::optional(candidate);
        }
    }
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(named.parent_path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (mayBeRenamed(*entry) && isIt(entry->path())) {
            return std::optional(entry->path());
        }
    }
    if (failure && !doubt) {
        doubt = posixError(failure.value());
    }
    return doubt ? Result<std::optional<Path>>(std::move(*doubt)) : std::optional<Path>();
}

/// A video under its name that was made a moment before its head would have been written.
std::optional<Path> headlessVideo(const Path& named) {
    std::error_code failure;
    const bool isEmpty = std::filesystem::is_regular_file(std::filesystem::symlink_status(named, failure)) &&
                         std::filesystem::file_size(named, failure) == 0 && !failure;
    return isEmpty ? std::optional(named) : std::nullopt;
}

/// Under its own name again, or under one like it when that is taken.
Result<Path> broughtBack(const Path& aside, const Path& named) {
    for (int n = 1;; ++n) {
        const Path target = n == 1 ? named
                                   : named.parent_path() / (named.stem().native() + " (" + std::to_string(n) + ")" +
                                                            named.extension().native());
        const Result<void> moved = renameWithoutReplacing(aside, target);
        if (moved) {
            return target;
        }
        if (moved.error().code != EEXIST) {
            return moved.error();
        }
    }
}

Result<void> noteFinished(int journal, std::int64_t microseconds) {
    std::vector<std::byte> record;
    internal::encodeRecord(JournalFinished{microseconds}, record);
    const off_t end = ::lseek(journal, 0, SEEK_END);
    const ssize_t count = ::pwrite(journal, record.data(), record.size(), end);
    return count == static_cast<ssize_t>(record.size()) && ::fdatasync(journal) == 0 ? Result<void>()
                                                                                     : posixError(errno);
}

/// The video's length in microseconds; 0 when it holds no picture.
Result<std::int64_t> closed(const Path& video, JournalReader& reader, const JournalSummary& summary, int journal) {
    const FileDescriptor file(::open(video.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (file.number() < 0) {
        return posixError(errno);
    }
    const auto done = closeVideo(file.number(), reader, summary, Closing::afterCrash);
    if (!done) {
        return done.error();
    }
    if (done.value().hasPictures) {
        if (const Result<void> noted = noteFinished(journal, done.value().microseconds); !noted) {
            return noted.error();
        }
    }
    return done.value().microseconds;
}

using Outcome = Result<std::optional<RepairedRecording>>;

Outcome nothingLeft(const Path& journal, const std::optional<Path>& video) {
    if (video) {
        takeAway(*video);
    }
    takeAway(journal);
    return std::optional<RepairedRecording>();
}

Outcome unusable(const Path& journal, JournalReader::State state, const Path& named) {
    switch (state) {
    case JournalReader::State::torn:
        return nothingLeft(journal, headlessVideo(named));
    case JournalReader::State::unusable:
        static_cast<void>(keepDamagedFileAside(journal));
        return std::optional<RepairedRecording>();
    case JournalReader::State::failed:
        return posixError(EIO);
    case JournalReader::State::newer:
    case JournalReader::State::good:
        break;
    }
    return std::optional<RepairedRecording>();
}

} // namespace

std::vector<std::filesystem::path> journalsIn(const std::filesystem::path& folder) {
    std::vector<Path> journals;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code ignored;
        if (videoOfJournal(entry->path()) && std::filesystem::is_regular_file(entry->symlink_status(ignored))) {
            journals.push_back(entry->path());
        }
    }
    std::sort(journals.begin(), journals.end());
    return journals;
}

Result<std::optional<RepairedRecording>> repairRecording(const std::filesystem::path& journal) {
    const std::optional<Path> named = videoOfJournal(journal);
    const auto lock = named ? openAndLockJournal(journal) : nullptr;
    if (lock == nullptr) {
        return std::optional<RepairedRecording>();
    }
    JournalReader reader(lock->number());
    if (reader.state() != JournalReader::State::good) {
        return unusable(journal, reader.state(), *named);
    }
    const JournalSummary summary = summaryOf(reader);
    if (reader.failed()) {
        return posixError(EIO);
    }
    auto found = findVideo(*named, reader.id());
    if (!found) {
        return found.error();
    }
    std::optional<Path> video = std::move(found).value();
    if (!video && !(summary.finished && isThere(*named))) {
        return nothingLeft(journal, headlessVideo(*named));
    }
    std::int64_t microseconds = summary.finished.value_or(0);
    if (!summary.finished) {
        const Result<std::int64_t> done = closed(*video, reader, summary, lock->number());
        if (!done) {
            return done.error();
        }
        if (done.value() <= 0) {
            return nothingLeft(journal, video);
        }
        microseconds = done.value();
    }
    if (video == asideOf(*named)) {
        Result<Path> back = broughtBack(*video, *named);
        if (!back) {
            return back.error();
        }
        video = std::move(back).value();
    }
    syncFolder(journal.parent_path());
    return std::optional(RepairedRecording{video.value_or(*named), journal, static_cast<double>(microseconds) / 1e6,
                                           summary.marks, lock});
}

void forget(const RepairedRecording& recording) {
    takeAway(recording.journal);
}

} // namespace velmo
