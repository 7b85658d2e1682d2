#pragma once

#include "base/Geometry.h"
#include "compositor/BubbleInfo.h"
#include "settings/PresenterStyle.h"

namespace velmo {

/// How the presenter's window looks at one moment. Points of the window, y up; opacities from 0 to 1.
struct PresenterFrame {
    Rect stage;          ///< where the camera is
    double corner = 0;   ///< radius
    double shadow = 0;   ///< opacity
    double border = 0;   ///< opacity
    double backdrop = 0; ///< opacity of the blurred desktop and, over it, of the tint
    friend bool operator==(const PresenterFrame&, const PresenterFrame&) = default;
};

/// The two ends of a flight.
namespace PresenterLayout {

/// In the bubble's place. `windowOrigin` in global points, as the bubble is.
PresenterFrame atBubble(const BubbleInfo& bubble, Point windowOrigin);
/// On the stage, in a window of the size `window`. The stage lies on whole points.
PresenterFrame onStage(PresenterStyle style, Size window);

} // namespace PresenterLayout

/// The way between bubble and stage as a function of time. A value.
class PresenterFlight {
public:
    enum class Way { in, out };
    static constexpr double kSeconds = 0.75;
    static constexpr double kBackdropOutSeconds = 0.6; ///< on the way out it is gone before the picture is home

    PresenterFlight(const PresenterFrame& from, const PresenterFrame& to, Way way) : from_(from), to_(to), way_(way) {}

    /// `from` up to 0, `to` from `kSeconds` on.
    PresenterFrame at(double seconds) const;
    bool isOver(double seconds) const { return seconds >= kSeconds; }
    /// Where it leads.
    const PresenterFrame& end() const { return to_; }

private:
    PresenterFrame from_;
    PresenterFrame to_;
    Way way_;
};

} // namespace velmo
