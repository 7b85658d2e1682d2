#include "settings/VideoQuality.h"

namespace velmo {

namespace {

constexpr double kFullHDWidth = 1920;
constexpr double kUhd4kWidth = 3840;

Size scaledToWidth(Size source, double width) {
    return {width, source.height * width / source.width};
}

Size exactSize(VideoQuality quality, Size points, double scale) {
    switch (quality) {
    case VideoQuality::fullHD:
        return scaledToWidth(points, kFullHDWidth);
    case VideoQuality::uhd4k:
        return scaledToWidth(points, kUhd4kWidth);
    case VideoQuality::retina:
        break;
    }
    const Size pixels{points.width * scale, points.height * scale};
    return pixels.width > kUhd4kWidth ? scaledToWidth(pixels, kUhd4kWidth) : pixels;
}

int evenFloor(double value) {
    return static_cast<int>(value) / 2 * 2;
}

} // namespace

VideoSize size(VideoQuality quality, Size points, double scale) {
    if (points.width <= 0 || points.height <= 0) {
        return {};
    }
    const Size exact = exactSize(quality, points, scale);
    return {evenFloor(exact.width), evenFloor(exact.height)};
}

} // namespace velmo
