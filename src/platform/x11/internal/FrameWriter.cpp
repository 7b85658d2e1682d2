#include "platform/x11/internal/FrameWriter.h"

#include "platform/x11/internal/Nv12Convert.h"

namespace velmo::x11 {
namespace {

/// Converting this many pixels more costs less than beginning another rectangle.
constexpr std::int64_t kPixelsPerRect = 1024;

/// Grown to whole 2x2 blocks, within the buffer.
PixelRect evened(const PixelRect& rect, const FrameFormat& format) {
    const int left = rect.x & ~1;
    const int top = rect.y & ~1;
    const PixelRect grown{left, top, (rect.right() + 1) / 2 * 2 - left, (rect.bottom() + 1) / 2 * 2 - top};
    return grown.intersected({0, 0, format.width, format.height});
}

} // namespace

std::unique_ptr<FrameWriter> FrameWriter::create(const FrameFormat& format) {
    std::unique_ptr<FrameWriter> writer(new FrameWriter(format));
    for (int i = 0; i < format.bufferCount; ++i) {
        FrameRef frame = PixelBuffer::create(format.pixels, format.width, format.height);
        if (frame == nullptr) {
            return nullptr;
        }
        writer->slots_.push_back({std::move(frame), Region(PixelRect{0, 0, format.width, format.height})});
    }
    return writer;
}

void FrameWriter::setSource(int width, int height) {
    if (width == sourceWidth_ && height == sourceHeight_) {
        return;
    }
    sourceWidth_ = width;
    sourceHeight_ = height;
    const int extraColumns = width - format_.width;
    const int extraRows = height - format_.height;
    if ((extraColumns == 0 || extraColumns == 1) && (extraRows == 0 || extraRows == 1)) {
        scaler_.reset();
        scaledPixels_ = {};
    } else {
        scaler_.emplace(width, height, format_.width, format_.height);
        scaledPixels_.resize(static_cast<std::size_t>(format_.width) * static_cast<std::size_t>(format_.height) * 4);
        scaled_ = {scaledPixels_.data(), std::ptrdiff_t{4} * format_.width, format_.width, format_.height, false};
    }
    invalidate(Region(PixelRect{0, 0, width, height}));
}

void FrameWriter::invalidate(const Region& region) {
    Region target;
    if (scaler_) {
        region.forEach([&](const PixelRect& rect) { target.add(scaler_->affectedBy(rect)); });
        unscaled_.add(target);
    } else {
        target = region;
    }
    target.intersect(PixelRect{0, 0, format_.width, format_.height});
    for (Slot& slot : slots_) {
        slot.stale.add(target);
    }
}

bool FrameWriter::hasFreeBuffer() const {
    return std::any_of(slots_.begin(), slots_.end(), [](const Slot& slot) { return !slot.frame->isShared(); });
}

FrameWriter::Slot* FrameWriter::cheapestFree() {
    Slot* cheapest = nullptr;
    for (Slot& slot : slots_) {
        if (!slot.frame->isShared() && (cheapest == nullptr || slot.stale.area() < cheapest->stale.area())) {
            cheapest = &slot;
        }
    }
    return cheapest;
}

FrameRef FrameWriter::write(const Picture& picture) {
    Slot* slot = cheapestFree();
    if (slot == nullptr) {
        return nullptr;
    }
    if (scaler_) {
        scaleChanged(picture);
        convert(scaled_, *slot);
    } else {
        convert(picture, *slot);
    }
    slot->stale.clear();
    return slot->frame;
}

void FrameWriter::scaleChanged(const Picture& picture) {
    scaled_.hasAlpha = picture.hasAlpha;
    unscaled_.forEach([&](const PixelRect& rect) { scaler_->scale(picture, scaled_, rect); });
    unscaled_.clear();
}

void FrameWriter::convert(const Picture& picture, Slot& slot) {
    coverWithFewRects(slot.stale, kPixelsPerRect, rects_);
    for (const PixelRect& rect : rects_) {
        if (format_.pixels == PixelFormat::nv12) {
            convertToNv12(picture, *slot.frame, evened(rect, format_));
        } else {
            copyToBgra(picture, *slot.frame, rect);
        }
    }
}

} // namespace velmo::x11
