#pragma once

#include "media/Sample.h"

#include <algorithm>

namespace velmo::test {

/// `seconds` as a host time in nanoseconds.
inline MediaTime at(double seconds) {
    return MediaTime::fromSeconds(seconds);
}

/// A plain NV12 picture of one grey.
inline FrameRef picture(int width = 64, int height = 48, std::uint8_t luma = 100) {
    const FrameRef image = PixelBuffer::create(PixelFormat::nv12, width, height);
    for (int index = 0; index < image->planeCount(); ++index) {
        const PlaneView plane = image->plane(index);
        for (int y = 0; y < plane.height; ++y) {
            std::fill_n(plane.row(y), plane.width * (index + 1), index == 0 ? luma : std::uint8_t{128});
        }
    }
    return image;
}

inline Sample frame(MediaTime time, FrameRef image = picture()) {
    Sample sample;
    sample.timing = {MediaTime(1, 30), time, MediaTime::invalid()};
    sample.image = std::move(image);
    return sample;
}
inline Sample frame(double seconds, FrameRef image = picture()) {
    return frame(at(seconds), std::move(image));
}

/// Sound of one value in all its samples.
inline Sample sound(MediaTime time, int frames = 480, float value = 0.5f, const AudioFormat& format = {}) {
    Sample sample;
    sample.timing = {MediaTime(frames, 48000), time, MediaTime::invalid()};
    sample.audio = AudioBuffer::create(format, frames);
    if (format.sample == AudioFormat::Sample::float32) {
        std::ranges::fill(sample.audio->floats(), value);
    }
    return sample;
}
inline Sample sound(double seconds, int frames = 480, float value = 0.5f, const AudioFormat& format = {}) {
    return sound(at(seconds), frames, value, format);
}

} // namespace velmo::test
