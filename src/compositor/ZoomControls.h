#pragma once

#include "base/Geometry.h"

#include <algorithm>
#include <optional>

namespace velmo {

/// What the user has asked of the zoom, the spotlight and the column: the input of one step of motion.
/// Positions are in normalised screen space: 0 to 1 across the captured screen, y up.
struct ZoomControls {
    bool enabled = false;
    double level = 2.0;         ///< from `kLowestLevel` to `kHighestLevel`
    Point mouse{0.5, 0.5};      ///< outside 0 to 1 while the pointer is on another display
    std::optional<Rect> region; ///< while present it overrides `enabled` and `level`
    bool follow = true;         ///< the window follows `mouse`; else it holds `anchor`
    Point anchor{0.5, 0.5};
    bool spotlight = false;
    bool columnOn = false;

    static constexpr double kLowestLevel = 1.05;
    static constexpr double kHighestLevel = 6.0;
    static constexpr double kNarrowestRegion = 0.05;

    /// The zoom factor that these controls ask for: 1 for none, up to 6 for the user's level, up to 20 for a region.
    double targetScale() const {
        if (region) {
            return 1.0 / std::max(kNarrowestRegion, region->width);
        }
        return enabled ? level : 1.0;
    }

    friend bool operator==(const ZoomControls&, const ZoomControls&) = default;
};

} // namespace velmo
