#pragma once

#include <cstdint>
#include <optional>

namespace velmo::x11 {

/// Says when a picture is to be taken. Times are nanoseconds of one clock.
///
/// A picture follows what is painted, shortly after it, and not a grid of its own: a grid that beats against an
/// application's timer takes one of its pictures twice and misses the next. The rate is kept by credit: each picture
/// costs 1, an interval earns 1, and up to `kMaxCredit` is saved, so pictures painted early because the ones before
/// were late still go at once. Over any time t there are at most t / interval + `kMaxCredit` pictures.
///
/// A pointer that moves all the time would make such a grid. So after a picture of something painted it waits a little
/// longer than an interval for the next painting, and is shown along with it.
class FramePacer {
public:
    static constexpr double kMaxCredit = 2.5;
    /// Enough credit to go: what is missing is paid by the next interval.
    static constexpr double kNeededCredit = 0.85;
    /// However much credit there is, pictures are this part of an interval apart.
    static constexpr double kLeastGap = 0.35;
    /// Painting has this long to come to its end before the picture is taken.
    static constexpr std::int64_t kSettleTime = 2'000'000;

    /// So many intervals after a picture of something painted one is taken for the pointer's sake alone, ...
    static constexpr double kPointerPatience = 1.3;
    /// ... and only from credit that a painter who keeps the rate can do without: he never earns it back.
    static constexpr double kPointerCredit = 2;

    explicit FramePacer(std::int64_t interval) : interval_(interval) {}

    void setInterval(std::int64_t interval) { interval_ = interval; }
    std::int64_t interval() const { return interval_; }
    /// Something was painted. Only the first since the last picture counts.
    void damaged(std::int64_t now);
    /// The pointer may have been moved.
    void pointerMoved(std::int64_t now);
    /// A picture is wanted at once, whatever the credit.
    void demand(std::int64_t now);
    /// When to look; absent while nothing was painted.
    std::optional<std::int64_t> due() const;
    /// There is a time to look, and a painting would bring it forward.
    bool waitsForPainting() const;
    /// The picture of what was painted is out.
    void delivered(std::int64_t now);
    /// What was called painted is as it was: what is left is a pointer that moved, with its own time.
    void paintedNothing();
    /// What was painted is not to be seen: no picture.
    void dismissed();

private:
    std::int64_t dueAfter(std::int64_t change, double leastGap) const;
    double creditAt(std::int64_t now) const;

    std::int64_t interval_;
    std::optional<std::int64_t> firstDamage_;
    std::optional<std::int64_t> firstMove_; ///< of the pointer, since the last picture
    bool demanded_ = false;
    bool lastWasPainted_ = false; ///< the last picture was not for the pointer alone
    double credit_ = kMaxCredit;
    std::int64_t creditTime_ = 0; ///< when `credit_` held: at the last picture
};

} // namespace velmo::x11
