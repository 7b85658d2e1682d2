#include "SoundEvents.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/samplefmt.h>
}

namespace {

constexpr double kLongestPause = 0.020;

float loudest(const AVFrame& frame, int index) {
    const int channels = frame.ch_layout.nb_channels;
    const bool planar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    float peak = 0;
    for (int channel = 0; channel < channels; ++channel) {
        const auto* samples = reinterpret_cast<const float*>(frame.extended_data[planar ? channel : 0]);
        const float sample = planar ? samples[index] : samples[index * channels + channel];
        peak = std::max(peak, std::abs(sample));
    }
    return peak;
}

} // namespace

void SoundEvents::hear(const AVFrame& frame, double start, double threshold) {
    for (int i = 0; i < frame.nb_samples; ++i) {
        const double time = start + static_cast<double>(i) / frame.sample_rate;
        const bool loud = loudest(frame, i) > threshold;
        if (loud && !open_) {
            open_ = true;
            begin_ = time;
        }
        if (loud) {
            lastLoud_ = time;
        } else if (open_ && time - lastLoud_ > kLongestPause) {
            finish();
        }
    }
}

void SoundEvents::finish() {
    if (open_) {
        events_.emplace_back(begin_, lastLoud_);
        open_ = false;
    }
}

void SoundEvents::print() const {
    std::printf("[");
    for (std::size_t i = 0; i < events_.size(); ++i) {
        std::printf("%s[%.4f, %.4f]", i == 0 ? "" : ", ", events_[i].first, events_[i].second);
    }
    std::printf("]");
}
