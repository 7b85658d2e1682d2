#pragma once

#include "base/Ref.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace velmo {

/// What the bytes mean. Both are 8 bits a component.
enum class PixelFormat : std::uint32_t {
    nv12, ///< "420v": Rec. 709 video range; plane 0 luma, plane 1 interleaved Cb Cr at half size (rounded up)
    bgra, ///< "BGRA": one plane, full range sRGB, premultiplied alpha
};

/// Colour tags as they go into a file (H.273 code points; 1 is Rec. 709, 2 unspecified).
struct ColorTags {
    std::uint8_t primaries = 1;
    std::uint8_t transfer = 1;
    std::uint8_t matrix = 1;
    friend bool operator==(const ColorTags&, const ColorTags&) = default;
};

/// One plane of a picture: `height` rows of `width` units, `stride` bytes apart, first row on top.
/// A unit is one byte of luma, two bytes of Cb Cr, or four bytes of BGRA.
struct PlaneView {
    std::uint8_t* data = nullptr;
    std::ptrdiff_t stride = 0;
    int width = 0;
    int height = 0;

    std::uint8_t* row(int y) const { return data + y * stride; }
};

class PixelBuffer;
using FrameRef = Ref<PixelBuffer>;

/// A counted picture. Whoever takes it from a pool or makes it may write until it is handed on;
/// after that nobody does. Rows start on 64-byte boundaries and each plane ends in 64 readable spare bytes.
class PixelBuffer {
public:
    /// A buffer of its own, outside any pool. Null when width or height is below 1 or memory is out.
    static FrameRef create(PixelFormat format, int width, int height);

    PixelFormat format() const { return format_; }
    int width() const { return width_; }
    int height() const { return height_; }
    int planeCount() const { return format_ == PixelFormat::nv12 ? 2 : 1; }
    PlaneView plane(int index) const { return planes_[index]; }
    std::size_t byteCount() const { return bytes_; }

    const ColorTags& colorTags() const { return tags_; }
    void setColorTags(const ColorTags& tags) { tags_ = tags; }

    void retain() const { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() const;
    /// Whether anybody but the caller's one reference holds it. Once false it stays false until the caller shares it
    /// again, and what others read before is done: a maker may write into it anew.
    bool isShared() const { return references_.load(std::memory_order_acquire) > 1; }

private:
    friend class PixelBufferPool;
    struct PoolCore;

    PixelBuffer() = default;
    ~PixelBuffer() = default;
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    struct FreeMemory {
        void operator()(std::uint8_t* memory) const;
    };

    PixelFormat format_ = PixelFormat::nv12;
    int width_ = 0;
    int height_ = 0;
    PlaneView planes_[2];
    std::size_t bytes_ = 0;
    ColorTags tags_;
    std::unique_ptr<std::uint8_t, FreeMemory> memory_;
    std::shared_ptr<PoolCore> home_; // the pool it returns to, absent for a buffer of its own
    mutable std::atomic<int> references_{1};
};

/// Reuses buffers of one format and size. What a burst has made beyond the minimum goes back to the system, one by one,
/// when it has long not been needed. Outstanding buffers stay valid when the pool is gone.
/// The pool belongs to one thread; buffers are released on any.
class PixelBufferPool {
public:
    /// Makes `minimumCount` buffers at once. Null when the size is not possible or memory is out.
    static std::unique_ptr<PixelBufferPool> create(PixelFormat format, int width, int height, int minimumCount);
    ~PixelBufferPool();

    /// A buffer with undefined contents and default tags; beyond the minimum count it allocates.
    /// Null when memory is out.
    FrameRef take();

    PixelFormat format() const { return format_; }
    int width() const { return width_; }
    int height() const { return height_; }
    /// Buffers that there are, idle and out.
    int count() const { return count_; }

private:
    PixelBufferPool() = default;
    bool oneIsSpare(std::size_t idle);

    PixelFormat format_ = PixelFormat::nv12;
    int width_ = 0;
    int height_ = 0;
    int minimumCount_ = 0;
    int count_ = 0;
    int takes_ = 0;             // since it was last seen whether one is spare
    std::size_t leastIdle_ = 0; // after any of these
    std::shared_ptr<PixelBuffer::PoolCore> core_;
};

} // namespace velmo
