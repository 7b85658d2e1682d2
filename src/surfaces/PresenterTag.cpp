#include "surfaces/PresenterTag.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr double kSizeShare = 0.035; // of the window's height
constexpr double kLeastSize = 14;
constexpr double kMostSize = 30;
constexpr double kMostWidth = 0.6;    // of the stage's: a long name stays on it
constexpr double kMarginShare = 0.04; // of the window's height

double fontSize(double windowHeight) {
    const double size = windowHeight * kSizeShare;
    return size < kMostSize ? std::round(std::max(size, kLeastSize)) : kMostSize;
}

} // namespace

std::optional<PresenterTag> PresenterTag::make(const NameTag::Text& text, const Rect& stage, double corner,
                                               double windowHeight, double scale, double now) {
    auto image = NameTag::image(text.name, text.role, fontSize(windowHeight), stage.width * kMostWidth, scale);
    if (!image) {
        return std::nullopt;
    }
    const double margin = std::max(corner, windowHeight * kMarginShare);
    PresenterTag tag;
    tag.image_ = std::move(*image);
    tag.place_ = {stage.minX() + margin, stage.minY() + margin, tag.image_.size.width(), tag.image_.size.height()};
    tag.begun_ = now;
    return tag;
}

void PresenterTag::leave(double now) {
    if (!left_) {
        leftFrom_ = opacity(now);
        left_ = now;
    }
}

double PresenterTag::opacity(double now) const {
    if (left_) {
        return leftFrom_ * (1 - std::clamp((now - *left_) / kOutSeconds, 0.0, 1.0));
    }
    return std::clamp((now - begun_ - kDelaySeconds) / kInSeconds, 0.0, 1.0);
}

bool PresenterTag::isStill(double now) const {
    return left_ ? now >= *left_ + kOutSeconds : now >= begun_ + kDelaySeconds + kInSeconds;
}

} // namespace velmo
