#include "platform/x11/internal/FramePacer.h"

#include <algorithm>

namespace velmo::x11 {

void FramePacer::damaged(std::int64_t now) {
    if (!firstDamage_) {
        firstDamage_ = now;
    }
}

void FramePacer::pointerMoved(std::int64_t now) {
    if (!firstMove_) {
        firstMove_ = now;
    }
}

void FramePacer::demand(std::int64_t now) {
    firstDamage_ = now;
    demanded_ = true;
}

std::optional<std::int64_t> FramePacer::due() const {
    if (demanded_) {
        return firstDamage_;
    }
    if (firstDamage_) {
        return dueAfter(*firstDamage_, kLeastGap);
    }
    if (firstMove_) {
        return dueAfter(*firstMove_, lastWasPainted_ ? std::max(kPointerPatience, kPointerCredit - credit_) : 1.0);
    }
    return std::nullopt;
}

bool FramePacer::waitsForPainting() const {
    return firstMove_ && !firstDamage_ && lastWasPainted_;
}

std::int64_t FramePacer::dueAfter(std::int64_t change, double leastGap) const {
    const std::int64_t settled = change + std::min(kSettleTime, interval_ / 8);
    const double intervals = std::max(leastGap, kNeededCredit - credit_);
    return std::max(settled, creditTime_ + static_cast<std::int64_t>(intervals * static_cast<double>(interval_)));
}

void FramePacer::delivered(std::int64_t now) {
    credit_ = creditAt(now) - 1;
    creditTime_ = now;
    lastWasPainted_ = firstDamage_.has_value();
    dismissed();
}

void FramePacer::paintedNothing() {
    firstDamage_.reset();
    demanded_ = false;
}

void FramePacer::dismissed() {
    paintedNothing();
    firstMove_.reset();
}

double FramePacer::creditAt(std::int64_t now) const {
    const double earned = static_cast<double>(now - creditTime_) / static_cast<double>(interval_);
    return std::min(kMaxCredit, credit_ + earned);
}

} // namespace velmo::x11
