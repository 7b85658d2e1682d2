#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velmo::internal {

/// File names, in one folder.
struct RenameIntent {
    std::string from;
    std::string to;
    friend bool operator==(const RenameIntent&, const RenameIntent&) = default;
};

/// ".velmo-renombrar": what is being renamed in the library folder, so that a rename that was cut short between the
/// video, its class folder and its entry can be brought to its end. Main thread; blocks on the disk.
class RenameIntentFile {
public:
    explicit RenameIntentFile(const std::filesystem::path& folder);

    /// Absent when there is none or it cannot be understood.
    std::optional<RenameIntent> load() const;
    /// Failures are swallowed: the rename is then only as safe as without.
    void save(const RenameIntent& intent) const;
    void remove() const;

private:
    std::filesystem::path file_;
};

} // namespace velmo::internal
