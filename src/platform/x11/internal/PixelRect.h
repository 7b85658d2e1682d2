#pragma once

#include <algorithm>
#include <cstdint>

namespace velmo::x11 {

/// Whole pixels, y down, `x`, `y` the upper left corner.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    std::int64_t area() const { return isEmpty() ? 0 : std::int64_t{width} * height; }
    PixelRect translated(int dx, int dy) const { return {x + dx, y + dy, width, height}; }

    /// The smallest one around both; an empty one adds nothing.
    PixelRect united(const PixelRect& other) const {
        if (isEmpty() || other.isEmpty()) {
            return isEmpty() ? other : *this;
        }
        const int left = std::min(x, other.x);
        const int top = std::min(y, other.y);
        return {left, top, std::max(right(), other.right()) - left, std::max(bottom(), other.bottom()) - top};
    }
    PixelRect intersected(const PixelRect& other) const {
        const int left = std::max(x, other.x);
        const int top = std::max(y, other.y);
        const int w = std::min(right(), other.right()) - left;
        const int h = std::min(bottom(), other.bottom()) - top;
        return w <= 0 || h <= 0 ? PixelRect{} : PixelRect{left, top, w, h};
    }
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

} // namespace velmo::x11
