#include "media/AudioBuffer.h"

#include <algorithm>

namespace velmo {

AudioRef AudioBuffer::create(const AudioFormat& format, int frames) {
    auto ref = AudioRef::adopt(new AudioBuffer);
    AudioBuffer& buffer = *ref;
    const std::size_t width = format.sample == AudioFormat::Sample::float32 ? sizeof(float) : 2;
    buffer.format_ = format;
    buffer.frames_ = std::max(frames, 0);
    buffer.size_ =
        width * static_cast<std::size_t>(std::max(format.channels, 0)) * static_cast<std::size_t>(buffer.frames_);
    buffer.data_ = std::make_unique<std::byte[]>(buffer.size_);
    return ref;
}

} // namespace velmo
