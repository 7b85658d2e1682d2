#pragma once

#include "base/PosixError.h"
#include "base/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace velmo {

/// Replaces the content of `file`, or makes it. At any moment, also across a crash or a power cut, the file holds
/// the old content or the new one, whole: the new content goes into a hidden file beside it, to the disk, and only
/// then under its name. Keeps the mode of a file that exists; a new one is the user's alone. Blocks on the disk.
/// Error: domain "POSIX", the system's number, its text; the old file is then untouched.
Result<void> writeFileAtomically(const std::filesystem::path& file, std::string_view content);

/// The whole content. Error as above.
Result<std::string> readWholeFile(const std::filesystem::path& file);

/// Renames `file` to itself + ".damaged-" + n, n the first free number from 1, and gives the new name.
/// Used for files that cannot be read, before a new one takes their place.
Result<std::filesystem::path> keepDamagedFileAside(const std::filesystem::path& file);

/// Renames `from` to `to`. Error as above; EEXIST when `to` is taken: what bears that name is never replaced.
Result<void> renameWithoutReplacing(const std::filesystem::path& from, const std::filesystem::path& to);

/// Sees to it that names made, changed or taken away in `folder` have reached the disk. Blocks on the disk; a file
/// system that cannot do that is left alone.
void syncFolder(const std::filesystem::path& folder);

} // namespace velmo
