#include "base/AtomicFile.h"

#include "base/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

/// 0, or the errno of the step that failed.
int writeDurably(int descriptor, const std::filesystem::path& replaced, std::string_view content) {
    struct stat old {};
    if (::stat(replaced.c_str(), &old) == 0) {
        // A mode that cannot be kept is no reason to lose the content.
        static_cast<void>(::fchmod(descriptor, old.st_mode & 0777));
    }
    return writeAll(descriptor, content) && ::fsync(descriptor) == 0 ? 0 : errno;
}

std::filesystem::path folderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

} // namespace

void syncFolder(const std::filesystem::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.number() >= 0) {
        ::fsync(descriptor.number());
    }
}

Result<void> writeFileAtomically(const std::filesystem::path& file, std::string_view content) {
    std::error_code ignored;
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(file, ignored);
    const std::filesystem::path& target = resolved.empty() ? file : resolved; // a link stays a link
    const std::filesystem::path folder = folderOf(target);

    std::string fresh = (folder / ("." + target.filename().native() + ".XXXXXX")).native();
    const FileDescriptor descriptor(::mkostemp(fresh.data(), O_CLOEXEC));
    if (descriptor.number() < 0) {
        return posixError(errno);
    }
    int failure = writeDurably(descriptor.number(), target, content);
    if (failure == 0 && ::rename(fresh.c_str(), target.c_str()) != 0) {
        failure = errno;
    }
    if (failure != 0) {
        ::unlink(fresh.c_str());
        return posixError(failure);
    }
    syncFolder(folder);
    return {};
}

Result<std::string> readWholeFile(const std::filesystem::path& file) {
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (descriptor.number() < 0) {
        return posixError(errno);
    }
    std::string content;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = ::read(descriptor.number(), block.data(), block.size());
        if (count == 0) {
            return content;
        }
        if (count < 0 && errno != EINTR) {
            return posixError(errno);
        }
        content.append(block.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

Result<std::filesystem::path> keepDamagedFileAside(const std::filesystem::path& file) {
    for (int n = 1;; ++n) {
        std::filesystem::path aside = file;
        aside += ".damaged-" + std::to_string(n);
        if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
            return aside;
        }
        if (errno != EEXIST) {
            return posixError(errno);
        }
    }
}

Result<void> renameWithoutReplacing(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return posixError(errno);
    }
    // This file system cannot tell and rename at once, so somebody else may still come between.
    std::error_code unknown;
    const auto kind = std::filesystem::symlink_status(to, unknown).type();
    if (kind != std::filesystem::file_type::not_found) {
        return posixError(kind == std::filesystem::file_type::none ? unknown.value() : EEXIST);
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? Result<void>() : posixError(errno);
}

} // namespace velmo
