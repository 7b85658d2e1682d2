#include "compositor/internal/ColumnLayer.h"

#include "compositor/internal/PixelShare.h"
#include "compositor/internal/PlaneLayout.h"
#include "compositor/internal/RowKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace velmo::internal {

namespace {

constexpr Color kBackground{0.04, 0.11, 0.09, 1};
constexpr Color kFlatColumn{0.12, 0.66, 0.44, 1};
constexpr double kNameTagRise = 0.035; // of the height of the frame, from its lower edge

void fill(std::uint8_t* row, int units, int unitBytes, const UnitCode& code) {
    if (unitBytes == 1) {
        std::memset(row, code[0], static_cast<std::size_t>(units));
        return;
    }
    for (int i = 0; i < units; ++i, row += unitBytes) {
        std::memcpy(row, code.data(), static_cast<std::size_t>(unitBytes));
    }
}

/// Leaves `share` of the row, the rest is the background's.
void keepPart(std::uint8_t* row, int bytes, double share, const UnitCode& background, int unitBytes) {
    const int part = fixedShare(share);
    for (int i = 0; i < bytes; ++i) {
        const int behind = background[static_cast<std::size_t>(i % unitBytes)];
        row[i] = static_cast<std::uint8_t>(behind + (((row[i] - behind) * part + (1 << 14)) >> 15));
    }
}

/// A unit of the column, with the picture's part under it and the background's under that.
void meet(std::uint8_t* column, int unitBytes, const UnitCode& background, const UnitCode& picture, double pictureShare,
          double columnShare) {
    for (std::size_t c = 0; c < static_cast<std::size_t>(unitBytes); ++c) {
        const double below = background[c] + (picture[c] - background[c]) * pictureShare;
        column[c] = static_cast<std::uint8_t>(below + (column[c] - below) * columnShare + 0.5);
    }
}

/// Of a unit of the row, the part that lies between `from` and `to`.
double shareOfUnit(int unit, int pixels, int length, double from, double to) {
    return shareOf(unit * pixels, std::min((unit + 1) * pixels, length), from, to);
}

} // namespace

void ColumnLayer::prepare(const Column& column, const PixelBuffer& source) {
    width_ = source.width();
    height_ = source.height();
    geometry_ = ColumnGeometry::of(width_, height_, column.slide, column.left);
    hasCamera_ = column.camera && column.camera->format() == source.format();
    for (int p = 0; p < source.planeCount(); ++p) {
        prepare(planes_[static_cast<std::size_t>(p)], source, p, hasCamera_ ? column.camera.get() : nullptr);
    }
    prepareNameTag(column, source);
}

void ColumnLayer::prepare(Plane& plane, const PixelBuffer& source, int index, const PixelBuffer* camera) {
    const PlaneView view = source.plane(index);
    const int unitBytes = unitBytesOf(source.format(), index);
    const int pixels = pixelsPerUnit(unitBytes);
    const double step = 1 / geometry_.pictureScale;
    plane.background = unitCodeOf(kBackground, unitBytes);
    plane.flat = unitCodeOf(kFlatColumn, unitBytes);
    plane.picture.prepare(AxisMap::scaled(view.height, geometry_.picture.y / pixels, step),
                          AxisMap::scaled(view.width, geometry_.picture.x / pixels, step), view.width, unitBytes);
    plane.pictureRow.resize(static_cast<std::size_t>(blocksFor(view.width * unitBytes)) + 1); // one is read past it
    const Rect& column = geometry_.column;
    plane.from = static_cast<int>(std::floor(std::max(0.0, column.minX()) / pixels));
    plane.to = std::min(view.width, static_cast<int>(std::ceil(column.maxX() / pixels)));
    if (camera != nullptr && plane.from < plane.to) {
        prepareCamera(plane, camera->plane(index), camera->width(), camera->height(), unitBytes);
    }
}

