#pragma once

#include "base/SerialQueue.h"

#include <atomic>
#include <cstdint>
#include <filesystem>

namespace velmo::internal {

/// Brings what has been written of a recording to the disk twice a second, on a thread of its own
/// ("velmo.writer.sync"), so that a slow disk holds nobody up who does not have to write.
class DiskSync {
public:
    /// Both files are open for as long as this object lives; `folder` is where their names are.
    DiskSync(int video, int journal, std::filesystem::path folder);
    /// Waits for the round under way.
    ~DiskSync();

    /// The file's end after a write. Any thread.
    void wrote(std::int64_t end) { written_.store(end, std::memory_order_relaxed); }
    /// What lies before it in the video has reached the disk. Any thread.
    std::int64_t syncedEnd() const { return synced_.load(std::memory_order_acquire); }
    /// The errno of a round that failed; 0 while none did. Any thread.
    int failure() const { return failure_.load(std::memory_order_relaxed); }

private:
    void round();

    const int video_;
    const int journal_;
    const std::filesystem::path folder_;
    std::atomic<std::int64_t> written_{0};
    std::atomic<std::int64_t> synced_{0};
    std::atomic<int> failure_{0};
    bool folderIsSynced_ = false; // on the queue
    ThreadQueue queue_{"velmo.writer.sync"};
};

} // namespace velmo::internal
