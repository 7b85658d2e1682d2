#include "media/RecordingClose.h"

#include "base/Checksum.h"
#include "base/PosixError.h"
#include "media/Mp4Index.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr std::size_t kMostTracks = 16;

/// 0 or an errno.
int writeAll(int file, std::span<const std::byte> bytes, std::int64_t offset) {
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(file, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            offset += count;
        }
    }
    return 0;
}

/// Decides which samples can be trusted. A picture after one that is lost cannot be shown before the next key picture.
class SampleCheck {
public:
    SampleCheck(int video, std::int64_t fileSize, const JournalSummary& summary, Closing closing)
        : video_(video), fileSize_(fileSize), trusted_(closing == Closing::afterWriting ? fileSize : summary.syncedEnd),
          tracks_(summary.tracks), lost_(summary.tracks.size()) {}

    /// Why a sample could not be looked at; 0 when all could.
    int readFailure() const { return readFailure_; }

    bool passes(const JournalSample& sample) {
        if (sample.track >= tracks_.size()) {
            return false;
        }
        const bool isPicture = tracks_[sample.track].kind == JournalTrack::Kind::video;
        const bool isThere = liesInTheFile(sample) && isWhole(sample);
        if (isThere && (!isPicture || sample.isKey)) {
            lost_[sample.track] = false;
        } else if (!isThere) {
            lost_[sample.track] = isPicture;
        }
        return isThere && !lost_[sample.track];
    }

private:
    bool liesInTheFile(const JournalSample& sample) const {
        return sample.offset >= static_cast<std::int64_t>(kVideoHeadBytes) && sample.offset <= fileSize_ &&
               sample.size <= fileSize_ - sample.offset;
    }
    bool isWhole(const JournalSample& sample) {
        if (sample.offset + sample.size <= trusted_) {
            return true;
        }
        bytes_.resize(sample.size);
        std::size_t done = 0;
        while (done < bytes_.size()) {
            const ssize_t count = ::pread(video_, bytes_.data() + done, bytes_.size() - done,
                                          sample.offset + static_cast<std::int64_t>(done));
            if (count < 0 && errno != EINTR) {
                readFailure_ = errno;
                return false;
            }
            if (count == 0) {
                return false;
            }
            done += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        return checksum(bytes_) == sample.checksum;
    }

    const int video_;
    const std::int64_t fileSize_;
    const std::int64_t trusted_;
    const std::vector<JournalTrack>& tracks_;
    std::vector<bool> lost_; // by track: a picture is missing since the last key picture
    std::vector<std::byte> bytes_;
    int readFailure_ = 0;
};

Result<void> writeIndex(int video, const Mp4Index& index) {
    const std::int64_t end = index.dataEnd();
    const std::vector<std::byte> boxes = index.build();
    if (const int failure = writeAll(video, boxes, end); failure != 0) {
        return posixError(failure);
    }
    // The head is changed last: as long as it is the old one, the data reaches to the end of the file.
    if (::ftruncate(video, end + static_cast<std::int64_t>(boxes.size())) != 0 || ::fdatasync(video) != 0) {
        return posixError(errno);
    }
    if (const int failure = writeAll(video, closedDataHead(end), kDataHeadAt); failure != 0) {
        return posixError(failure);
    }
    return ::fsync(video) == 0 ? Result<void>() : Result<void>(posixError(errno));
}

} // namespace

JournalSummary summaryOf(JournalReader& journal) {
    JournalSummary summary;
    journal.rewind();
    while (auto record = journal.next()) {
        if (auto* track = std::get_if<JournalTrack>(&*record)) {
            if (summary.tracks.size() < kMostTracks) {
                summary.tracks.push_back(std::move(*track));
            }
        } else if (auto* mark = std::get_if<RecordingMark>(&*record)) {
            summary.marks.push_back(std::move(*mark));
        } else if (const auto* progress = std::get_if<JournalProgress>(&*record)) {
            summary.microseconds = std::max(summary.microseconds, progress->microseconds);
        } else if (const auto* synced = std::get_if<JournalSynced>(&*record)) {
            summary.syncedEnd = std::max(summary.syncedEnd, synced->end);
        } else if (const auto* finished = std::get_if<JournalFinished>(&*record)) {
            summary.finished = finished->microseconds;
        }
    }
    return summary;
}

Result<ClosedVideo> closeVideo(int video, JournalReader& journal, const JournalSummary& summary, Closing closing) {
    struct stat file {};
    if (::fstat(video, &file) != 0) {
        return posixError(errno);
    }
    Mp4Index index;
    for (const JournalTrack& track : summary.tracks) {
        index.addTrack(track);
    }
    SampleCheck check(video, file.st_size, summary, closing);
    journal.rewind();
    while (const auto record = journal.next()) {
        if (const auto* sample = std::get_if<JournalSample>(&*record); sample != nullptr && check.passes(*sample)) {
            index.add(*sample);
        }
    }
    if (journal.failed()) {
        return posixError(EIO);
    }
    if (!index.hasPictures()) {
        return check.readFailure() != 0 ? Result<ClosedVideo>(posixError(check.readFailure())) : ClosedVideo{};
    }
    if (closing == Closing::afterCrash) {
        index.holdPictureUntil(summary.microseconds);
    }
    if (const Result<void> written = writeIndex(video, index); !written) {
        return written.error();
    }
    return ClosedVideo{index.duration(), true};
}

} // namespace velmo
