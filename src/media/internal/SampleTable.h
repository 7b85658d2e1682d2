#pragma once

#include "media/RecordingJournal.h"
#include "media/internal/Mp4Boxes.h"

#include <cstdint>
#include <vector>

namespace velmo::internal {

/// What the index of a video says about the samples of one track, run-length coded as they come: a few bytes each.
class SampleTable {
public:
    /// `startsChunk`: it does not lie right behind the track's sample before it. False, and nothing added, for a time
    /// that is not after the last one.
    bool add(const JournalSample& sample, bool startsChunk);
    /// After the last sample: it shows at least until `end`, in ticks.
    void lastUntil(std::int64_t end);

    bool isEmpty() const { return count_ == 0; }
    std::uint32_t count() const { return count_; }
    /// Ticks: of the first sample, and when the last one is over.
    std::int64_t begin() const { return firstTime_; }
    std::int64_t end() const { return lastTime_ + lastDuration_; }

    /// The tables, without the description of the samples.
    void write(Mp4Boxes& boxes) const;

private:
    struct Run {
        std::uint32_t count;
        std::uint32_t value;
    };
    struct Chunks {
        std::uint32_t first; // from 1
        std::uint32_t samples;
    };

    static void addTo(std::vector<Run>& runs, std::uint32_t value);
    void closeChunk();
    void writeTimes(Mp4Boxes& boxes) const;
    void writeChunks(Mp4Boxes& boxes) const;

    std::uint32_t count_ = 0;
    std::int64_t firstTime_ = 0;
    std::int64_t lastTime_ = 0;
    std::int64_t lastDuration_ = 0;
    std::vector<std::uint32_t> sizes_;
    std::vector<Run> durations_; // of all but the last sample
    std::vector<std::uint32_t> keys_;
    std::vector<std::int64_t> chunkOffsets_;
    std::vector<Chunks> chunkRuns_; // of all but the last chunk
    std::uint32_t samplesInChunk_ = 0;
};

} // namespace velmo::internal
