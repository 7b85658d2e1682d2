#include "compositor/internal/ColumnGeometry.h"

#include <cmath>

namespace velmo::internal {

ColumnGeometry ColumnGeometry::of(int width, int height, double slide, bool left) {
    constexpr double kShareOfWidth = 0.2;
    const double eased = slide * slide * (3 - 2 * slide);
    const double columnWidth = std::round(width * kShareOfWidth);
    const double scale = 1 - columnWidth / width * eased;
    const double visible = columnWidth * eased;
    const double pictureHeight = height * scale;
    return {static_cast<int>(columnWidth),
            scale,
            {left ? visible : 0, (height - pictureHeight) * 0.5, width * scale, pictureHeight},
            {left ? -columnWidth * (1 - eased) : width - visible, 0, columnWidth, static_cast<double>(height)}};
}

} // namespace velmo::internal
