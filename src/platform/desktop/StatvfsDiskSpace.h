#pragma once

#include "platform/Machine.h"

namespace velmo {

/// What statvfs says is free for users who are not root. Any thread. For a path that does not exist yet the answer is
/// that of its nearest folder that does.
class StatvfsDiskSpace final : public DiskSpace {
public:
    std::optional<std::int64_t> available(const std::filesystem::path& path) const override;
    std::optional<std::int64_t> size(const std::filesystem::path& file) const override;
};

} // namespace velmo
