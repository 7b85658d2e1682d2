#pragma once

#include <chrono>
#include <filesystem>

namespace velmo::internal {

/// Takes away what mixing, cutting and saving have left in the library folder when they were cut short: hidden, named
/// exactly as this program names its unfinished files, and not touched for an hour at `now`. Blocks on the disk; any
/// thread.
void removeLeftovers(const std::filesystem::path& folder, std::filesystem::file_time_type now);

} // namespace velmo::internal
