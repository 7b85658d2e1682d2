#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace velmo::test {

/// Lets this process open only so many files more.
class FewFiles {
public:
    explicit FewFiles(int more) {
        const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::close(next);
        ::getrlimit(RLIMIT_NOFILE, &old_);
        const rlimit few{static_cast<rlim_t>(next + more), old_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
    }
    ~FewFiles() { ::setrlimit(RLIMIT_NOFILE, &old_); }
    FewFiles(const FewFiles&) = delete;
    FewFiles& operator=(const FewFiles&) = delete;

private:
    rlimit old_{};
};

} // namespace velmo::test
