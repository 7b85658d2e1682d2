#include "media/AudioTimeline.h"

#include "media/internal/SincTable.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmo {

namespace {

using internal::SincTable;

constexpr int kChannels = 2;
constexpr std::size_t kNeighbours = 4;   // buffers on each side that a stamp is compared with
constexpr double kJump = 0.008;          // seconds; with the drift's own lag this stays below 10 ms
constexpr double kSmoothing = 0.5;       // seconds over which small deviations are averaged
constexpr double kCorrectionTime = 4.0;  // seconds in which a deviation would be made good
constexpr double kMaxCorrection = 0.002; // 3.5 cents, which nobody hears
constexpr std::size_t kFadeFrames = 144; // 3 ms at 48 kHz
constexpr std::size_t kSilenceFrames = 1024;
constexpr std::size_t kCompactAt = 8192; // frames read before the front of a run is given up

std::size_t framesIn(const std::vector<float>& interleaved) {
    return interleaved.size() / kChannels;
}

bool fits(const AudioRef& sound, int sampleRate) {
    const AudioFormat wanted{static_cast<double>(sampleRate), kChannels, AudioFormat::Sample::float32, true};
    return sound && sound->frames() > 0 && sound->format() == wanted;
}

} // namespace

AudioTimeline::AudioTimeline(int sampleRate, Sink sink) : sampleRate_(sampleRate), sink_(std::move(sink)) {}

void AudioTimeline::push(MediaTime time, AudioRef sound) {
    if (!time.isValid() || !fits(sound, sampleRate_)) {
        return;
    }
    const int frames = sound->frames();
    arrivals_.push_back(
        {framesPushed_, time.seconds() - static_cast<double>(framesPushed_) / sampleRate_, std::move(sound)});
    framesPushed_ += frames;
    while (arrivals_.size() - placed_ > kNeighbours) {
        placeNext();
    }
}

void AudioTimeline::advanceTo(MediaTime time) {
    if (!time.isValid() || framesPushed_ == 0) {
        return;
    }
    const double end = time.seconds();
    while (placed_ < arrivals_.size() &&
           arrivals_[placed_].offset + static_cast<double>(arrivals_[placed_].framesBefore) / sampleRate_ < end) {
        placeNext();
    }
    if (placed_ == arrivals_.size() && predictedEnd() < end) {
        endRun();
        emitSilence(std::llround(end * sampleRate_) - written_);
    }
}

void AudioTimeline::finish() {
    while (placed_ < arrivals_.size()) {
        placeNext();
    }
    endRun();
}

// The median of the stamps around it: it ignores single stamps that are off, and keeps a lasting step exactly where
// it happened.
double AudioTimeline::filteredStamp() const {
    const std::size_t first = placed_ > kNeighbours ? placed_ - kNeighbours : 0;
    const std::size_t last = std::min(placed_ + kNeighbours, arrivals_.size() - 1);
    // As many on one side as on the other: otherwise the side with more would pull a step towards itself.
    const std::size_t reach = std::min(placed_ - first, last - placed_);
    std::array<double, 2 * kNeighbours + 1> offsets{};
    const std::size_t count = 2 * reach + 1;
    for (std::size_t i = 0; i < count; ++i) {
        offsets[i] = arrivals_[placed_ - reach + i].offset;
    }
    std::nth_element(offsets.begin(), offsets.begin() + static_cast<std::ptrdiff_t>(reach),
                     offsets.begin() + static_cast<std::ptrdiff_t>(count));
    return offsets[reach] + static_cast<double>(arrivals_[placed_].framesBefore) / sampleRate_;
}

