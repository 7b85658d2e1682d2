#include "classkit/internal/CopyItem.h"

#include "base/AtomicFile.h"
#include "base/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velmo::internal {

namespace {

constexpr off_t kKernelBlock = 64 << 20; ///< bytes that the system may copy before we look again
constexpr std::size_t kOwnBlock = 64 << 10;

Result<void> resultOf(const std::error_code& code) {
    return code ? Result<void>(posixError(code.value())) : Result<void>();
}

/// Bytes copied; 0 at the end of the source; -1 and errno.
ssize_t copyOwnBlock(int in, int out, off_t at, off_t count) {
    std::array<char, kOwnBlock> block;
    const ssize_t got = ::pread(in, block.data(), std::min(block.size(), static_cast<std::size_t>(count)), at);
    return got <= 0 ? got : ::pwrite(out, block.data(), static_cast<std::size_t>(got), at);
}

/// 0 or an errno.
int copyRange(int in, int out, off_t at, off_t end) {
    while (at < end) {
        off_t source = at;
        off_t target = at;
        const auto count = static_cast<std::size_t>(std::min(end - at, kKernelBlock));
        ssize_t copied = ::copy_file_range(in, &source, out, &target, count, 0);
        if (copied <= 0) { // not between these two file systems
            copied = copyOwnBlock(in, out, at, end - at);
        }
        if (copied == 0) {
            return ENODATA; // it was cut while we read it
        }
        if (copied < 0 && errno != EINTR) {
            return errno;
        }
        at += std::max<ssize_t>(copied, 0);
    }
    return 0;
}

/// Where the next data begins. A file system that cannot tell counts as all data.
off_t dataFrom(int file, off_t at, off_t size) {
    const off_t found = ::lseek(file, at, SEEK_DATA);
    return found >= 0 ? found : errno == ENXIO ? size : at; // ENXIO: only a hole is left
}

off_t holeFrom(int file, off_t at, off_t size) {
    const off_t found = ::lseek(file, at, SEEK_HOLE);
    return found >= 0 ? std::min(found, size) : size;
}

int copyContent(int in, int out, off_t size) {
    for (off_t at = dataFrom(in, 0, size); at < size;) {
        const off_t end = holeFrom(in, at, size);
        if (const int failure = copyRange(in, out, at, end); failure != 0) {
            return failure;
        }
        at = dataFrom(in, end, size);
    }
    return ::ftruncate(out, size) == 0 ? 0 : errno; // a hole at the end
}

Result<void> copyFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    // A pipe must not keep us waiting for its other end.
    const FileDescriptor in(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat source {};
    if (in.number() < 0 || ::fstat(in.number(), &source) != 0) {
        return posixError(errno);
    }
    if (!S_ISREG(source.st_mode)) {
        return posixError(EINVAL);
    }
    const FileDescriptor out(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, (source.st_mode & 0777) | S_IWUSR));
    if (out.number() < 0) {
        return posixError(errno);
    }
    if (const int failure = copyContent(in.number(), out.number(), source.st_size); failure != 0) {
        ::unlink(to.c_str());
        return posixError(failure);
    }
    const std::array times{source.st_atim, source.st_mtim};
    ::futimens(out.number(), times.data());
    return {};
}

Result<void> copyEntry(const std::filesystem::directory_entry& entry, const std::filesystem::path& to) {
    std::error_code failure;
    if (entry.is_symlink(failure)) {
        std::filesystem::copy_symlink(entry.path(), to, failure);
        return resultOf(failure);
    }
    if (entry.is_directory(failure)) {
        std::filesystem::create_directory(to, failure);
        return resultOf(failure);
    }
    return copyFile(entry.path(), to);
}

Result<void> copyInside(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code failure;
    std::filesystem::create_directory(to, failure);
    std::filesystem::recursive_directory_iterator entry;
    if (!failure) {
        entry = std::filesystem::recursive_directory_iterator(from, failure);
    }
    for (const std::filesystem::recursive_directory_iterator end; !failure && entry != end; entry.increment(failure)) {
        if (auto copied = copyEntry(*entry, to / entry->path().lexically_relative(from)); !copied) {
            return copied;
        }
    }
    return resultOf(failure);
}

bool isInside(const std::filesystem::path& path, const std::filesystem::path& folder) {
    std::error_code ignored;
    const auto inner = std::filesystem::weakly_canonical(path, ignored);
    const auto outer = std::filesystem::weakly_canonical(folder, ignored);
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

} // namespace

Result<void> copyItem(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code ignored;
    if (!std::filesystem::is_directory(from, ignored)) {
        return copyFile(from, to);
    }
    if (isInside(to, from) || std::filesystem::exists(std::filesystem::symlink_status(to, ignored))) {
        return posixError(EINVAL);
    }
    auto copied = copyInside(from, to);
    if (!copied) {
        std::filesystem::remove_all(to, ignored);
    }
    return copied;
}

} // namespace velmo::internal
