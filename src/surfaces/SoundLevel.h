#pragma once

#include <span>

namespace velmo {

/// What a meter shows for a stretch of interleaved stereo sound: 0 for -50 dB of average power and below, 1 for -8 dB
/// and above, even in between; of the first channel. Any thread.
double soundLevel(std::span<const float> interleaved);

} // namespace velmo
