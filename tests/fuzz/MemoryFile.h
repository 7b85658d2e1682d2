#pragma once

#include "base/FileDescriptor.h"

#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace velmo::fuzz {

/// A file that needs no disk, also by a path of this process.
class MemoryFile {
public:
    explicit MemoryFile(std::span<const std::byte> bytes) : file_(memfd_create("fuzz", MFD_CLOEXEC)) {
        if (number() < 0 || ::write(number(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            std::abort();
        }
    }

    int number() const { return file_.number(); }
    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(number()); }

private:
    FileDescriptor file_;
};

} // namespace velmo::fuzz
