#pragma once

#include "base/Geometry.h"

#include <optional>
#include <vector>

namespace velmo {

/// A screen as a bubble sees it, in global points.
struct ScreenArea {
    Rect frame;
    Rect visible; ///< less panels and docks
};

/// Where bubbles go. The first of `screens` is the main one.
namespace BubblePlace {

inline constexpr double kHomeMargin = 40;

enum class Home { left, right };

/// The lower corner where a panel stands that has no place of its own.
Point home(Home corner, const ScreenArea& screen, Size panel);
/// The saved place when it lies on a screen, else home on the main screen; 0, 0 without any.
Point initial(std::optional<Point> saved, Home corner, const std::vector<ScreenArea>& screens, Size panel);
/// `old` with another size around the same middle, then moved inside what is visible of its screen.
Rect resized(const Rect& old, Size size, const std::vector<ScreenArea>& screens);
/// 960 by 540 in the middle of the screen, a little raised.
Rect cameraOnly(const ScreenArea& screen);

} // namespace BubblePlace
} // namespace velmo
