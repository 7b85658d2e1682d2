#include "media/internal/SampleTable.h"

#include <algorithm>
#include <limits>

namespace velmo::internal {

namespace {

constexpr std::int64_t kLongest = std::numeric_limits<std::int32_t>::max(); // ticks of one sample
constexpr std::int64_t kFarthest = std::int64_t{1} << 42;                   // a time beyond this is damage

} // namespace

bool SampleTable::add(const JournalSample& sample, bool startsChunk) {
    const bool isFirst = isEmpty();
    if (sample.time > kFarthest || sample.time < -kLongest || (!isFirst && sample.time <= lastTime_)) {
        return false;
    }
    if (isFirst) {
        firstTime_ = sample.time;
    } else {
        addTo(durations_, static_cast<std::uint32_t>(std::min(sample.time - lastTime_, kLongest)));
    }
    lastTime_ = sample.time;
    lastDuration_ = std::min<std::int64_t>(sample.duration, kLongest);
    sizes_.push_back(sample.size);
    ++count_;
    if (sample.isKey) {
        keys_.push_back(count_);
    }
    if (isFirst || startsChunk) {
        closeChunk();
        chunkOffsets_.push_back(sample.offset);
    }
    ++samplesInChunk_;
    return true;
}

void SampleTable::lastUntil(std::int64_t end) {
    lastDuration_ = std::clamp(end - lastTime_, lastDuration_, kLongest);
}

void SampleTable::addTo(std::vector<Run>& runs, std::uint32_t value) {
    if (!runs.empty() && runs.back().value == value) {
        ++runs.back().count;
    } else {
        runs.push_back({1, value});
    }
}

void SampleTable::closeChunk() {
    if (samplesInChunk_ == 0) {
        return;
    }
    if (chunkRuns_.empty() || chunkRuns_.back().samples != samplesInChunk_) {
        chunkRuns_.push_back({static_cast<std::uint32_t>(chunkOffsets_.size()), samplesInChunk_});
    }
    samplesInChunk_ = 0;
}

void SampleTable::write(Mp4Boxes& boxes) const {
    writeTimes(boxes);
    if (keys_.size() != count_) {
        const auto box = boxes.fullBox("stss", 0, 0);
        boxes.u32(keys_.size());
        for (const std::uint32_t key : keys_) {
            boxes.u32(key);
        }
    }
    writeChunks(boxes);
}

void SampleTable::writeTimes(Mp4Boxes& boxes) const {
    const auto lastDuration = static_cast<std::uint32_t>(lastDuration_);
    const bool joins = !durations_.empty() && durations_.back().value == lastDuration;
    const auto box = boxes.fullBox("stts", 0, 0);
    boxes.u32(durations_.size() + (joins ? 0 : 1));
    for (std::size_t i = 0; i < durations_.size(); ++i) {
        boxes.u32(durations_[i].count + (joins && i + 1 == durations_.size() ? 1 : 0));
        boxes.u32(durations_[i].value);
    }
    if (!joins) {
        boxes.u32(1);
        boxes.u32(lastDuration);
    }
}

void SampleTable::writeChunks(Mp4Boxes& boxes) const {
    const bool joins = !chunkRuns_.empty() && chunkRuns_.back().samples == samplesInChunk_;
    {
        const auto box = boxes.fullBox("stsc", 0, 0);
        boxes.u32(chunkRuns_.size() + (joins ? 0 : 1));
        for (const Chunks& run : chunkRuns_) {
            boxes.u32(run.first);
            boxes.u32(run.samples);
            boxes.u32(1);
        }
        if (!joins) {
            boxes.u32(chunkOffsets_.size());
            boxes.u32(samplesInChunk_);
            boxes.u32(1);
        }
    }
    {
        const auto box = boxes.fullBox("stsz", 0, 0);
        boxes.u32(0);
        boxes.u32(sizes_.size());
        for (const std::uint32_t size : sizes_) {
            boxes.u32(size);
        }
    }
    const bool isLarge = chunkOffsets_.back() > std::numeric_limits<std::uint32_t>::max();
    const auto box = boxes.fullBox(isLarge ? "co64" : "stco", 0, 0);
    boxes.u32(chunkOffsets_.size());
    for (const std::int64_t offset : chunkOffsets_) {
        isLarge ? boxes.u64(static_cast<std::uint64_t>(offset)) : boxes.u32(static_cast<std::uint64_t>(offset));
    }
}

} // namespace velmo::internal
