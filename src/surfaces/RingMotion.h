#pragma once

#include "base/Color.h"
#include "surfaces/BubbleLook.h"

#include <array>

namespace velmo {

/// What is seen of a bubble's ring, halo and shadow at one moment. Lengths in points, opacities from 0 to 1. A blur is
/// the standard deviation of the soft edge.
struct RingState {
    struct Shadow {
        double opacity = 0;
        double blur = 1;
        double down = 0;
        friend bool operator==(const Shadow&, const Shadow&) = default;
    };
    struct Soft {
        double opacity = 0;
        double blur = 1;
        friend bool operator==(const Soft&, const Soft&) = default;
    };
    /// A line along the edge, half of it inside.
    struct Line {
        double width = 0;
        double opacity = 0;
        friend bool operator==(const Line&, const Line&) = default;
    };

    // Behind the picture, bottom to top. All but the shadow in `haloColor`.
    Soft tint;
    Shadow shadow;
    Soft glow;
    Line glowLine;
    Color haloColor;

    // Over the picture.
    Line ring;
    Color ringColor; ///< of a ring without stops
    /// A conic gradient, evenly spaced, the last stop equal to the first; clockwise from `turn`.
    static constexpr std::size_t kMostStops = 16;
    std::array<Color, kMostStops> stops{};
    std::size_t stopCount = 0;
    double turn = 0; ///< of a whole one, clockwise from the top
};

/// The laws by which ring and halo move: functions of the time, so that a late or missing step changes nothing.
namespace RingMotion {

inline constexpr double spinSeconds = 6;      ///< the chameleon's ring turns once
inline constexpr double shiftSeconds = 14;    ///< its colours, and those of halo and glow, pass once
inline constexpr double breatheSeconds = 2.4; ///< aurora, one way; it comes back the same way

/// Whether the ring changes by itself; else only with the level.
bool moves(const BubbleLook& look);
/// `level` from 0 to 1, `seconds` on any clock. Colours beyond the most stops are left out.
RingState at(const BubbleLook& look, double level, double seconds);

} // namespace RingMotion
} // namespace velmo
