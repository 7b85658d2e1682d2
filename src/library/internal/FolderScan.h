#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace velmo::internal {

struct VideoFile {
    std::filesystem::path path;
    std::chrono::system_clock::time_point created;
    std::int64_t size = 0;
};

/// The visible files in `folder` that are videos by their extension, in the directory's order. Empty when it cannot
/// be listed. A file system that keeps no date of creation gives the date of the last change, and where even that
/// cannot be had, `now`.
std::vector<VideoFile> videosIn(const std::filesystem::path& folder, std::chrono::system_clock::time_point now);

} // namespace velmo::internal
