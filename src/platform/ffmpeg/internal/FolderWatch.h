#pragma once

#include "base/FileDescriptor.h"

#include <filesystem>
#include <functional>
#include <thread>
#include <vector>

namespace velmo::internal {

/// Calls `look` on a thread of its own: at once, and each time that something in a folder or in one of `parts` below it
/// has come, gone or changed its rights and then been quiet for a moment. Ends with the destructor, which waits for a
/// call under way.
class FolderWatch {
public:
    FolderWatch(std::filesystem::path folder, std::vector<std::filesystem::path> parts, std::function<void()> look);
    ~FolderWatch();

private:
    void run();
    void watchAll();
    bool waitForNews(int milliseconds);

    const std::filesystem::path folder_;
    const std::vector<std::filesystem::path> parts_;
    const std::function<void()> look_;
    const FileDescriptor news_;
    const FileDescriptor end_;
    std::thread thread_;
};

} // namespace velmo::internal
