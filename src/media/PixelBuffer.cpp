#include "media/PixelBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace velmo {

namespace {

constexpr std::size_t kAlignment = 64;
constexpr int kLargestSide = 1 << 15;
constexpr int kPatience = 256; // takes: some seconds of pictures

std::size_t aligned(std::size_t bytes) {
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

} // namespace

struct PixelBuffer::PoolCore {
    std::mutex lock;
    // protected by lock
    std::vector<PixelBuffer*> idle;
    bool open = true;
};

void PixelBuffer::FreeMemory::operator()(std::uint8_t* memory) const {
    std::free(memory);
}

FrameRef PixelBuffer::create(PixelFormat format, int width, int height) {
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) {
        return nullptr;
    }
    auto ref = FrameRef::adopt(new PixelBuffer);
    PixelBuffer& buffer = *ref;
    buffer.format_ = format;
    buffer.width_ = width;
    buffer.height_ = height;

    const int chromaWidth = (width + 1) / 2;
    const int chromaHeight = (height + 1) / 2;
    const bool planar = format == PixelFormat::nv12;
    const std::size_t stride0 = aligned(static_cast<std::size_t>(width) * (planar ? 1 : 4));
    const std::size_t size0 = stride0 * static_cast<std::size_t>(height) + kAlignment;
    const std::size_t stride1 = planar ? aligned(static_cast<std::size_t>(chromaWidth) * 2) : 0;
    const std::size_t size1 = planar ? stride1 * static_cast<std::size_t>(chromaHeight) + kAlignment : 0;

    buffer.bytes_ = aligned(size0) + aligned(size1);
    buffer.memory_.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, buffer.bytes_)));
    if (buffer.memory_ == nullptr) {
        return nullptr;
    }
    std::uint8_t* memory = buffer.memory_.get();
    std::memset(memory, 0, buffer.bytes_); // takes its pages now, not in the first frame that needs it
    buffer.planes_[0] = {memory, static_cast<std::ptrdiff_t>(stride0), width, height};
    if (planar) {
        buffer.planes_[1] = {memory + aligned(size0), static_cast<std::ptrdiff_t>(stride1), chromaWidth, chromaHeight};
    }
    return ref;
}

void PixelBuffer::release() const {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    auto* self = const_cast<PixelBuffer*>(this);
    const std::shared_ptr<PoolCore> home = std::move(self->home_);
    if (home != nullptr) {
        const std::lock_guard guard(home->lock);
        if (home->open) {
            home->idle.push_back(self);
            return;
        }
    }
    delete self;
}

std::unique_ptr<PixelBufferPool> PixelBufferPool::create(PixelFormat format, int width, int height, int minimumCount) {
    std::unique_ptr<PixelBufferPool> pool(new PixelBufferPool);
    pool->format_ = format;
    pool->width_ = width;
    pool->height_ = height;
    pool->minimumCount_ = minimumCount;
    pool->core_ = std::make_shared<PixelBuffer::PoolCore>();
    pool->core_->idle.reserve(static_cast<std::size_t>(minimumCount) * 4);
    std::vector<FrameRef> first;
    for (int i = 0; i < minimumCount; ++i) {
        first.push_back(pool->take());
        if (first.back() == nullptr) {
            return nullptr;
        }
    }
    return pool;
}

PixelBufferPool::~PixelBufferPool() {
    if (core_ == nullptr) {
        return;
    }
    std::vector<PixelBuffer*> idle;
    {
        const std::lock_guard guard(core_->lock);
        core_->open = false;
        idle.swap(core_->idle);
    }
    for (PixelBuffer* buffer : idle) {
        delete buffer;
    }
}

FrameRef PixelBufferPool::take() {
    PixelBuffer* buffer = nullptr;
    PixelBuffer* spare = nullptr;
    {
        const std::lock_guard guard(core_->lock);
        std::vector<PixelBuffer*>& idle = core_->idle;
        if (!idle.empty()) {
            buffer = idle.back();
            idle.pop_back();
        }
        if (oneIsSpare(idle.size())) {
            spare = idle.back();
            idle.pop_back();
        }
    }
    if (spare != nullptr) {
        delete spare;
        --count_;
    }
    FrameRef frame;
    if (buffer != nullptr) {
        buffer->references_.store(1, std::memory_order_relaxed);
        buffer->tags_ = {};
        frame = FrameRef::adopt(buffer);
    } else {
        frame = PixelBuffer::create(format_, width_, height_);
        count_ += frame ? 1 : 0;
    }
    if (frame) {
        frame->home_ = core_;
    }
    return frame;
}

/// Whether one could have been done without in all the takes since this was last seen.
bool PixelBufferPool::oneIsSpare(std::size_t idle) {
    leastIdle_ = takes_ == 0 ? idle : std::min(leastIdle_, idle);
    takes_ = (takes_ + 1) % kPatience;
    return takes_ == 0 && leastIdle_ > 0 && count_ > minimumCount_;
}

} // namespace velmo
