#include "platform/ffmpeg/internal/OutputFile.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace velmo::internal {

namespace {

constexpr std::int64_t kClaimStep = 8 << 20; // claimed ahead in one go
constexpr std::int64_t kCheckStep = 1 << 20; // written between two looks at the free space

} // namespace

Result<std::unique_ptr<OutputFile>> OutputFile::create(std::filesystem::path path, std::int64_t minimumFree) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        return systemError(errno);
    }
    std::unique_ptr<OutputFile> file(new OutputFile(std::move(path), descriptor, minimumFree));
    if (const Result<void> free = file->checkFreeSpace(); !free) {
        file->remove();
        return free.error();
    }
    return file;
}

OutputFile::OutputFile(std::filesystem::path path, int descriptor, std::int64_t minimumFree)
    : path_(std::move(path)), descriptor_(descriptor), minimumFree_(minimumFree) {}

OutputFile::~OutputFile() {
    closeDescriptor();
}

Result<void> OutputFile::write(std::int64_t offset, std::span<const std::byte> bytes) {
    const std::int64_t after = offset + static_cast<std::int64_t>(bytes.size());
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(descriptor_, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno != EINTR) {
            return systemError(errno);
        }
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            offset += count;
        }
    }
    end_ = std::max(end_, after);
    return {};
}

Result<void> OutputFile::claim(std::int64_t bytes, std::int64_t indexBytes) {
    if (end_ - checkedAt_ >= kCheckStep) {
        if (Result<void> free = checkFreeSpace(); !free) {
            return free;
        }
    }
    const std::int64_t needed = end_ + bytes + indexBytes;
    if (!canClaim_ || needed <= claimedEnd_) {
        return {};
    }
    if (::fallocate(descriptor_, FALLOC_FL_KEEP_SIZE, claimedEnd_, needed + kClaimStep - claimedEnd_) == 0) {
        claimedEnd_ = needed + kClaimStep;
        return {};
    }
    if (errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL) {
        canClaim_ = false;
        return {};
    }
    return errno == EINTR ? Result<void>() : Result<void>(systemError(errno));
}

Result<void> OutputFile::checkFreeSpace() {
    checkedAt_ = end_;
    struct statvfs disk {};
    if (::fstatvfs(descriptor_, &disk) != 0) {
        return {}; // nothing known, so the write itself will tell
    }
    const auto free = static_cast<std::int64_t>(disk.f_bavail * disk.f_frsize);
    return free < minimumFree_ ? Result<void>(systemError(ENOSPC)) : Result<void>();
}

Result<void> OutputFile::close() {
    int failed = ::ftruncate(descriptor_, end_) != 0 ? errno : 0;
    if (::fsync(descriptor_) != 0 && failed == 0) {
        failed = errno;
    }
    closeDescriptor();
    return failed == 0 ? Result<void>() : Result<void>(systemError(failed));
}

void OutputFile::remove() {
    closeDescriptor();
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

void OutputFile::closeDescriptor() {
    if (descriptor_ >= 0) {
        ::close(std::exchange(descriptor_, -1));
    }
}

} // namespace velmo::internal
