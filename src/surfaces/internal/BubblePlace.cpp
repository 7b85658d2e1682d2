#include "surfaces/internal/BubblePlace.h"

#include <algorithm>

namespace velmo::BubblePlace {
namespace {

constexpr Size kCameraOnly{960, 540};
constexpr double kCameraOnlyRaised = 30;

} // namespace

Point home(Home corner, const ScreenArea& screen, Size panel) {
    const Rect& free = screen.visible;
    const double x = corner == Home::left ? free.minX() + kHomeMargin : free.maxX() - panel.width - kHomeMargin;
    return {x, free.minY() + kHomeMargin};
}

Point initial(std::optional<Point> saved, Home corner, const std::vector<ScreenArea>& screens, Size panel) {
    const bool reachable =
        saved && std::ranges::any_of(screens, [&](const ScreenArea& screen) { return screen.frame.contains(*saved); });
    if (reachable) {
        return *saved;
    }
    return screens.empty() ? Point{} : home(corner, screens.front(), panel);
}

Rect resized(const Rect& old, Size size, const std::vector<ScreenArea>& screens) {
    Rect rect{old.midX() - size.width / 2, old.midY() - size.height / 2, size.width, size.height};
    if (screens.empty()) {
        return rect;
    }
    const auto under = std::ranges::find_if(
        screens, [&](const ScreenArea& screen) { return !screen.frame.intersection(rect).isEmpty(); });
    const Rect free = (under != screens.end() ? *under : screens.front()).visible;
    rect.x = std::min(std::max(rect.x, free.minX()), free.maxX() - rect.width);
    rect.y = std::min(std::max(rect.y, free.minY()), free.maxY() - rect.height);
    return rect;
}

Rect cameraOnly(const ScreenArea& screen) {
    return {screen.visible.midX() - kCameraOnly.width / 2,
            screen.visible.midY() - kCameraOnly.height / 2 + kCameraOnlyRaised, kCameraOnly.width, kCameraOnly.height};
}

} // namespace velmo::BubblePlace
