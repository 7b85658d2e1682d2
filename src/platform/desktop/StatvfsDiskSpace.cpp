#include "platform/desktop/StatvfsDiskSpace.h"

#include <sys/statvfs.h>

#include <cerrno>

namespace velmo {

std::optional<std::int64_t> StatvfsDiskSpace::available(const std::filesystem::path& path) const {
    std::filesystem::path place = path;
    struct statvfs volume {};
    while (::statvfs(place.c_str(), &volume) != 0) {
        if (errno != ENOENT || place.empty() || place == place.parent_path()) {
            return std::nullopt;
        }
        place = place.parent_path();
    }
    return static_cast<std::int64_t>(volume.f_bavail) * static_cast<std::int64_t>(volume.f_frsize);
}

std::optional<std::int64_t> StatvfsDiskSpace::size(const std::filesystem::path& file) const {
    std::error_code failed;
    const auto bytes = std::filesystem::file_size(file, failed);
    return failed ? std::nullopt : std::optional(static_cast<std::int64_t>(bytes));
}

} // namespace velmo
