#pragma once

#include "media/PixelBuffer.h"
#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/PictureScaler.h"
#include "platform/x11/internal/Region.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

struct FrameFormat {
    PixelFormat pixels = PixelFormat::nv12;
    int width = 0;
    int height = 0;
    int bufferCount = 0;
    friend bool operator==(const FrameFormat&, const FrameFormat&) = default;
};

/// Writes pictures into buffers that are handed on and never changed while anybody holds them. There are a given
/// number; each remembers which of its pixels are out of date, so only those are converted when it is used again.
/// A picture of another size is scaled; one that is a pixel larger at most is cut, because sizes are made even.
class FrameWriter {
public:
    /// Null when memory is out or the size is not possible.
    static std::unique_ptr<FrameWriter> create(const FrameFormat& format);

    const FrameFormat& format() const { return format_; }
    /// The next pictures have this size. Everything is out of date when it is another one than before.
    void setSource(int width, int height);
    /// These pixels of the picture are other ones now.
    void invalidate(const Region& region);
    /// Whether some buffer is held by nobody.
    bool hasFreeBuffer() const;
    /// The picture as it is now, as a frame that the caller may hand on; null while all buffers are held.
    FrameRef write(const Picture& picture);

private:
    struct Slot {
        FrameRef frame;
        Region stale;
    };
    explicit FrameWriter(const FrameFormat& format) : format_(format) {}
    Slot* cheapestFree();
    void scaleChanged(const Picture& picture);
    void convert(const Picture& picture, Slot& slot);

    FrameFormat format_;
    std::vector<Slot> slots_;
    int sourceWidth_ = 0;
    int sourceHeight_ = 0;
    std::optional<PictureScaler> scaler_; ///< absent when sizes are the same
    std::vector<std::uint8_t> scaledPixels_;
    Picture scaled_;
    Region unscaled_;              ///< of `scaled_`
    std::vector<PixelRect> rects_; ///< scratch
};

} // namespace velmo::x11
