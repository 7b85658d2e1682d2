#include "platform/ffmpeg/internal/JournaledFile.h"

#include "base/AtomicFile.h"
#include "base/Checksum.h"
#include "base/PosixError.h"
#include "media/JournalReader.h"
#include "media/Mp4Index.h"
#include "media/RecordingClose.h"
#include "platform/ffmpeg/internal/AvcFormat.h"
#include "platform/ffmpeg/internal/Errors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>
#include <unistd.h>

namespace velmo::internal {

namespace {

// What the index takes: its boxes, and for each packet entries of size, time, place and chunk.
constexpr std::int64_t kIndexBytes = 64 << 10;
constexpr std::int64_t kIndexBytesPerPacket = 48;

RecordingId newId() {
    std::random_device random;
    RecordingId id{};
    std::generate(id.begin(), id.end(), [&random] { return static_cast<std::uint8_t>(random()); });
    return id;
}

/// In the words of this room, where the system's number is known.
Error worded(const Error& error) {
    return error.domain == kPosixErrorDomain ? systemError(error.code) : error;
}

std::span<const std::byte> bytesOf(const std::uint8_t* data, int size) {
    return {reinterpret_cast<const std::byte*>(data), static_cast<std::size_t>(std::max(size, 0))};
}

std::optional<JournalTrack> described(const AVCodecParameters& parameters, AVRational timeBase) {
    JournalTrack track;
    const auto headers = bytesOf(parameters.extradata, parameters.extradata_size);
    track.timescale = static_cast<std::uint32_t>(timeBase.den);
    track.bitRate = static_cast<std::uint32_t>(parameters.bit_rate);
    if (parameters.codec_id == AV_CODEC_ID_H264) {
        track.kind = JournalTrack::Kind::video;
        track.width = static_cast<std::uint32_t>(parameters.width);
        track.height = static_cast<std::uint32_t>(parameters.height);
        auto config = decoderConfig(headers);
        track.config = std::move(config).value_or(std::vector<std::byte>());
    } else if (parameters.codec_id == AV_CODEC_ID_AAC) {
        track.kind = JournalTrack::Kind::audio;
        track.channels = static_cast<std::uint32_t>(parameters.ch_layout.nb_channels);
        track.config.assign(headers.begin(), headers.end());
    }
    return track.config.empty() || timeBase.num != 1 ? std::nullopt : std::optional(std::move(track));
}

} // namespace

Result<std::unique_ptr<JournaledFile>> JournaledFile::create(const std::filesystem::path& path,
                                                             std::int64_t minimumFree) {
    std::unique_ptr<JournaledFile> self(new JournaledFile);
    self->path_ = path;
    if (const Result<void> begun = self->begin(minimumFree); !begun) {
        return worded(begun.error());
    }
    return self;
}

/// The journal first: a video without one could never be told from something else.
Result<void> JournaledFile::begin(std::int64_t minimumFree) {
    const RecordingId id = newId();
    auto journal = JournalWriter::create(path_, id);
    if (!journal) {
        return journal.error();
    }
    journal_ = std::move(journal).value();
    auto file = OutputFile::create(path_, minimumFree);
    if (!file) {
        removeJournal(path_);
        return file.error();
    }
    file_ = std::move(file).value();
    if (Result<void> written = file_->write(0, videoHead(id)); !written) {
        remove();
        return written;
    }
    sync_ = std::make_unique<DiskSync>(file_->descriptor(), journal_->descriptor(), path_.parent_path());
    return {};
}

JournaledFile::~JournaledFile() = default;

Result<int> JournaledFile::addTrack(const AVCodecParameters& parameters, AVRational timeBase) {
    auto track = described(parameters, timeBase);
    if (!track) {
        return mediaError(MediaError::encoder);
    }
    if (const Result<void> added = add(std::move(*track)); !added) {
        return added.error();
    }
    codecs_.push_back(parameters.codec_id);
    return static_cast<int>(codecs_.size()) - 1;
}

Result<void> JournaledFile::write(const AVPacket& packet, int track) {
    auto bytes = bytesOf(packet.data, packet.size);
    if (codecs_[static_cast<std::size_t>(track)] == AV_CODEC_ID_H264) {
        unitsWithLengths(bytes, sample_);
        bytes = sample_;
    }
    if (bytes.empty()) {
        return {};
    }
    const std::int64_t index = kIndexBytes + kIndexBytesPerPacket * (packets_ + 1);
    if (Result<void> room = file_->claim(static_cast<std::int64_t>(bytes.size()), index); !room) {
        return room;
    }
    JournalSample sample;
    sample.track = static_cast<std::uint8_t>(track);
    sample.isKey = (packet.flags & AV_PKT_FLAG_KEY) != 0;
    sample.size = static_cast<std::uint32_t>(bytes.size());
    sample.time = packet.pts;
    sample.duration = static_cast<std::uint32_t>(std::max<std::int64_t>(packet.duration, 0));
    sample.offset = file_->end();
    sample.checksum = checksum(bytes);
    if (Result<void> written = file_->write(sample.offset, bytes); !written) {
        return written;
    }
    if (Result<void> noted = add(sample); !noted) {
        return noted;
    }
    ++packets_;
    hasPictures_ = hasPictures_ || codecs_[static_cast<std::size_t>(track)] == AV_CODEC_ID_H264;
    sync_->wrote(file_->end());
    return noteSynced();
}

Result<void> JournaledFile::note(const RecordingMark& mark) {
    return add(mark);
}

Result<void> JournaledFile::note(JournalProgress progress) {
    return add(progress);
}

Result<void> JournaledFile::add(const JournalRecord& record) {
    const Result<void> added = journal_->add(record);
    return added ? added : worded(added.error());
}

Result<void> JournaledFile::noteSynced() {
    if (const int failed = sync_->failure(); failed != 0) {
        return systemError(failed);
    }
    const std::int64_t synced = sync_->syncedEnd();
    if (synced <= notedSync_) {
        return {};
    }
    notedSync_ = synced;
    return add(JournalSynced{synced});
}

Result<void> JournaledFile::finish(Journal journal) {
    sync_.reset();
    if (const Result<void> written = writeIndex(); !written) {
        return putAside(worded(written.error()));
    }
    file_.reset();
    if (journal == Journal::removed) {
        removeJournal(path_);
    }
    return {};
}

Result<void> JournaledFile::writeIndex() {
    JournalReader reader(journal_->descriptor());
    const JournalSummary summary = summaryOf(reader);
    const auto closed = closeVideo(file_->descriptor(), reader, summary, Closing::afterWriting);
    if (!closed) {
        return closed.error();
    }
    if (!closed.value().hasPictures) {
        return posixError(EIO); // they were written, and the journal does not know them any more
    }
    // Without this word the next launch would only do the same again.
    static_cast<void>(journal_->add(JournalFinished{closed.value().microseconds}));
    static_cast<void>(::fdatasync(journal_->descriptor()));
    return {};
}

/// Out of the library's sight until it is repaired. Where that cannot be done, its journal protects it under its name.
Error JournaledFile::putAside(Error reason) {
    file_.reset();
    static_cast<void>(renameWithoutReplacing(path_, asideOf(path_)));
    unlockJournal(path_);
    reason.text += " Lo grabado se conserva y se intentará recuperar al volver a abrir Velmo Studio.";
    return reason;
}

void JournaledFile::remove() {
    sync_.reset();
    file_->remove();
    removeJournal(path_);
}

} // namespace velmo::internal
