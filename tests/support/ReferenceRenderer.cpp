#include "support/ReferenceRenderer.h"

#include <algorithm>
#include <cmath>

namespace velmo::test {

namespace {

/// A plane in image space: unit (0, 0) is at the lower left.
class ImagePlane {
public:
    ImagePlane(const PlaneView& view, int unitBytes) : view_(view), unitBytes_(unitBytes) {}

    std::uint8_t& component(int x, int y, int c) const { return view_.row(view_.height - 1 - y)[x * unitBytes_ + c]; }

    double bilinear(double x, double y, int c) const {
        const double xIn = std::clamp(x, 0.0, view_.width - 1.0);
        const double yIn = std::clamp(y, 0.0, view_.height - 1.0);
        const int left = static_cast<int>(std::floor(xIn));
        const int bottom = static_cast<int>(std::floor(yIn));
        const int right = std::min(left + 1, view_.width - 1);
        const int top = std::min(bottom + 1, view_.height - 1);
        const double across = xIn - left;
        const double up = yIn - bottom;
        return (1 - up) * ((1 - across) * component(left, bottom, c) + across * component(right, bottom, c)) +
               up * ((1 - across) * component(left, top, c) + across * component(right, top, c));
    }

private:
    PlaneView view_;
    int unitBytes_;
};

void renderPlane(const PlaneView& from, const PlaneView& to, int unitBytes, Point center, double scale) {
    const ImagePlane source(from, unitBytes);
    const ImagePlane target(to, unitBytes);
    const double w = to.width;
    const double h = to.height;
    for (int j = 0; j < to.height; ++j) {
        for (int i = 0; i < to.width; ++i) {
            const double x = w * (center.x + ((i + 0.5) / w - 0.5) / scale) - 0.5;
            const double y = h * (center.y + ((j + 0.5) / h - 0.5) / scale) - 0.5;
            for (int c = 0; c < unitBytes; ++c) {
                target.component(i, j, c) = static_cast<std::uint8_t>(std::floor(source.bilinear(x, y, c) + 0.5));
            }
        }
    }
}

} // namespace

FrameRef referenceRender(const PixelBuffer& source, Point center, double scale) {
    FrameRef target = PixelBuffer::create(source.format(), source.width(), source.height());
    target->setColorTags(source.colorTags());
    const double factor = std::max(scale, 1.0);
    if (source.format() == PixelFormat::bgra) {
        renderPlane(source.plane(0), target->plane(0), 4, center, factor);
    } else {
        renderPlane(source.plane(0), target->plane(0), 1, center, factor);
        renderPlane(source.plane(1), target->plane(1), 2, center, factor);
    }
    return target;
}

} // namespace velmo::test
