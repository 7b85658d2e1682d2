#include "platform/x11/internal/Region.h"

#include <utility>

namespace velmo::x11 {
namespace {

/// Beyond this many rectangles the search for good joins costs more than it saves.
constexpr int kMaxRectsToJoin = 64;

} // namespace

Region::Region(const PixelRect& rect) {
    if (rect.isEmpty()) {
        pixman_region32_init(&region_);
    } else {
        pixman_region32_init_rect(&region_, rect.x, rect.y, static_cast<unsigned>(rect.width),
                                  static_cast<unsigned>(rect.height));
    }
}

Region::Region(const Region& other) {
    pixman_region32_init(&region_);
    pixman_region32_copy(&region_, other.mutableRegion());
}

Region::Region(Region&& other) noexcept : region_(other.region_) {
    pixman_region32_init(&other.region_);
}

Region& Region::operator=(const Region& other) {
    if (this != &other) {
        pixman_region32_copy(&region_, other.mutableRegion());
    }
    return *this;
}

Region& Region::operator=(Region&& other) noexcept {
    std::swap(region_, other.region_);
    return *this;
}

PixelRect Region::extents() const {
    const pixman_box32_t* box = pixman_region32_extents(mutableRegion());
    return {box->x1, box->y1, box->x2 - box->x1, box->y2 - box->y1};
}

std::int64_t Region::area() const {
    std::int64_t sum = 0;
    forEach([&sum](const PixelRect& rect) { sum += rect.area(); });
    return sum;
}

void Region::clear() {
    pixman_region32_clear(&region_);
}

void Region::add(const PixelRect& rect) {
    if (!rect.isEmpty()) {
        pixman_region32_union_rect(&region_, &region_, rect.x, rect.y, static_cast<unsigned>(rect.width),
                                   static_cast<unsigned>(rect.height));
    }
}

void Region::add(const Region& other) {
    pixman_region32_union(&region_, &region_, other.mutableRegion());
}

void Region::subtract(const Region& other) {
    pixman_region32_subtract(&region_, &region_, other.mutableRegion());
}

void Region::intersect(const Region& other) {
    pixman_region32_intersect(&region_, &region_, other.mutableRegion());
}

void Region::intersect(const PixelRect& rect) {
    if (rect.isEmpty()) {
        clear();
    } else {
        pixman_region32_intersect_rect(&region_, &region_, rect.x, rect.y, static_cast<unsigned>(rect.width),
                                       static_cast<unsigned>(rect.height));
    }
}

void coverWithFewRects(const Region& region, std::int64_t wastedPixelsPerRect, std::vector<PixelRect>& rects) {
    rects.clear();
    if (region.rectCount() > kMaxRectsToJoin) {
        rects.push_back(region.extents());
        return;
    }
    region.forEach([&rects](const PixelRect& rect) { rects.push_back(rect); });
    for (std::size_t i = 0; i < rects.size(); ++i) {
        for (std::size_t j = i + 1; j < rects.size();) {
            const PixelRect both = rects[i].united(rects[j]);
            if (both.area() - rects[i].area() - rects[j].area() <= wastedPixelsPerRect) {
                rects[i] = both;
                rects[j] = rects.back();
                rects.pop_back();
                j = i + 1; // the bigger rectangle may now reach those passed over
            } else {
                ++j;
            }
        }
    }
}

} // namespace velmo::x11
