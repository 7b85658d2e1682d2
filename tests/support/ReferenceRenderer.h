#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "compositor/BubbleInfo.h"
#include "compositor/NameTagText.h"
#include "media/PixelBuffer.h"

#include <optional>
#include <vector>

namespace velmo::test {

/// What one frame shows. Places are normalised, y up.
struct ReferenceScene {
    struct Bubble {
        Point at;
        double age = 0;
        std::vector<Color> colors;
        /// Where the sheet that it is drawn on begins, in whole frame pixels from the upper left, y down. Where lines
        /// are wider than the figure, the drawing comes out some levels apart at another place of a sheet.
        Point sheet{-400, -400};
    };

    /// A bubble or phone window, with the picture of its own stream if there is one.
    struct Surface {
        BubbleInfo info;
        FrameRef picture;
    };

    struct Column {
        double slide = 0; ///< 0 to 1, before it is smoothed
        bool left = true;
        FrameRef camera;
        std::optional<NameTagText> nameTag;
    };

    Point center{0.5, 0.5};
    double scale = 1;
    Point spot{0.5, 0.5};
    double spotAlpha = 0; ///< 0 is no light at all
    std::optional<Bubble> bubble;
    Rect screen{0, 0, 1, 1}; ///< in global points
    std::vector<Surface> surfaces{};
    std::optional<Column> column{};
};

/// What `ZoomProcessor::render` must make of a picture: its laws in plain double arithmetic, one component at a time,
/// one thing after the other over the whole frame, rounded once at the end. Slow on purpose; shares nothing with the
/// renderer but the buffers and the drawing of the figure and of the name tag.
FrameRef referenceRender(const PixelBuffer& source, const ReferenceScene& scene);

/// The screen through the zoom window, and nothing else.
FrameRef referenceRender(const PixelBuffer& source, Point center, double scale);

} // namespace velmo::test
