#include "base/TimingCurve.h"

namespace velmo {
namespace {

constexpr double kExact = 1e-10;

double bezier(double first, double second, double s) {
    const double left = 1 - s;
    return 3 * left * left * s * first + 3 * left * s * s * second + s * s * s;
}

} // namespace

double TimingCurve::at(double time) const {
    if (!(time > 0)) {
        return 0;
    }
    if (time >= 1) {
        return 1;
    }
    // Halving cannot run away where the curve is flat, and some thirty steps cost less than one pixel row.
    double low = 0;
    double high = 1;
    while (high - low > kExact) {
        const double middle = (low + high) / 2;
        (bezier(x1_, x2_, middle) < time ? low : high) = middle;
    }
    return bezier(y1_, y2_, (low + high) / 2);
}

} // namespace velmo
