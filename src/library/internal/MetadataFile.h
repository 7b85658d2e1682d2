#pragma once

#include "library/internal/Metadata.h"

#include <filesystem>

namespace velmo::internal {

/// ".velmo-studio.json" in the library folder, read once and rewritten whole. Main thread.
class MetadataFile {
public:
    explicit MetadataFile(const std::filesystem::path& folder);

    /// Of a damaged file what can be read; empty without one.
    MetaByName load();
    /// False when it could not be written; the old file is then as it was. One that could not be understood whole is
    /// renamed, never replaced.
    bool save(const MetaByName& meta);

private:
    std::filesystem::path file_;
    bool holdsUnreadable_ = false;
};

} // namespace velmo::internal
