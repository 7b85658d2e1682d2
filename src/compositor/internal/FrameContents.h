#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "compositor/BubbleInfo.h"
#include "compositor/NameTagText.h"
#include "compositor/internal/CropWindow.h"
#include "media/PixelBuffer.h"

#include <memory>
#include <optional>
#include <span>
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

/// A bubble or phone window, and the latest picture of its own stream.
struct LiveBubble {
    BubbleInfo info;
    FrameRef picture; ///< null: its stream has sent none
};

/// The camera beside the picture.
struct Column {
    /// One that has slid in less cannot be seen and is left out.
    static constexpr double kLeastSlide = 0.001;

    double slide = 0; ///< 0 to 1, before it is smoothed
    bool left = true;
    FrameRef camera; ///< in the format of the frame; null or in another: a flat colour stands for it
    std::shared_ptr<const NameTagText> nameTag;
};

/// All that one frame shows of the state of the compositor.
struct FrameContents {
    CropWindow window{};
    Spotlight spotlight{};
    std::optional<PointerFigure> pointerFigure{};
    Rect screen{0, 0, 1, 1}; ///< the captured screen in global points
    std::span<const LiveBubble> bubbles{};
    std::optional<Column> column{};
};

} // namespace velmo::internal
