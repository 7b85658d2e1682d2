#include "compositor/internal/BubblesLayer.h"

#include <cmath>
#include <utility>

namespace velmo::internal {

namespace {

constexpr double kLeastWindow = 1;    // points
constexpr double kLeastUncovered = 4; // pixels
constexpr double kPillCorner = 0.5;

/// Global points in frame pixels, y up. One factor for both axes.
Rect inFrame(const Rect& points, const Rect& screen, int frameWidth) {
    const double scale = frameWidth / screen.width;
    return {(points.minX() - screen.minX()) * scale, (points.minY() - screen.minY()) * scale, points.width * scale,
            points.height * scale};
}

/// The least rectangle of whole pixels around it.
Rect integral(const Rect& rect) {
    const double left = std::floor(rect.minX());
    const double bottom = std::floor(rect.minY());
    return {left, bottom, std::ceil(rect.maxX()) - left, std::ceil(rect.maxY()) - bottom};
}

/// From y up to y down.
Rect turnedOver(const Rect& rect, int frameHeight) {
    return {rect.x, frameHeight - rect.maxY(), rect.width, rect.height};
}

bool isSeenIn(const Rect& rect, const PixelBuffer& frame) {
    return rect.minX() < frame.width() && rect.maxX() > 0 && rect.minY() < frame.height() && rect.maxY() > 0;
}

} // namespace

bool BubblesLayer::prepare(const FrameContents& contents, const PixelBuffer& source) {
    for (std::size_t i = 0; i < count_; ++i) {
        items_[i].mask.reset();
    }
    count_ = 0;
    source_ = &source;
    if (contents.screen.width > 0) {
        for (const LiveBubble& bubble : contents.bubbles) {
            prepare(bubble.info, bubble.picture, contents.screen);
        }
    }
    return count_ > 0;
}

void BubblesLayer::prepare(const BubbleInfo& bubble, const FrameRef& picture, const Rect& screen) {
    if (picture && picture->format() == PixelFormat::bgra && bubble.window.width > kLeastWindow) {
        Item& item = next();
        const Rect place = turnedOver(inFrame(bubble.window, screen, source_->width()), source_->height());
        count_ -= item.picture.prepare(*picture, place, source_->width(), source_->height()) ? 0 : 1;
        return;
    }
    uncover(inFrame(bubble.rect, screen, source_->width()), bubble.circle, bubble.corner);
    if (bubble.label) {
        uncover(inFrame(*bubble.label, screen, source_->width()), false, kPillCorner);
    }
}

void BubblesLayer::uncover(const Rect& place, bool circle, double corner) {
    const Rect whole = turnedOver(integral(place), source_->height());
    const bool fits = whole.width <= BubbleMask::kLargestSide && whole.height <= BubbleMask::kLargestSide;
    if (!(whole.width > kLeastUncovered) || !fits || !isSeenIn(whole, *source_)) {
        return;
    }
    const BubbleMask::Shape shape{static_cast<int>(whole.x),
                                  static_cast<int>(whole.y),
                                  static_cast<int>(whole.width),
                                  static_cast<int>(whole.height),
                                  circle,
                                  corner};
    if (auto mask = masks_.find(shape, source_->format())) {
        next().mask = std::move(mask);
    }
}

BubblesLayer::Item& BubblesLayer::next() {
    if (count_ == items_.size()) {
        items_.emplace_back();
    }
    return items_[count_++];
}

void BubblesLayer::paint(const FrameRow& row, const LayersBelow& below) {
    below.paint(row);
    for (std::size_t i = 0; i < count_; ++i) {
        Item& item = items_[i];
        if (item.mask) {
            item.mask->uncover(*source_, row);
        } else {
            item.picture.paint(row);
        }
    }
}

} // namespace velmo::internal
