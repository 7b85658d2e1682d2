#pragma once

#include "base/Geometry.h"

#include <vector>

namespace velmo {

/// Recognises a quick circle drawn in the air with the mouse: more than one and a tenth turns either way round within
/// a second, longer than 30 % of the screen's height, at a mean speed above 90 % of it a second. Slow movement and
/// shaking are none. A plain value.
class CircleGesture {
public:
    /// One sample of the mouse: `time` in seconds, never less than before; `size` the screen's height, in the unit of
    /// `point`. True when this sample closes a circle; then nothing is for the next 0.4 s.
    bool add(Point point, double time, double size);
    void reset();

private:
    struct Sample {
        Point point;
        double time;
    };
    bool isCircle(double size) const;

    std::vector<Sample> samples_; // the last second, oldest first
    double cooldownUntil_ = 0;
};

} // namespace velmo
