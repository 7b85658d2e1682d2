#include "compositor/internal/CropLayer.h"

#include "compositor/internal/PlaneLayout.h"
#include "compositor/internal/RowKernels.h"

#include <cstring>

namespace velmo::internal {

void CropLayer::prepare(const PixelBuffer& source, const CropWindow& window) {
    for (int p = 0; p < source.planeCount(); ++p) {
        prepare(planes_[static_cast<std::size_t>(p)], source.plane(p), unitBytesOf(source.format(), p), window);
    }
}

void CropLayer::prepare(Plane& plane, const PlaneView& source, int unitBytes, const CropWindow& window) {
    plane.source = source;
    const AxisMap rows = AxisMap::through(source.height, 1.0 - window.center.y, window.scale);
    const AxisMap columns = AxisMap::through(source.width, window.center.x, window.scale);
    plane.isCopied = rows.isIdentity() && columns.isIdentity();
    if (!plane.isCopied) {
        plane.rows.prepare(rows, columns, source.width, unitBytes);
    }
}

void CropLayer::paint(const FrameRow& row, const LayersBelow&) {
    Plane& plane = planes_[static_cast<std::size_t>(row.plane)];
    if (plane.isCopied) {
        std::memcpy(row.data, plane.source.row(row.y), static_cast<std::size_t>(row.width * row.unitBytes));
        return;
    }
    const auto [upper, lower, weight] = plane.rows.at(row.y, [&plane](int sourceRow, std::int16_t* line) {
        stretchRow(plane.source.row(sourceRow), plane.rows.columns(), line);
    });
    blendLines(upper, lower, weight, row.data, plane.rows.count());
}

} // namespace velmo::internal
