#include "surfaces/CircleGesture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo {
namespace {

using std::numbers::pi;

constexpr double kLeastStep = 0.5;
constexpr double kMemory = 1.0; // seconds
constexpr double kCooldown = 0.4;
constexpr std::size_t kLeastSamples = 10;
constexpr double kLeastDirectedStep = 0.002; // below it a direction is noise; fractions of the screen's height
constexpr double kLeastTurn = 6.911503837897546;
constexpr double kLeastPath = 0.3;
constexpr double kLeastSpeed = 0.9; // a second
constexpr double kLeastDuration = 0.05;

double distance(Point a, Point b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double wrapped(double angle) {
    return angle > pi ? angle - 2 * pi : angle < -pi ? angle + 2 * pi : angle;
}

/// Sums up the signed turns between the steps that are long enough to have a direction.
class Turning {
public:
    void step(Point from, Point to) {
        const double direction = std::atan2(to.y - from.y, to.x - from.x);
        if (hasDirection_) {
            turn_ += wrapped(direction - direction_);
        }
        direction_ = direction;
        hasDirection_ = true;
    }
    double turn() const { return turn_; }

private:
    double direction_ = 0;
    bool hasDirection_ = false;
    double turn_ = 0;
};

} // namespace

bool CircleGesture::add(Point point, double time, double size) {
    if (!samples_.empty() && distance(samples_.back().point, point) < kLeastStep) {
        return false;
    }
    samples_.push_back({point, time});
    const auto kept = std::find_if(samples_.begin(), samples_.end(),
                                   [time](const Sample& sample) { return sample.time >= time - kMemory; });
    samples_.erase(samples_.begin(), kept);
    if (cooldownUntil_ > time || samples_.size() < kLeastSamples || !isCircle(size)) {
        return false;
    }
    samples_.clear();
    cooldownUntil_ = time + kCooldown;
    return true;
}

void CircleGesture::reset() {
    samples_.clear();
    cooldownUntil_ = 0;
}

bool CircleGesture::isCircle(double size) const {
    Turning turning;
    double path = 0;
    for (std::size_t i = 1; i < samples_.size(); ++i) {
        const Point from = samples_[i - 1].point;
        const Point to = samples_[i].point;
        const double step = distance(from, to);
        if (step > size * kLeastDirectedStep) {
            turning.step(from, to);
        }
        path += step;
    }
    const double duration = std::max(samples_.back().time - samples_.front().time, kLeastDuration);
    return std::abs(turning.turn()) > kLeastTurn && path > size * kLeastPath && path / duration > size * kLeastSpeed;
}

} // namespace velmo
