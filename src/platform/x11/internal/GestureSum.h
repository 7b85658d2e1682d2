#pragma once

#include "platform/InputMonitors.h"

#include <functional>
#include <optional>

namespace velmo::x11 {

/// Makes steps that count for something of the many small ones in which fine wheels, touchpads and pinches report a
/// movement, of which each by itself would be too little. A plain value; times are host-clock seconds.
///
/// A whole click of a wheel is handed on at once. Of the rest, one device and one kind of movement at a time is summed
/// up: the sum is handed on when it weighs as much as a click of the wheel, from then on at most thirty times a second
/// for as long as the movement goes on in its direction, and what is left when it rests. Nothing is lost or told twice.
class GestureSum {
public:
    using Tell = std::function<void(const InputGesture&)>;

    static constexpr double kRest = 0.2; ///< without a movement for so long, it has come to its end
    static constexpr double kPointsPerClick = 10;

    /// `device` tells one source from another.
    void add(int device, const InputGesture& gesture, double now, const Tell& tell);
    /// To be called when `restsAt` has come; before it nothing happens.
    void rest(double now, const Tell& tell);
    /// The movement has ended: what is left of it is handed on.
    void end(const Tell& tell);
    /// Absent while nothing is under way.
    std::optional<double> restsAt() const;

private:
    bool continues(int device, const InputGesture& gesture) const;
    bool isDue(double now) const;
    void handOn(const Tell& tell);

    std::optional<InputGesture> sum_; ///< present while a movement is under way
    int device_ = 0;
    bool flows_ = false; ///< a whole step of this movement has been handed on
    double lastAmount_ = 0;
    double toldAt_ = 0;
    double movedAt_ = 0;
};

} // namespace velmo::x11
