#pragma once

#include <cstdint>

namespace velmo::internal {

/// Where the units along one axis of an output plane lie in the source plane: first + i * step, in whole units and
/// 32 bits of fraction, so that positions are the same on every machine and never jump more than one unit at a time.
struct AxisMap {
    /// Two neighbouring source units and the share of the second: (1 - weight / 2^15) * [index] + ... * [index + 1].
    struct Tap {
        int index = 0;  ///< from 0 to last
        int weight = 0; ///< from 0 to 2^15 - 1; always 0 at `last`, whose neighbour is never used
    };

    static constexpr int kFractionBits = 32;
    static constexpr int kWeightBits = 15;

    std::int64_t first = 0;
    std::int64_t step = std::int64_t{1} << kFractionBits;
    int last = 0;

    /// A plane of `length` units seen through a window about `center` (0 to 1 along the axis) at `scale`.
    /// A scale below 1 counts as 1, and a centre far outside shows the edge.
    static AxisMap through(int length, double center, double scale);

    /// A source of `length` units that begins at `origin` of the output, `step` source units to each output unit.
    /// Outside it shows its edge. What is absurdly far or steep is taken as less so.
    static AxisMap scaled(int length, double origin, double step);

    Tap at(int i) const;
    bool isIdentity() const { return *this == AxisMap{0, std::int64_t{1} << kFractionBits, last}; }

    friend bool operator==(const AxisMap&, const AxisMap&) = default;
};

} // namespace velmo::internal
