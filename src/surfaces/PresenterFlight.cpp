#include "surfaces/PresenterFlight.h"

#include "base/TimingCurve.h"

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

constexpr TimingCurve kCurve(0.22, 0.36, 1, 1);

constexpr double kRound = 0.5;      // of the shorter side
constexpr double kBubbleMargin = 4; // the bubble's rectangle is wider than what is seen of it
constexpr double kShadow = 0.55;
constexpr double kSnap = 1e-6; // arithmetic noise must not cost a point

struct SideLaw {
    static constexpr double width = 0.42;
    static constexpr double height = 0.86;
    static constexpr double margin = 0.035; // of the window's width
    static constexpr double corner = 0.05;  // of the stage's shorter side
};
struct FramedLaw {
    static constexpr double share = 0.84;
    static constexpr double ratio = 16.0 / 9;
    static constexpr double corner = 0.045;
};

/// Grown to whole points.
Rect integral(const Rect& rect) {
    const double left = std::floor(rect.minX() + kSnap);
    const double bottom = std::floor(rect.minY() + kSnap);
    return {left, bottom, std::ceil(rect.maxX() - kSnap) - left, std::ceil(rect.maxY() - kSnap) - bottom};
}

Rect sideStage(PresenterStyle style, Size window) {
    const double width = window.width * SideLaw::width;
    const double height = window.height * SideLaw::height;
    const double margin = window.width * SideLaw::margin;
    const double x = style == PresenterStyle::sideRight ? window.width - margin - width : margin;
    return integral({x, (window.height - height) / 2, width, height});
}

Rect framedStage(Size window) {
    double width = window.width * FramedLaw::share;
    double height = width / FramedLaw::ratio;
    if (const double room = window.height * FramedLaw::share; room < height) {
        height = room;
        width = height * FramedLaw::ratio;
    }
    return integral({(window.width - width) / 2, (window.height - height) / 2, width, height});
}

double shorter(const Rect& rect) {
    return std::min(rect.width, rect.height);
}

} // namespace

PresenterFrame PresenterLayout::atBubble(const BubbleInfo& bubble, Point windowOrigin) {
    PresenterFrame frame;
    frame.stage = bubble.rect;
    frame.stage.x -= windowOrigin.x;
    frame.stage.y -= windowOrigin.y;
    const double side = shorter(frame.stage);
    frame.corner = side * kRound;
    if (!bubble.circle) {
        frame.corner = std::min(frame.corner, side * bubble.corner + kBubbleMargin);
    }
    frame.border = 1;
    return frame;
}

PresenterFrame PresenterLayout::onStage(PresenterStyle style, Size window) {
    PresenterFrame frame;
    if (style == PresenterStyle::full) {
        frame.stage = {0, 0, window.width, window.height};
        return frame;
    }
    const bool beside = isSide(style);
    frame.stage = beside ? sideStage(style, window) : framedStage(window);
    frame.corner = shorter(frame.stage) * (beside ? SideLaw::corner : FramedLaw::corner);
    frame.shadow = kShadow;
    frame.border = 1;
    frame.backdrop = 1;
    return frame;
}

PresenterFrame PresenterFlight::at(double seconds) const {
    const double way = kCurve.at(seconds / kSeconds);
    const double backdropWay = way_ == Way::in ? way : kCurve.at(seconds / kBackdropOutSeconds);
    PresenterFrame frame;
    frame.stage = {std::lerp(from_.stage.x, to_.stage.x, way), std::lerp(from_.stage.y, to_.stage.y, way),
                   std::lerp(from_.stage.width, to_.stage.width, way),
                   std::lerp(from_.stage.height, to_.stage.height, way)};
    frame.corner = std::lerp(from_.corner, to_.corner, way);
    frame.shadow = std::lerp(from_.shadow, to_.shadow, way);
    frame.border = std::lerp(from_.border, to_.border, way);
    frame.backdrop = std::lerp(from_.backdrop, to_.backdrop, backdropWay);
    return frame;
}

} // namespace velmo
