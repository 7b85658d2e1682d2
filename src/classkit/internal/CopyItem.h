#pragma once

#include "base/Result.h"

#include <filesystem>

namespace velmo::internal {

/// Copies a file, or a folder with all that is in it, to `to`, where nothing may stand yet. Of a file of any size no
/// more than a block is in memory; holes stay holes; mode and time of change stay. A link at `from` is followed, links
/// inside a folder stay links. Blocks on the disk, but on nothing else: what is neither file, folder nor link fails,
/// as does a folder that would be copied into itself. After a failure nothing is left at `to`.
/// Error: domain "POSIX", the system's number, its text.
Result<void> copyItem(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace velmo::internal
