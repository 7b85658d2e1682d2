#include "session/ZoomGesture.h"

namespace velmo {
namespace {

constexpr double kPerMagnification = 1.4;
constexpr double kPerPoint = 0.006;
constexpr double kPerClick = 0.06;

} // namespace

std::optional<double> zoomFactor(const InputGesture& gesture) {
    if ((gesture.modifierFlags & kOptionModifier) == 0) {
        return std::nullopt;
    }
    if (gesture.type == InputGesture::Type::magnify) {
        return 1 + gesture.magnification * kPerMagnification;
    }
    const double delta = gesture.scrollingDeltaY * (gesture.hasPreciseScrollingDeltas ? kPerPoint : kPerClick);
    return delta == 0 ? std::nullopt : std::optional(1 + delta);
}

} // namespace velmo
