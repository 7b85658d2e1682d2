#include "surfaces/RingMotion.h"

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>
#include <cmath>

namespace velmo::RingMotion {
namespace {

constexpr RingState::Shadow kSoftShadow{0.32, 13, 6};
constexpr RingState::Shadow kHardShadow{0.22, 5, 2};
constexpr RingState::Soft kTint{0.38, 11};
constexpr double kAuroraOpacity = 0.95;
constexpr double kAuroraBlurFrom = 6; // times the weight
constexpr double kAuroraBlurTo = 13;
constexpr double kChameleonBlur = 6;

/// The part of the period that has passed, from 0 to 1.
double phase(double seconds, double period) {
    return seconds / period - std::floor(seconds / period);
}

double easeInEaseOut(double part) {
    static const QEasingCurve curve = [] {
        QEasingCurve made(QEasingCurve::BezierSpline);
        made.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
        return made;
    }();
    return curve.valueForProgress(part);
}

Color between(const Color& from, const Color& to, double part) {
    const auto mix = [part](double a, double b) { return a + (b - a) * part; };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue), mix(from.alpha, to.alpha)};
}

/// Where a run through `steps` equal steps is: the step, and the part of it that has passed.
struct Step {
    std::size_t index;
    double part;
};

Step stepOf(double seconds, std::size_t steps) {
    const double place = phase(seconds, shiftSeconds) * static_cast<double>(steps);
    const std::size_t index = std::min(static_cast<std::size_t>(place), steps - 1);
    return {index, place - static_cast<double>(index)};
}

/// The colours one after the other and back to the first.
Color shade(const std::vector<Color>& colors, double seconds) {
    const Step step = stepOf(seconds, colors.size());
    return between(colors[step.index], colors[(step.index + 1) % colors.size()], step.part);
}

/// The list itself, then the list rotated by none, by one, by two ... : one value more than there are colours.
void shift(const std::vector<Color>& all, double seconds, RingState& state) {
    const std::size_t count = std::min(all.size(), RingState::kMostStops - 1);
    const Step step = stepOf(seconds, count);
    const auto rotation = [](std::size_t value) { return value == 0 ? 0 : value - 1; };
    state.stopCount = count + 1;
    for (std::size_t i = 0; i <= count; ++i) {
        state.stops[i] =
            between(all[(i + rotation(step.index)) % count], all[(i + rotation(step.index + 1)) % count], step.part);
    }
}

void chameleon(const BubbleLook& look, double level, double seconds, RingState& state) {
    const double width = (level * 3.4 + 2.6) * look.weight;
    state.glow = {level * 0.6 + 0.35, kChameleonBlur};
    if (look.chameleonColors.empty()) {
        return; // halo and glow in the ring's colour
    }
    state.ring = {width, 1};
    state.haloColor = shade(look.chameleonColors, seconds);
    shift(look.chameleonColors, seconds, state);
    state.turn = phase(seconds, spinSeconds);
}

void aurora(const BubbleLook& look, double level, double seconds, RingState& state) {
    const double there = phase(seconds, 2 * breatheSeconds) * 2;
    const double breath = easeInEaseOut(there > 1 ? 2 - there : there);
    const double opacity = level * 0.25 + 0.75;
    state.glow = {kAuroraOpacity * opacity,
                  look.weight * (kAuroraBlurFrom + (kAuroraBlurTo - kAuroraBlurFrom) * breath)};
    state.glowLine = {(level * 1.5 + 1.5) * look.weight, opacity};
}

} // namespace

bool moves(const BubbleLook& look) {
    return look.style == RingStyle::aurora || (look.style == RingStyle::chameleon && !look.chameleonColors.empty());
}

RingState at(const BubbleLook& look, double level, double seconds) {
    RingState state;
    state.shadow = look.softShadow ? kSoftShadow : kHardShadow;
    state.haloColor = look.ringColor;
    state.ringColor = look.ringColor;
    if (look.softShadow && look.style != RingStyle::none) {
        state.tint = kTint;
    }
    switch (look.style) {
    case RingStyle::chameleon:
        chameleon(look, level, seconds, state);
        break;
    case RingStyle::fine:
        state.ring = {(level * 1.4 + 1.6) * look.weight, 0.95};
        break;
    case RingStyle::aurora:
        aurora(look, level, seconds, state);
        break;
    case RingStyle::classic:
        state.ring = {(level * 7 + 3.5) * look.weight, level * 0.2 + 0.8};
        break;
    case RingStyle::none:
        break;
    }
    return state;
}

} // namespace velmo::RingMotion
