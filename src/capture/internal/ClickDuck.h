#pragma once

#include <span>

namespace velmo::internal {

// All in seconds, except the gain.
inline constexpr double kDuckBefore = 0.012; ///< the duck starts this long before the event
inline constexpr double kDuckAfter = 0.085;  ///< and ends this long after it
inline constexpr double kDuckFade = 0.006;   ///< at each end of the duck
inline constexpr double kDuckGain = 0.08;

/// The gain, from `kDuckGain` to 1, at time `time` around the events `clicks`; of several the lowest.
double clickGain(double time, std::span<const double> clicks);

/// Multiplies the frames near an event by their gain, in place. `samples` is one plane of `channels` interleaved
/// channels whose first frame is at `start`; at most `frames` frames are touched, fewer when the plane holds fewer.
void duckClicks(std::span<float> samples, int channels, int frames, double sampleRate, double start,
                std::span<const double> clicks);

} // namespace velmo::internal
