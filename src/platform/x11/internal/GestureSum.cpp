#include "platform/x11/internal/GestureSum.h"

#include <cmath>

namespace velmo::x11 {
namespace {

constexpr double kPinchPerClick = 0.043; ///< magnifies about as much as a click of the wheel
constexpr double kBetweenTellings = 1.0 / 30;
constexpr double kRounding = 1e-6; ///< that sums of fractions of a click may fall short by

double amountOf(const InputGesture& gesture) {
    return gesture.type == InputGesture::Type::magnify ? gesture.magnification : gesture.scrollingDeltaY;
}

double amountOfClick(const InputGesture& gesture) {
    return gesture.type == InputGesture::Type::magnify ? kPinchPerClick : GestureSum::kPointsPerClick;
}

bool isWholeClick(const InputGesture& gesture) {
    return gesture.type == InputGesture::Type::scrollWheel && !gesture.hasPreciseScrollingDeltas;
}

} // namespace

void GestureSum::add(int device, const InputGesture& gesture, double now, const Tell& tell) {
    rest(now, tell);
    if (!continues(device, gesture)) {
        end(tell);
    }
    if (isWholeClick(gesture)) {
        tell(gesture);
        return;
    }
    if (amountOf(gesture) * lastAmount_ < 0) {
        flows_ = false; // what it turned back from may have ended the zoom, and small steps begin none
    }
    if (sum_) {
        sum_->magnification += gesture.magnification;
        sum_->scrollingDeltaY += gesture.scrollingDeltaY;
    } else {
        sum_ = gesture;
        device_ = device;
    }
    lastAmount_ = amountOf(gesture);
    movedAt_ = now;
    if (isDue(now)) {
        handOn(tell);
        flows_ = true;
        toldAt_ = now;
    }
}

bool GestureSum::continues(int device, const InputGesture& gesture) const {
    return sum_ && !isWholeClick(gesture) && device == device_ && gesture.type == sum_->type &&
           gesture.modifierFlags == sum_->modifierFlags;
}

bool GestureSum::isDue(double now) const {
    return std::abs(amountOf(*sum_)) >= amountOfClick(*sum_) * (1 - kRounding) ||
           (flows_ && now - toldAt_ >= kBetweenTellings);
}

/// The movement may go on.
void GestureSum::handOn(const Tell& tell) {
    if (amountOf(*sum_) != 0) {
        tell(*sum_);
    }
    sum_->magnification = 0;
    sum_->scrollingDeltaY = 0;
}

void GestureSum::rest(double now, const Tell& tell) {
    if (sum_ && now >= movedAt_ + kRest) {
        end(tell);
    }
}

void GestureSum::end(const Tell& tell) {
    if (sum_) {
        handOn(tell);
        sum_.reset();
        flows_ = false;
    }
}

std::optional<double> GestureSum::restsAt() const {
    return sum_ ? std::optional(movedAt_ + kRest) : std::nullopt;
}

} // namespace velmo::x11
