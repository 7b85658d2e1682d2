#pragma once

#include "compositor/NameTagText.h"
#include "media/PixelBuffer.h"

namespace velmo::internal {

/// The name tag of the column, drawn when its text or the size of the frame changes. Video queue.
class NameTagCache {
public:
    /// Premultiplied BGRA. Null when the text has no room; that is tried again each time. Allocates only for a new tag.
    FrameRef find(const NameTagText& text, int columnWidth, int frameHeight);

private:
    NameTagText text_;
    int columnWidth_ = 0;
    int frameHeight_ = 0;
    FrameRef picture_;
};

} // namespace velmo::internal
