#pragma once

#include "base/Ref.h"

#include <atomic>
#include <memory>
#include <span>

namespace velmo {

/// How sound is laid out in memory. Capture delivers 48 kHz, two channels, interleaved 32-bit float.
struct AudioFormat {
    enum class Sample { float32, int16 };

    double sampleRate = 48000;
    int channels = 2;
    Sample sample = Sample::float32;
    bool interleaved = true;

    friend bool operator==(const AudioFormat&, const AudioFormat&) = default;
};

class AudioBuffer;
using AudioRef = Ref<AudioBuffer>;

/// A counted stretch of sound: `frames` frames in `format`. Like a picture it is written only before it is handed on.
/// Interleaved sound is one plane; otherwise each channel has its own, one after the other.
class AudioBuffer {
public:
    static AudioRef create(const AudioFormat& format, int frames);

    const AudioFormat& format() const { return format_; }
    int frames() const { return frames_; }
    std::span<std::byte> bytes() const { return {data_.get(), size_}; }
    /// Only for `float32`: all samples of all channels.
    std::span<float> floats() const { return {reinterpret_cast<float*>(data_.get()), size_ / sizeof(float)}; }

    void retain() const { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() const {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

private:
    AudioBuffer() = default;
    ~AudioBuffer() = default;

    AudioFormat format_;
    int frames_ = 0;
    std::size_t size_ = 0;
    std::unique_ptr<std::byte[]> data_;
    mutable std::atomic<int> references_{1};
};

} // namespace velmo
