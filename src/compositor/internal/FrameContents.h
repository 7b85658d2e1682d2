#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "compositor/internal/CropWindow.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmo::internal {

/// The light around the pointer, at a place of the screen.
struct Spotlight {
    /// A fainter light cannot be seen and is left out.
    static constexpr double kLeastAlpha = 0.001;

    Point at{0.5, 0.5}; ///< normalised, y up
    double alpha = 0;   ///< 0 to 1, how far the rest is dimmed

    bool isLive() const { return alpha > kLeastAlpha; }
};

/// The soap bubble on the pointer, at one moment.
struct PointerFigure {
    Point at{0.5, 0.5}; ///< normalised, y up
    double age = 0;     ///< seconds, visible
    std::shared_ptr<const std::vector<Color>> colors;
};

/// All that one frame shows of the state of the compositor.
struct FrameContents {
    CropWindow window;
    Spotlight spotlight;
    std::optional<PointerFigure> pointerFigure;
};

} // namespace velmo::internal
