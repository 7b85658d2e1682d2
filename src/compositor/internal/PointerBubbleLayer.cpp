#include "compositor/internal/PointerBubbleLayer.h"

#include "compositor/PointerBubble.h"
#include "compositor/internal/BitmapGrid.h"
#include "compositor/internal/BlendKernels.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

constexpr double kSidePerRadius = 4.2; // room for the halo at its widest
constexpr int kRoomForLines = 8;       // they do not get thinner in a tiny frame

/// To 1/64 of a pixel, as fine as curves are drawn: so the figure is the same wherever its bitmap stands.
double asDrawn(double position) {
    return std::floor(position * 64 + 0.5) / 64;
}

/// The least multiple of `grid` that holds `length` from anywhere between two lines of the grid.
int spanOnGrid(int length, int grid) {
    return (length + 2 * grid - 1) / grid * grid;
}

} // namespace

bool PointerBubbleLayer::prepare(const PointerFigure& figure, const CropWindow& window, int width, int height) {
    const double radius = PointerBubble::radiusFraction * height;
    const int side = static_cast<int>(std::ceil(radius * kSidePerRadius)) + kRoomForLines;
    const Point place = window.inFrame(figure.at, width, height);
    const Point middle{asDrawn(place.x), asDrawn(place.y)};
    const double reach = side / 2.0;
    const bool isInFrame =
        middle.x > -reach && middle.x < width + reach && middle.y > -reach && middle.y < height + reach;
    if (!isInFrame || !figure.colors || figure.colors->empty() || !keepBitmap(side)) {
        return false;
    }
    left_ = floorToGrid(middle.x - reach, kColumnGrid);
    top_ = floorToGrid(middle.y - reach, kRowGrid);
    bitmap_.fill(Qt::transparent);
    QPainter painter(&bitmap_);
    PointerBubble::draw(painter, {middle.x - left_, middle.y - top_}, radius, figure.age, *figure.colors);
    return true;
}

bool PointerBubbleLayer::keepBitmap(int side) {
    const QSize size(spanOnGrid(side, kColumnGrid), spanOnGrid(side, kRowGrid));
    if (bitmap_.size() != size) {
        bitmap_ = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    return !bitmap_.isNull();
}

void PointerBubbleLayer::paint(const FrameRow& row, const LayersBelow& below) {
    below.paint(row);
    const int y = row.y * pixelsPerUnit(row.unitBytes) - top_;
    const int step = bytesPerPixel(row.unitBytes);
    const int from = std::max(left_, 0);
    const int pixels =
        std::min(left_ + bitmap_.width(), blocksFor(row.width * row.unitBytes) * kBlockBytes / step) - from;
    if (y < 0 || y >= bitmap_.height() || pixels <= 0) {
        return;
    }
    const std::uint8_t* bitmap = bitmap_.constScanLine(y) + 4 * (from - left_);
    std::uint8_t* data = row.data + from * step;
    if (row.unitBytes == 1) {
        blendOverLuma(bitmap, data, pixels);
    } else if (row.unitBytes == 2) {
        blendOverChroma(bitmap, bitmap + bitmap_.bytesPerLine(), data, pixels);
    } else {
        blendOverBgra(bitmap, data, pixels);
    }
}

} // namespace velmo::internal
