#pragma once

#include "base/MediaTime.h"
#include "base/Result.h"
#include "media/JournalWriter.h"
#include "platform/ffmpeg/internal/DiskSync.h"
#include "platform/ffmpeg/internal/Handles.h"
#include "platform/ffmpeg/internal/OutputFile.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::internal {

/// The MP4 of a recording: samples go to disk as they come, and the journal beside it tells where they lie; at the end
/// the index is made from the journal. So memory does not grow with the recording, and one that was never finished
/// can be made whole. H.264 behind start codes, and AAC. One thread at a time.
class JournaledFile {
public:
    static Result<std::unique_ptr<JournaledFile>> create(const std::filesystem::path& path, std::int64_t minimumFree);
    ~JournaledFile();

    /// Before the first packet. The track's number, or why there is none.
    Result<int> addTrack(const AVCodecParameters& parameters, AVRational timeBase);
    /// Times in the track's time base. The error says why no more can be taken; what was written before can still be
    /// finished.
    Result<void> write(const AVPacket& packet, int track);
    Result<void> note(const RecordingMark& mark);
    Result<void> note(JournalProgress progress);

    /// Whether there is anything to finish.
    bool hasPictures() const { return hasPictures_; }

    enum class Journal { removed, kept };
    /// Only with pictures. Writes the index, waits until all is on the disk, and closes. After a failure the file has
    /// another, hidden name where it waits to be repaired, if it could be given one.
    Result<void> finish(Journal journal);
    /// Closes and takes the file away.
    void remove();

private:
    JournaledFile() = default;
    Result<void> begin(std::int64_t minimumFree);
    Result<void> add(const JournalRecord& record);
    Result<void> noteSynced();
    Result<void> writeIndex();
    Error putAside(Error reason);

    std::filesystem::path path_;
    std::unique_ptr<JournalWriter> journal_;
    std::unique_ptr<OutputFile> file_;
    std::vector<AVCodecID> codecs_; // by track
    std::int64_t packets_ = 0;
    bool hasPictures_ = false;
    std::int64_t notedSync_ = 0;
    std::vector<std::byte> sample_; // used again and again
    std::unique_ptr<DiskSync> sync_;
};

} // namespace velmo::internal