/// Fills the column, whatever the camera's shape, with its middle in the middle.
void ColumnLayer::prepareCamera(Plane& plane, const PlaneView& camera, int cameraWidth, int cameraHeight,
                                int unitBytes) {
    const int pixels = pixelsPerUnit(unitBytes);
    const Rect& column = geometry_.column;
    const double scale = std::max(column.width / cameraWidth, column.height / cameraHeight);
    const double left = column.midX() - cameraWidth * scale / 2;
    const double top = column.midY() - cameraHeight * scale / 2;
    plane.camera = camera;
    plane.cameraRows.prepare(AxisMap::scaled(camera.height, top / pixels, 1 / scale),
                             AxisMap::scaled(camera.width, left / pixels - plane.from, 1 / scale),
                             plane.to - plane.from, unitBytes);
    plane.cameraRow.resize(static_cast<std::size_t>(plane.cameraRows.count() / kBlockBytes));
}

/// At whole pixels, so that the letters are as sharp as they were drawn.
void ColumnLayer::prepareNameTag(const Column& column, const PixelBuffer& source) {
    nameTag_ = column.nameTag ? nameTags_.find(*column.nameTag, geometry_.columnWidth, source.height()) : nullptr;
    showsNameTag_ = false;
    if (nameTag_) {
        const double width = nameTag_->width();
        const double height = nameTag_->height();
        const double left = std::round(geometry_.column.midX() - width / 2);
        const double top = source.height() - std::round(source.height() * kNameTagRise) - height;
        showsNameTag_ = nameTagOver_.prepare(*nameTag_, {left, top, width, height}, source.width(), source.height());
    }
}

void ColumnLayer::paint(const FrameRow& row, const LayersBelow& below) {
    Plane& plane = planes_[static_cast<std::size_t>(row.plane)];
    paintPicture(plane, row, below);
    paintColumn(plane, row);
    if (showsNameTag_) {
        nameTagOver_.paint(row);
    }
}

void ColumnLayer::paintPicture(Plane& plane, const FrameRow& row, const LayersBelow& below) const {
    const Rect& picture = geometry_.picture;
    const int pixels = pixelsPerUnit(row.unitBytes);
    const double share = shareOfUnit(row.y, pixels, height_, picture.minY(), picture.maxY());
    if (!(share > 0)) {
        fill(row.data, row.width, row.unitBytes, plane.background);
        return;
    }
    const auto [upper, lower, weight] = plane.picture.at(row.y, [&](int sourceRow, std::int16_t* line) {
        FrameRow whole = row;
        whole.y = sourceRow;
        whole.data = plane.pictureRow.front().bytes;
        below.paint(whole);
        stretchRow(whole.data, plane.picture.columns(), line);
    });
    blendLines(upper, lower, weight, row.data, plane.picture.count());
    if (share < 1) {
        keepPart(row.data, row.width * row.unitBytes, share, plane.background, row.unitBytes);
    }
}

void ColumnLayer::paintColumn(Plane& plane, const FrameRow& row) const {
    if (plane.from >= plane.to) {
        return;
    }
    // Picture and column meet in one unit, which has a part of each: both over the background.
    const int edge = plane.from == 0 ? plane.to - 1 : plane.from;
    std::uint8_t* meeting = row.data + edge * row.unitBytes;
    UnitCode picture{};
    std::memcpy(picture.data(), meeting, static_cast<std::size_t>(row.unitBytes));
    std::uint8_t* data = row.data + plane.from * row.unitBytes;
    const int units = plane.to - plane.from;
    if (hasCamera_) {
        const auto [upper, lower, weight] = plane.cameraRows.at(row.y, [&plane](int sourceRow, std::int16_t* line) {
            stretchRow(plane.camera.row(sourceRow), plane.cameraRows.columns(), line);
        });
        std::uint8_t* camera = plane.cameraRow.front().bytes;
        blendLines(upper, lower, weight, camera, plane.cameraRows.count());
        std::memcpy(data, camera, static_cast<std::size_t>(units * row.unitBytes));
    } else {
        fill(data, units, row.unitBytes, plane.flat);
    }
    const auto shareHere = [&](const Rect& part) {
        return shareOfUnit(edge, pixelsPerUnit(row.unitBytes), width_, part.minX(), part.maxX());
    };
    meet(meeting, row.unitBytes, plane.background, picture, shareHere(geometry_.picture), shareHere(geometry_.column));
}

} // namespace velmo::internal
