#pragma once

#include <filesystem>

namespace velmo {

/// Where a Mac would keep it, below the user's home.
inline constexpr const char* kLogFolderOfMacs = "Library/Logs/Velmo Studio";

/// Where logs belong on this system: `velmo-studio` in the XDG state folder, which is `$XDG_STATE_HOME` when that is
/// an absolute path, else `.local/state` in the user's home. Made by nobody here. Any thread.
std::filesystem::path logFolder();

} // namespace velmo
