#pragma once

#include "base/MediaTime.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace velmo {

/// Turns the jittery times at which a sound source is read into the times of its frames on the host clock.
///
/// What a read measures is right on average and wrong by some milliseconds each time; what counts frames is smooth
/// and drifts. The times given out count frames, on a line that is anchored on the median of the last reads and
/// follows it by at most `kMostSlew`. Where the median itself has moved by over `kStep` frames were lost, and the line
/// moves at once; where `kAnchorReads` reads in a row are off by `kGap` or more the source stood still, and it is
/// anchored anew on these.
///
/// For each read call `add`. False: keep the frames. True: call `next` for all frames kept, oldest first.
/// No thread of its own; allocates nothing.
class CaptureClock {
public:
    static constexpr int kAnchorReads = 5;
    static constexpr std::int64_t kGap = 40'000'000;     ///< ns
    static constexpr std::int64_t kStep = 8'000'000;     ///< ns
    static constexpr std::int64_t kMostSlew = 5'000'000; ///< ns a second
    static constexpr std::size_t kWindow = 50;           ///< reads, one second of 20 ms fragments

    explicit CaptureClock(int sampleRate);

    /// `frames` were read, the first of which was heard at `measured` by the host clock; absent when the source
    /// could not tell. True when the frames added so far can be timed.
    bool add(int frames, std::optional<MediaTime> measured);
    /// Time of the oldest frame not yet timed, and on past `frames` of them. Only after `add` was true, and for no
    /// more frames than were added. Absent when they would lie before frames already timed: drop them.
    std::optional<MediaTime> next(int frames);
    /// The source was opened again: forgets the line, but never gives out a time before the last one's end.
    void restart();

private:
    /// The last measurements, as offsets: measured time less the frame count's own time.
    class Offsets {
    public:
        void add(std::int64_t offset);
        void clear() { count_ = 0; }
        std::size_t size() const { return count_ < kWindow ? count_ : kWindow; }
        std::int64_t median() const;

    private:
        std::array<std::int64_t, kWindow> values_{};
        std::size_t count_ = 0;
    };

    std::int64_t nominal(std::int64_t frames) const;
    void anchorOn(const Offsets& offsets);
    void follow(std::int64_t length);

    int sampleRate_;
    std::int64_t added_ = 0;  // frames
    std::int64_t timed_ = 0;  // frames
    std::int64_t offset_ = 0; // ns, of the line given out
    bool anchored_ = false;
    Offsets near_;                        // reads on the line
    Offsets apart_;                       // reads in a row that are off it
    std::optional<std::int64_t> lastEnd_; // ns
};

} // namespace velmo
