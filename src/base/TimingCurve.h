#pragma once

namespace velmo {

/// How a movement shares out its time: a cubic Bézier curve from (0, 0) to (1, 1) with two control points, read as the
/// way done at a share of the time. A value.
class TimingCurve {
public:
    /// `x1` and `x2` from 0 to 1, so that there is one way for each time.
    constexpr TimingCurve(double x1, double y1, double x2, double y2) : x1_(x1), y1_(y1), x2_(x2), y2_(y2) {}

    /// The share of the way after the share `time`, which is held to 0 to 1. Exact to 1e-9.
    double at(double time) const;

private:
    double x1_;
    double y1_;
    double x2_;
    double y2_;
};

} // namespace velmo
