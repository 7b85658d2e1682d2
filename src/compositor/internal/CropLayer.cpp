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
    plane.rows = AxisMap::through(source.height, 1.0 - window.center.y, window.scale);
    const AxisMap columns = AxisMap::through(source.width, window.center.x, window.scale);
    plane.isCopied = plane.rows.isIdentity() && columns.isIdentity();
    if (plane.isCopied) {
        return;
    }
    plane.columns.prepare(columns, source.width, unitBytes);
    const auto components = static_cast<std::size_t>(plane.columns.groupCount() * ColumnTable::kGroup);
    for (Line& line : plane.lines) {
        line.blocks.resize(components / std::size(LineBlock{}.components));
        line.sourceRow = -1;
    }
}

void CropLayer::paint(const FrameRow& row, const LayersBelow&) {
    Plane& plane = planes_[static_cast<std::size_t>(row.plane)];
    if (plane.isCopied) {
        std::memcpy(row.data, plane.source.row(row.y), static_cast<std::size_t>(row.width * row.unitBytes));
        return;
    }
    const AxisMap::Tap tap = plane.rows.at(row.y);
    const int next = tap.weight > 0 ? tap.index + 1 : tap.index;
    const std::int16_t* upper = stretched(plane, tap.index, next);
    const std::int16_t* lower = stretched(plane, next, tap.index);
    blendLines(upper, lower, tap.weight, row.data, plane.columns.groupCount() * ColumnTable::kGroup);
}

std::int16_t* CropLayer::stretched(Plane& plane, int sourceRow, int rowToKeep) {
    for (Line& line : plane.lines) {
        if (line.sourceRow == sourceRow) {
            return line.data();
        }
    }
    Line& line = plane.lines[0].sourceRow == rowToKeep ? plane.lines[1] : plane.lines[0];
    line.sourceRow = sourceRow;
    stretchRow(plane.source.row(sourceRow), plane.columns, line.data());
    return line.data();
}

} // namespace velmo::internal
