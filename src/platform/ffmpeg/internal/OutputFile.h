#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace velmo::internal {

/// A file that never runs out of room for its index: space is claimed on the disk ahead of what is written, so that a
/// full disk is noticed while the file can still be closed well. One thread at a time, but `descriptor` can be synced
/// from another one.
class OutputFile {
public:
    /// Makes the file or empties the one that is there. Fails as well when less than `minimumFree` bytes are free.
    static Result<std::unique_ptr<OutputFile>> create(std::filesystem::path path, std::int64_t minimumFree);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Of the open file.
    int descriptor() const { return descriptor_; }
    /// Behind the last byte that was written.
    std::int64_t end() const { return end_; }

    /// Whether `bytes` more and after them an index of `indexBytes` have room. The error of a disk that is full.
    Result<void> claim(std::int64_t bytes, std::int64_t indexBytes);
    /// After a failure `end` is what it was.
    Result<void> write(std::int64_t offset, std::span<const std::byte> bytes);

    /// Gives claimed space back, waits until all is on the disk, and closes. No other call but `path` and `remove`
    /// follows.
    Result<void> close();
    /// Closes and takes the file away.
    void remove();

private:
    OutputFile(std::filesystem::path path, int descriptor, std::int64_t minimumFree);
    Result<void> checkFreeSpace();
    void closeDescriptor();

    std::filesystem::path path_;
    int descriptor_ = -1;
    std::int64_t minimumFree_ = 0;
    std::int64_t end_ = 0;
    std::int64_t claimedEnd_ = 0; // of what the disk has promised
    std::int64_t checkedAt_ = 0;  // `end_` when free space was last looked at
    bool canClaim_ = true;        // false on file systems that promise nothing
};

} // namespace velmo::internal
