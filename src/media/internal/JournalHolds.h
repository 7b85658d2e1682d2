#pragma once

#include <filesystem>

namespace velmo::internal {

// The journals that this process has made and keeps open, and with that locked, until they are removed. Any thread.

/// Takes the open file over.
void holdJournal(const std::filesystem::path& journal, int descriptor);
/// Closes it. Nothing happens when it is not held.
void releaseJournal(const std::filesystem::path& journal);
bool holdsJournal(const std::filesystem::path& journal);

} // namespace velmo::internal
