#pragma once

#include <filesystem>
#include <sys/fsuid.h>
#include <unistd.h>

namespace velmo::test {

/// Makes a folder that this thread can read but not change while this object lives, also for a test that runs as root.
/// What lies above it must be open to all.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(std::filesystem::path folder) : folder_(std::move(folder)) {
        using std::filesystem::perms;
        std::filesystem::permissions(folder_, perms::owner_read | perms::owner_exec | perms::group_read |
                                                  perms::group_exec | perms::others_read | perms::others_exec);
        if (::geteuid() == 0) {
            ::setfsuid(kNobody);
        }
    }
    ~ReadOnlyFolder() {
        ::setfsuid(::geteuid());
        std::error_code ignored;
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ignored);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    std::filesystem::path folder_;
};

} // namespace velmo::test