void AudioTimeline::placeNext() {
    const double stamp = filteredStamp();
    const AudioRef sound = std::move(arrivals_[placed_].sound);
    if (placed_ == kNeighbours) {
        arrivals_.pop_front();
    } else {
        ++placed_;
    }
    std::span<const float> frames = sound->floats();
    const double error = stamp - predictedEnd();
    if (!running_ || std::abs(error) > kJump) {
        endRun();
        beginRun(stamp, frames);
    } else {
        const double weight = 1 - std::exp(-sound->frames() / (sampleRate_ * kSmoothing));
        smoothedError_ += (error - smoothedError_) * weight;
        step_ = 1 - std::clamp(smoothedError_ / kCorrectionTime, -kMaxCorrection, kMaxCorrection);
    }
    if (!frames.empty()) {
        source_.insert(source_.end(), frames.begin(), frames.end());
        resample(false);
        emit(kFadeFrames);
    }
}

void AudioTimeline::beginRun(double stamp, std::span<const float>& frames) {
    const std::int64_t lead = std::llround(stamp * sampleRate_) - written_;
    if (lead < 0) {
        const auto cut = std::min(static_cast<std::size_t>(-lead), frames.size() / kChannels);
        frames = frames.subspan(cut * kChannels);
        ++cuts_;
        if (frames.empty()) {
            return;
        }
    } else if (lead > 0) {
        ++gaps_;
        emitSilence(lead);
    }
    source_.assign((SincTable::kHalf - 1) * kChannels, 0.0F);
    position_ = SincTable::kHalf - 1;
    step_ = 1;
    smoothedError_ = 0;
    runFrames_ = 0;
    running_ = true;
}

void AudioTimeline::endRun() {
    if (!running_) {
        return;
    }
    resample(true);
    const std::size_t frames = framesIn(output_);
    const std::size_t faded = std::min(kFadeFrames, frames);
    for (std::size_t i = 0; i < faded; ++i) {
        const float gain = static_cast<float>(faded - i - 1) / static_cast<float>(faded);
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            output_[(frames - faded + i) * kChannels + channel] *= gain;
        }
    }
    emit(0);
    running_ = false;
    source_.clear();
}

void AudioTimeline::resample(bool toEnd) {
    const double end = static_cast<double>(framesIn(source_)) - (toEnd ? 0.0 : SincTable::kHalf);
    if (toEnd) {
        source_.insert(source_.end(), SincTable::kHalf * kChannels, 0.0F);
    }
    const SincTable& table = SincTable::shared();
    while (position_ < end) {
        const std::array<float, 2> frame = table.at(source_.data(), position_);
        const float gain =
            runFrames_ < static_cast<std::int64_t>(kFadeFrames) ? static_cast<float>(runFrames_ + 1) / kFadeFrames : 1;
        output_.push_back(frame[0] * gain);
        output_.push_back(frame[1] * gain);
        position_ += step_;
        ++runFrames_;
    }
    const auto read = static_cast<std::size_t>(position_) - (SincTable::kHalf - 1);
    if (read > kCompactAt) {
        source_.erase(source_.begin(), source_.begin() + static_cast<std::ptrdiff_t>(read * kChannels));
        position_ -= static_cast<double>(read);
    }
}

void AudioTimeline::emit(std::size_t keptFrames) {
    const std::size_t frames = framesIn(output_);
    if (frames <= keptFrames) {
        return;
    }
    const std::size_t count = frames - keptFrames;
    sink_(std::span<const float>(output_).first(count * kChannels));
    output_.erase(output_.begin(), output_.begin() + static_cast<std::ptrdiff_t>(count * kChannels));
    written_ += static_cast<std::int64_t>(count);
}

void AudioTimeline::emitSilence(std::int64_t frames) {
    static constexpr std::array<float, kSilenceFrames * kChannels> kSilence{};
    while (frames > 0) {
        const auto count = std::min<std::size_t>(static_cast<std::size_t>(frames), kSilenceFrames);
        sink_(std::span<const float>(kSilence).first(count * kChannels));
        written_ += static_cast<std::int64_t>(count);
        frames -= static_cast<std::int64_t>(count);
    }
}

// Where sound that is appended to the run now would come to lie, in seconds.
double AudioTimeline::predictedEnd() const {
    const double waiting =
        running_ ? static_cast<double>(framesIn(output_)) + (static_cast<double>(framesIn(source_)) - position_) : 0;
    return (static_cast<double>(written_) + waiting) / sampleRate_;
}

} // namespace velmo
