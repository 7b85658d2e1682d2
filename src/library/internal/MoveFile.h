#pragma once

#include "base/Result.h"

#include <filesystem>

namespace velmo::internal {

/// Renames a video, or a file that belongs to it. Never replaces anything: a taken name is domain "VelmoStudio", code
/// 1, "Ya existe un video con ese nombre." Any other failure is domain "POSIX" with the system's number and a Spanish
/// sentence.
Result<void> moveVideo(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace velmo::internal
