#include "compositor/ZoomMotion.h"

#include <cmath>

namespace velmo {

namespace {

constexpr double kLongestStep = 0.1; // seconds

// Speeds of easing per second, and how near the target a value takes it.
constexpr double kScaleSpeed = 6.0;
constexpr double kScaleSnap = 0.002;
constexpr double kCenterSpeed = 5.0;
constexpr double kColumnSpeed = 5.5;
constexpr double kColumnSnap = 0.002;
constexpr double kSpotSpeed = 16.0;
constexpr double kSpotAlphaSpeed = 8.0;
constexpr double kSpotAlphaFloor = 0.002;

constexpr double kWholeScreen = 1.001;       // a target at or below it opens the window to the whole screen
constexpr double kFreePanning = 1.01;        // below it the window has no room for a dead zone
constexpr double kDeadZone = 0.55;           // of the window's half width
constexpr double kSmallestChange = 0.000001; // of the window's width

// Motion smaller than these is not worth a frame of its own.
constexpr double kVisibleSpotDistance = 0.0008;
constexpr double kVisibleSpotAlpha = 0.01;
constexpr double kLiveSpotAlpha = 0.001;
constexpr double kVisibleScale = 0.004;
constexpr double kVisiblePan = 0.0015;

void ease(double& value, double target, double dt, double speed) {
    value += (target - value) * std::min(dt * speed, 1.0);
}

void easeAndSnap(double& value, double target, double dt, double speed, double snap) {
    ease(value, target, dt, speed);
    if (std::abs(target - value) < snap) {
        value = target;
    }
}

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// The origin that leaves the screen point under the pointer where it is in the frame.
double originUnderPointer(double mouse, double origin, double oldWidth, double newWidth) {
    const double held = std::min(std::max(mouse, origin), origin + oldWidth);
    return held - (held - origin) * newWidth / oldWidth;
}

double legalOrigin(double origin, double width) {
    return std::min(std::max(origin, 0.0), 1.0 - width);
}

double draggedByDeadZone(double center, double focus, double margin) {
    if (focus < center - margin) {
        center = focus + margin;
    }
    if (center + margin < focus) {
        center = focus - margin;
    }
    return center;
}

Point newOrigin(const ZoomControls& controls, double target, const ZoomMotion::Window& old, double width) {
    if (target <= kWholeScreen) {
        return {0, 0};
    }
    Point origin;
    if (controls.region) {
        origin = {controls.region->midX() - width / 2, controls.region->midY() - width / 2};
    } else if (controls.follow) {
        origin = {originUnderPointer(controls.mouse.x, old.o.x, old.w, width),
                  originUnderPointer(controls.mouse.y, old.o.y, old.w, width)};
    } else {
        origin = {controls.anchor.x - width / 2, controls.anchor.y - width / 2};
    }
    return {legalOrigin(origin.x, width), legalOrigin(origin.y, width)};
}

} // namespace

void ZoomMotion::step(const ZoomControls& controls, double seconds) {
    const double dt = advanceClock(seconds);
    easeAndSnap(colT_, controls.columnOn ? 1.0 : 0.0, dt, kColumnSpeed, kColumnSnap);

    const double target = controls.targetScale();
    if (target != zoomTarget_) {
        retarget(controls, target);
    }
    easeAndSnap(scale_, target, dt, kScaleSpeed, kScaleSnap);
    if (scale_ != target && zoomFixed_ && zoomFrom_) {
        moveAboutFixedPoint(controls, target);
    } else {
        settle(controls, dt);
    }

    ease(spot_.x, controls.mouse.x, dt, kSpotSpeed);
    ease(spot_.y, controls.mouse.y, dt, kSpotSpeed);
    ease(spotAlpha_, controls.spotlight ? 1.0 : 0.0, dt, kSpotAlphaSpeed);
    if (spotAlpha_ < kSpotAlphaFloor) {
        spotAlpha_ = 0;
    }
    ringPos_ = controls.mouse;
}

bool ZoomMotion::isMoving(const ZoomControls& controls) const {
    if (controls.spotlight || spotAlpha_ > kLiveSpotAlpha) {
        const double fullAlpha = controls.spotlight ? 1.0 : 0.0;
        if (distance(controls.mouse, spot_) > kVisibleSpotDistance ||
            std::abs(fullAlpha - spotAlpha_) > kVisibleSpotAlpha) {
            return true;
        }
    }
    return std::abs(controls.targetScale() - scale_) > kVisibleScale || distance(center_, centerTarget_) > kVisiblePan;
}

double ZoomMotion::advanceClock(double seconds) {
    const double elapsed = lastStep_ ? seconds - *lastStep_ : 0.0;
    lastStep_ = seconds;
    return std::max(0.0, std::min(kLongestStep, elapsed));
}

void ZoomMotion::retarget(const ZoomControls& controls, double target) {
    zoomTarget_ = target;
    const double oldWidth = scale_ <= 1 ? 1.0 : 1.0 / scale_;
    const double newWidth = 1.0 / std::max(target, 1.0);
    const Window old{{center_.x - oldWidth / 2, center_.y - oldWidth / 2}, oldWidth};
    const Point origin = newOrigin(controls, target, old, newWidth);
    zoomFrom_ = old;
    // The point that the similarity from the old window to the new one leaves in its place.
    const double shrink = oldWidth - newWidth;
    if (std::abs(shrink) > kSmallestChange) {
        zoomFixed_ = Point{(oldWidth * origin.x - newWidth * old.o.x) / shrink,
                           (oldWidth * origin.y - newWidth * old.o.y) / shrink};
    } else {
        zoomFixed_.reset();
    }
    centerTarget_ = {origin.x + newWidth / 2, origin.y + newWidth / 2};
}

void ZoomMotion::moveAboutFixedPoint(const ZoomControls& controls, double target) {
    const double width = 1.0 / std::max(scale_, 1.0);
    const double ratio = width / zoomFrom_->w;
    center_ = {width / 2 + zoomFixed_->x - (zoomFixed_->x - zoomFrom_->o.x) * ratio,
               width / 2 + zoomFixed_->y - (zoomFixed_->y - zoomFrom_->o.y) * ratio};
    const bool zoomOutIsNearlyDone = scale_ < kFreePanning && target <= kWholeScreen;
    centerTarget_ = zoomOutIsNearlyDone ? controls.mouse : center_;
}

void ZoomMotion::settle(const ZoomControls& controls, double dt) {
    zoomFixed_.reset();
    const double half = scale_ <= 1 ? 0.5 : 0.5 / scale_;
    const double margin = half * kDeadZone;
    const Point focus = controls.follow ? controls.mouse : controls.anchor;
    Point wanted;
    if (!controls.follow && controls.enabled) {
        wanted = controls.anchor;
    } else if (scale_ < kFreePanning) {
        wanted = focus;
    } else {
        wanted = {draggedByDeadZone(centerTarget_.x, focus.x, margin),
                  draggedByDeadZone(centerTarget_.y, focus.y, margin)};
    }
    if (controls.region) {
        wanted = {controls.region->midX(), controls.region->midY()};
    }
    ease(center_.x, wanted.x, dt, kCenterSpeed);
    ease(center_.y, wanted.y, dt, kCenterSpeed);
    centerTarget_ = wanted;
    center_.x = std::min(1 - half, std::max(half, center_.x));
    center_.y = std::min(1 - half, std::max(half, center_.y));
}

} // namespace velmo
