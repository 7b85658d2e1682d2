#include "surfaces/DrawingModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr double kLeastMovement = 0.8;
constexpr double kLeastShape = 3;

// The fountain pen: a slow hand draws wide, a quick one narrow.
constexpr double kLeastSeconds = 0.004;
constexpr double kWidest = 1.6;
constexpr double kNarrowest = 0.35;
constexpr double kSpeedOfOne = 1400; // points a second that take 1 from the factor
constexpr double kEasing = 0.35;

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double fountainWidth(const DrawingItem& item, double way, double seconds) {
    const double speed = way / std::max(seconds, kLeastSeconds);
    const double target = item.width * std::clamp(kWidest - speed / kSpeedOfOne, kNarrowest, kWidest);
    const double before = item.widths.isEmpty() ? item.width : item.widths.last();
    return before + (target - before) * kEasing;
}

bool isSlip(const DrawingItem& item) {
    return isShape(item.kind) && distance(item.points[0], item.points[1]) < kLeastShape;
}

} // namespace

DrawingModel::DrawingModel(Seeds seeds) : seeds_(std::move(seeds)) {}

void DrawingModel::press(const DrawingTip& tip, Point at, double now) {
    if (tip.tool == DrawingTool::eraser) {
        erasing_ = true;
        remember(); // one step for all that the drag takes away
        erase(at);
        return;
    }
    current_ = startedItem(tip, at, seeds_());
    lastTime_ = now;
}

bool DrawingModel::drag(Point to, double now) {
    if (erasing_) {
        erase(to);
        return true;
    }
    if (!current_) {
        return false;
    }
    if (isShape(current_->kind)) {
        current_->points[1] = to;
        return true;
    }
    const double way = distance(current_->points.last(), to);
    if (way < kLeastMovement) {
        return false;
    }
    if (current_->kind == DrawingKind::fountain) {
        current_->widths.append(fountainWidth(*current_, way, now - lastTime_));
    }
    current_->points.append(to);
    lastTime_ = now;
    return true;
}

void DrawingModel::release(double now) {
    if (std::exchange(erasing_, false) || !current_) {
        return;
    }
    DrawingItem item = *std::exchange(current_, std::nullopt);
    if (item.kind == DrawingKind::laser) {
        item.endedAt = now;
        lasers_.append(std::move(item));
    } else if (!isSlip(item)) {
        remember();
        strokes_.append(std::move(item));
    }
}

void DrawingModel::undo() {
    if (!history_.isEmpty()) {
        strokes_ = history_.takeLast();
    }
}

void DrawingModel::clear() {
    if (strokes_.isEmpty() && !current_) {
        return;
    }
    remember();
    strokes_.clear();
    current_.reset();
}

void DrawingModel::expireLasers(double now) {
    lasers_.removeIf([now](const DrawingItem& laser) { return laserAlpha(laser, now) <= 0; });
}

double DrawingModel::laserAlpha(const DrawingItem& laser, double now) {
    return std::max(0.0, 1 - (now - laser.endedAt.value_or(now)) / kLaserSeconds);
}

void DrawingModel::remember() {
    history_.append(strokes_);
    if (history_.size() > kMostUndoSteps) {
        history_.removeFirst();
    }
}

void DrawingModel::erase(Point at) {
    strokes_.removeIf([at](const DrawingItem& item) { return isErasedAt(item, at); });
}

} // namespace velmo
