#pragma once

#include <cstdint>
#include <deque>

namespace velmo {

/// Judges how long the disk still lasts for a recording, from its growth over the last minute. A value without a clock
/// of its own.
class DiskGuard {
public:
    enum class Verdict {
        enough,
        low, ///< a few minutes are left; told once
        over ///< just enough to close the file well
    };

    /// `seconds` of any clock, increasing; `fileBytes` of the recording so far; `available` bytes on its disk.
    Verdict judge(double seconds, std::int64_t fileBytes, std::int64_t available);
    /// Recording time that is left at the present rate, by the last judgement; never negative.
    double secondsLeft() const { return secondsLeft_; }

private:
    struct Reading {
        double seconds;
        std::int64_t bytes;
    };

    double rate() const;

    std::deque<Reading> readings_; ///< of the last minute
    double secondsLeft_ = 0;
    bool lowTold_ = false;
};

} // namespace velmo
