#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
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

    Point center{0.5, 0.5};
    double scale = 1;
    Point spot{0.5, 0.5};
    double spotAlpha = 0; ///< 0 is no light at all
    std::optional<Bubble> bubble;
};

/// What `ZoomProcessor::render` must make of a picture: its laws in plain double arithmetic, one component at a time,
/// rounded where the light has fallen on the picture and once more where the bubble lies on it. Slow on purpose;
/// shares nothing with the renderer but the buffers and the drawing of the figure.
FrameRef referenceRender(const PixelBuffer& source, const ReferenceScene& scene);

/// The screen through the zoom window, and nothing else.
FrameRef referenceRender(const PixelBuffer& source, Point center, double scale);

} // namespace velmo::test
