#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct AVIOContext;

namespace velmo::internal {

/// A file that libavformat writes into and that never runs out of room for its index: space is claimed on the disk
/// ahead of what is written, so that a full disk is noticed while the file can still be closed well.
/// One thread at a time.
class OutputFile {
public:
    /// Makes the file or empties the one that is there. Fails as well when less than `minimumFree` bytes are free.
    static Result<std::unique_ptr<OutputFile>> create(std::filesystem::path path, std::int64_t minimumFree);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    AVIOContext* context() const { return context_; }
    const std::filesystem::path& path() const { return path_; }

    /// Whether `bytes` more and after them an index of `indexBytes` have room. The error of a disk that is full.
    Result<void> claim(std::int64_t bytes, std::int64_t indexBytes);
    /// Hands what libavformat holds to the system.
    void flush();
    /// The first write that failed. Its bytes are kept, and `close` tries them once more.
    std::optional<Error> failure() const { return failure_; }

    enum class Durability { left, synced };
    /// Writes what could not be written before, gives claimed space back and closes. No other call but `path` and
    /// `remove` follows.
    Result<void> close(Durability durability);
    /// Closes and takes the file away.
    void remove();

private:
    struct Unwritten {
        std::int64_t offset;
        std::vector<std::byte> bytes;
    };

    OutputFile(std::filesystem::path path, int descriptor, std::int64_t minimumFree);
    static int onWrite(void* self, std::uint8_t* bytes, int count);
    static std::int64_t onSeek(void* self, std::int64_t offset, int whence);
    int writeAt(std::int64_t offset, std::span<const std::byte> bytes) const;
    Result<void> checkFreeSpace();
    void closeDescriptor();

    std::filesystem::path path_;
    int descriptor_ = -1;
    std::int64_t minimumFree_ = 0;
    AVIOContext* context_ = nullptr;
    std::int64_t offset_ = 0;
    std::int64_t end_ = 0;        // of what was written
    std::int64_t claimedEnd_ = 0; // of what the disk has promised
    std::int64_t checkedAt_ = 0;  // `end_` when free space was last looked at
    bool canClaim_ = true;        // false on file systems that promise nothing
    std::vector<Unwritten> unwritten_;
    std::optional<Error> failure_;
};

} // namespace velmo::internal
