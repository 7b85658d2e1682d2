#pragma once

#include <algorithm>

namespace velmo {

// Everything in the domain code is y up: origin at the lower left, like the image space of the frames.
// Only the platform folders know that X11 and Qt count downwards.

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// `x`, `y` is the lower left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double minY() const { return y; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    Point origin() const { return {x, y}; }
    Size size() const { return {width, height}; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    bool contains(Point p) const { return p.x >= x && p.x < maxX() && p.y >= y && p.y < maxY(); }

    /// The common area, empty (0, 0, 0, 0) when there is none.
    Rect intersection(const Rect& other) const {
        const double left = std::max(minX(), other.minX());
        const double bottom = std::max(minY(), other.minY());
        const double right = std::min(maxX(), other.maxX());
        const double top = std::min(maxY(), other.maxY());
        return right <= left || top <= bottom ? Rect{} : Rect{left, bottom, right - left, top - bottom};
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace velmo
