#include "surfaces/RegionSelection.h"

#include <algorithm>
#include <cmath>

namespace velmo::RegionSelection {
namespace {

constexpr double kUnusableWidth = 120;

} // namespace

Rect dragged(Point start, Point mouse, Size screen) {
    const double aspect = screen.height / screen.width;
    const double dx = std::abs(mouse.x - start.x);
    const double dy = std::abs(mouse.y - start.y);
    double width = aspect * dx < dy ? dy / aspect : dx;
    double height = aspect * dx < dy ? dy : aspect * dx;
    const double x = mouse.x < start.x ? start.x - width : start.x;
    const double y = mouse.y < start.y ? start.y - height : start.y;
    width = std::min(width, screen.width);
    height = width * aspect;
    // The free room may be a rounding error below zero.
    return {std::clamp(x, 0.0, std::max(screen.width - width, 0.0)),
            std::clamp(y, 0.0, std::max(screen.height - height, 0.0)), width, height};
}

bool isUsable(const Rect& selection) {
    return selection.width > kUnusableWidth;
}

Rect toFractions(const Rect& selection, Size screen) {
    return {selection.x / screen.width, selection.y / screen.height, selection.width / screen.width,
            selection.height / screen.height};
}

Rect fromFractions(const Rect& fractions, Size screen) {
    return {fractions.x * screen.width, fractions.y * screen.height, fractions.width * screen.width,
            fractions.height * screen.height};
}

} // namespace velmo::RegionSelection
