#pragma once

#include "base/MediaTime.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace velmo {

/// Turns jittery measurements of when a sound source was heard into the times of its frames on the host clock.
///
/// A single measurement is right on average and wrong by some milliseconds; a count of frames is smooth and drifts.
/// The times given out count frames, on a line that is anchored on the median of the last measurements and follows it
/// by at most `kMostSlew`. Where the median itself has moved by over `kStep` frames were lost, and the line moves at
/// once; where `kAnchorCount` measurements in a row are off by `kGap` or more the source stood still, and it is
/// anchored anew on these.
///
/// For each read: `add`; then, while `settled`, `next` for all frames not yet timed, oldest first.
/// No thread of its own; allocates nothing.
class CaptureClock {
public:
    static constexpr int kAnchorCount = 5;
    static constexpr std::int64_t kGap = 40'000'000;     ///< ns
    static constexpr std::int64_t kStep = 8'000'000;     ///< ns
    static constexpr std::int64_t kMostSlew = 5'000'000; ///< ns a second
    static constexpr std::size_t kWindow = 25;           ///< measurements

    explicit CaptureClock(int sampleRate);

    /// The next frame to be added was heard at `time` by the host clock.
    void observe(MediaTime time);
    void add(int frames) { added_ += frames; }
    /// Whether the frames added so far can be timed. Not before the first anchor, nor while a gap is suspected.
    bool settled() const { return anchored_ && apart_.size() == 0; }
    /// Time of the oldest frame not yet timed, and on past `frames` of them. Only while `settled`,
    /// and for no more frames than were added. Absent when they would lie before frames already timed: drop them.
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
    Offsets near_;                        // on the line
    Offsets apart_;                       // in a row off it
    std::optional<std::int64_t> lastEnd_; // ns
};

} // namespace velmo
