#include "capture/internal/ClickDuck.h"

#include <algorithm>

namespace velmo::internal {

namespace {

constexpr double kUntouchedGain = 0.999; // a frame at or above it stays as it is

} // namespace

double clickGain(double time, std::span<const double> clicks) {
    double gain = 1.0;
    for (const double click : clicks) {
        const double begin = click - kDuckBefore;
        const double end = click + kDuckAfter;
        if (time < begin - kDuckFade || time > end + kDuckFade) {
            continue;
        }
        const double distance = time < begin ? begin - time : std::max(time - end, 0.0);
        gain = std::min(gain, kDuckGain + (1 - kDuckGain) * std::min(distance / kDuckFade, 1.0));
    }
    return gain;
}

void duckClicks(std::span<float> samples, int channels, int frames, double sampleRate, double start,
                std::span<const double> clicks) {
    if (channels < 1 || frames < 1) {
        return;
    }
    const auto width = static_cast<std::size_t>(channels);
    const std::size_t count = std::min(samples.size() / width, static_cast<std::size_t>(frames));
    for (std::size_t i = 0; i < count; ++i) {
        const double gain = clickGain(start + static_cast<double>(i) / sampleRate, clicks);
        if (gain < kUntouchedGain) {
            for (float& sample : samples.subspan(i * width, width)) {
                sample = static_cast<float>(sample * gain);
            }
        }
    }
}

} // namespace velmo::internal
