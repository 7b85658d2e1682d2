#pragma once

#include "platform/x11/internal/PixelRect.h"

#include <pixman.h>

#include <span>
#include <vector>

namespace velmo::x11 {

/// A set of pixels as disjoint rectangles: a value around pixman's region. One rectangle needs no heap memory.
class Region {
public:
    Region() { pixman_region32_init(&region_); }
    explicit Region(const PixelRect& rect);
    Region(const Region& other);
    Region(Region&& other) noexcept;
    Region& operator=(const Region& other);
    Region& operator=(Region&& other) noexcept;
    ~Region() { pixman_region32_fini(&region_); }

    bool isEmpty() const { return pixman_region32_not_empty(mutableRegion()) == 0; }
    PixelRect extents() const;
    std::int64_t area() const;
    int rectCount() const { return pixman_region32_n_rects(mutableRegion()); }
    /// Calls `visit(PixelRect)` for each rectangle, from top to bottom.
    template <typename Visit>
    void forEach(Visit visit) const {
        int count = 0;
        const pixman_box32_t* boxes = pixman_region32_rectangles(mutableRegion(), &count);
        for (int i = 0; i < count; ++i) {
            visit(PixelRect{boxes[i].x1, boxes[i].y1, boxes[i].x2 - boxes[i].x1, boxes[i].y2 - boxes[i].y1});
        }
    }

    void clear();
    void add(const PixelRect& rect);
    void add(const Region& other);
    void subtract(const Region& other);
    void intersect(const Region& other);
    void intersect(const PixelRect& rect);
    void translate(int dx, int dy) { pixman_region32_translate(&region_, dx, dy); }

    friend bool operator==(const Region& a, const Region& b) {
        return pixman_region32_equal(a.mutableRegion(), b.mutableRegion()) != 0;
    }

private:
    // pixman's readers take a pointer to non-const and change nothing
    pixman_region32_t* mutableRegion() const { return const_cast<pixman_region32_t*>(&region_); }

    pixman_region32_t region_;
};

/// Covers `region` with few rectangles: neighbours are joined where the pixels fetched in vain cost less than a
/// request of its own (`wastedPixelsPerRect`). The result replaces the contents of `rects`.
void coverWithFewRects(const Region& region, std::int64_t wastedPixelsPerRect, std::vector<PixelRect>& rects);

} // namespace velmo::x11
