#include "base/Clock.h"

#include <ctime>

namespace velmo {

MediaTime HostClock::now() const {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return MediaTime::fromNanoseconds(std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec);
}

const HostClock& HostClock::shared() {
    static const HostClock clock;
    return clock;
}

} // namespace velmo
