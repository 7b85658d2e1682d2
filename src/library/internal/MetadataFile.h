#pragma once

#include "library/internal/Metadata.h"

#include <filesystem>

namespace velmo::internal {

/// ".velmo-studio.json" in the library folder, read once and rewritten whole. Main thread.
class MetadataFile {
public:
    explicit MetadataFile(const std::filesystem::path& folder);

    /// Empty when there is no file or when it cannot be understood.
    MetaByName load();
    /// Failures are swallowed. A file that could not be understood is renamed, never replaced.
    void save(const MetaByName& meta);

private:
    std::filesystem::path file_;
    bool holdsUnreadable_ = false;
};

} // namespace velmo::internal
