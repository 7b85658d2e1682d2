#include "library/internal/FolderScan.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace velmo::internal {

namespace {

using WallTime = std::chrono::system_clock::time_point;

constexpr std::array<std::string_view, 3> kExtensions{".mp4", ".mov", ".m4v"};

bool isHidden(const std::filesystem::path& path) {
    return path.filename().native().starts_with('.');
}

bool isVideoByName(const std::filesystem::path& path) {
    std::string extension = path.extension().native();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

WallTime wallTime(const struct statx_timestamp& stamp) {
    return WallTime(std::chrono::duration_cast<WallTime::duration>(std::chrono::seconds(stamp.tv_sec) +
                                                                   std::chrono::nanoseconds(stamp.tv_nsec)));
}

} // namespace

std::vector<VideoFile> videosIn(const std::filesystem::path& folder, WallTime now) {
    std::vector<VideoFile> videos;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::filesystem::path& path = entry->path();
        if (isHidden(path) || !isVideoByName(path)) {
            continue;
        }
        struct statx info {};
        if (::statx(AT_FDCWD, path.c_str(), 0, STATX_TYPE | STATX_SIZE | STATX_BTIME | STATX_MTIME, &info) != 0) {
            videos.push_back({path, now, 0});
        } else if (!S_ISDIR(info.stx_mode)) {
            const bool hasBirth = (info.stx_mask & STATX_BTIME) != 0;
            videos.push_back(
                {path, wallTime(hasBirth ? info.stx_btime : info.stx_mtime), static_cast<std::int64_t>(info.stx_size)});
        }
    }
    return videos;
}

} // namespace velmo::internal
