#include "media/internal/JournalHolds.h"

#include <map>
#include <mutex>
#include <unistd.h>

namespace velmo::internal {

namespace {

struct Holds {
    std::mutex lock;
    // protected by lock
    std::map<std::filesystem::path, int> descriptors;
};

// Locks belong to the process, not to any object of it.
Holds& holds() {
    static Holds all;
    return all;
}

} // namespace

void holdJournal(const std::filesystem::path& journal, int descriptor) {
    releaseJournal(journal);
    const std::lock_guard guard(holds().lock);
    holds().descriptors[journal] = descriptor;
}

void releaseJournal(const std::filesystem::path& journal) {
    const std::lock_guard guard(holds().lock);
    if (const auto held = holds().descriptors.extract(journal)) {
        ::close(held.mapped());
    }
}

bool holdsJournal(const std::filesystem::path& journal) {
    const std::lock_guard guard(holds().lock);
    return holds().descriptors.contains(journal);
}

} // namespace velmo::internal
