#include "platform/ffmpeg/internal/DiskSync.h"

#include "base/AtomicFile.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace velmo::internal {

namespace {

// With what encoder and disk hold on top, a power cut costs less than a second.
constexpr double kInterval = 0.5;

} // namespace

DiskSync::DiskSync(int video, int journal, std::filesystem::path folder)
    : video_(video), journal_(journal), folder_(std::move(folder)) {
    queue_.startTimer(kInterval, [this] { round(); });
}

DiskSync::~DiskSync() = default;

void DiskSync::round() {
    if (!std::exchange(folderIsSynced_, true)) {
        syncFolder(folder_);
    }
    // First the pictures, then the words that say where they are.
    const std::int64_t end = written_.load(std::memory_order_relaxed);
    if (::fdatasync(video_) != 0 || ::fdatasync(journal_) != 0) {
        failure_.store(errno, std::memory_order_relaxed);
        return;
    }
    synced_.store(end, std::memory_order_release);
}

} // namespace velmo::internal
