#pragma once

#include <csignal>
#include <sys/resource.h>

namespace velmo::test {

/// Lets no file of this process grow past some bytes, as a full disk would.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : oldHandler_(::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit small{bytes, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        ::signal(SIGXFSZ, oldHandler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    sighandler_t oldHandler_;
    rlimit old_{};
};

} // namespace velmo::test
