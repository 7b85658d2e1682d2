#pragma once

#include "media/PixelBuffer.h"

#include <string>
#include <vector>

namespace velmo::bench {

/// What a screen shows while a class is recorded, painted.
enum class Content {
    still,   ///< a page of text, always the same
    lecture, ///< the page, a word more every third frame, a new page every 10 s
    scroll,  ///< a long page that moves up by 8 rows a frame
    motion,  ///< every pixel changes: two drifting textures
};

inline constexpr Content kContents[] = {Content::still, Content::lecture, Content::scroll, Content::motion};
const char* nameOf(Content content);

/// Paints frames in order. The same frames every time.
class Painter {
public:
    Painter(Content content, int width, int height);
    /// The picture is the painter's and changes with the next call only where `still` does not hold; a new buffer is
    /// made for each picture that differs from the one before.
    FrameRef next();

private:
    FrameRef page(int firstRow, int words) const;
    FrameRef texture() const;

    Content content_;
    int width_;
    int height_;
    int frame_ = 0;
    FrameRef last_;
};

} // namespace velmo::bench
