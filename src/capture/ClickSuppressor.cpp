#include "capture/ClickSuppressor.h"

#include "capture/internal/ClickDuck.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr double kPickMargin = 0.02; // seconds
constexpr double kEventKept = 5.0;   // seconds
constexpr std::size_t kUsualEvents = 64;

bool isTreatable(const AudioFormat& format) {
    return format.sample == AudioFormat::Sample::float32 && format.sampleRate > 0;
}

AudioRef duckedCopy(const AudioBuffer& sound, double start, std::span<const double> clicks) {
    const AudioFormat& format = sound.format();
    const AudioRef copy = AudioBuffer::create(format, sound.frames());
    const std::span<float> samples = copy->floats();
    std::ranges::copy(sound.floats(), samples.begin());
    const int planes = format.interleaved ? 1 : format.channels;
    const int channels = format.interleaved ? format.channels : 1;
    const std::size_t planeSize = samples.size() / static_cast<std::size_t>(planes);
    for (int plane = 0; plane < planes; ++plane) {
        internal::duckClicks(samples.subspan(static_cast<std::size_t>(plane) * planeSize, planeSize), channels,
                             sound.frames(), format.sampleRate, start, clicks);
    }
    return copy;
}

} // namespace

ClickSuppressor::ClickSuppressor() {
    clicks_.reserve(kUsualEvents);
    picked_.reserve(kUsualEvents);
}

void ClickSuppressor::note(double time) {
    const std::lock_guard guard(lock_);
    clicks_.push_back(time);
    std::erase_if(clicks_, [time](double each) { return each < time - kEventKept; });
}

void ClickSuppressor::pick(double start, double end) {
    const double after = start - internal::kDuckAfter - kPickMargin;
    const double before = end + internal::kDuckBefore + kPickMargin;
    picked_.clear();
    const std::lock_guard guard(lock_);
    std::ranges::copy_if(clicks_, std::back_inserter(picked_),
                         [&](double each) { return after < each && each < before; });
}

Sample ClickSuppressor::process(const Sample& sample) {
    if (!enabled() || !sample.audio || !isTreatable(sample.audio->format())) {
        return sample;
    }
    const AudioBuffer& sound = *sample.audio;
    const double start = sample.presentation().seconds();
    pick(start, start + sound.frames() / sound.format().sampleRate);
    if (picked_.empty() || sound.floats().empty()) {
        return sample;
    }
    Sample quiet;
    quiet.timing = sample.timing;
    quiet.audio = duckedCopy(sound, start, picked_);
    return quiet;
}

} // namespace velmo
