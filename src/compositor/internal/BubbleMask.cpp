#include "compositor/internal/BubbleMask.h"

#include "compositor/internal/BitmapGrid.h"
#include "compositor/internal/LineKernels.h"

#include <QImage>
#include <QPainter>
#include <algorithm>

namespace velmo::internal {

namespace {

constexpr int kWhole = (1 << 15) - 1;

/// The shape in white on black, on the grid of the frame.
struct Drawing {
    QImage image;
    int left = 0;
    int top = 0;

    /// The sum of the levels of `size` by `size` pixels.
    int level(int x, int y, int size) const {
        int sum = 0;
        for (int row = y; row < y + size; ++row) {
            const std::uint8_t* levels = image.constScanLine(row) + x;
            for (int i = 0; i < size; ++i) {
                sum += levels[i];
            }
        }
        return sum;
    }
};

Drawing drawn(const BubbleMask::Shape& shape) {
    Drawing drawing;
    drawing.left = floorToGrid(shape.x, kColumnGrid);
    drawing.top = floorToGrid(shape.y, kRowGrid);
    drawing.image = QImage(ceilToGrid(shape.x + shape.width, kColumnGrid) - drawing.left,
                           ceilToGrid(shape.y + shape.height, kRowGrid) - drawing.top, QImage::Format_Grayscale8);
    if (drawing.image.isNull()) {
        return drawing;
    }
    drawing.image.fill(Qt::black);
    QPainter painter(&drawing.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const QRectF box(shape.x - drawing.left, shape.y - drawing.top, shape.width, shape.height);
    if (shape.circle) {
        painter.drawEllipse(box);
    } else {
        const double radius = BubbleMask::cornerRadius(shape);
        painter.drawRoundedRect(box, radius, radius);
    }
    return drawing;
}

} // namespace

double BubbleMask::cornerRadius(const Shape& shape) {
    constexpr double kRounding = 4; // rounds off even a corner of nothing
    const double shorter = std::min(shape.width, shape.height);
    return std::max(0.0, std::min(shape.corner * shorter + kRounding, shorter / 2));
}

std::optional<BubbleMask> BubbleMask::make(const Shape& shape, PixelFormat format) {
    const auto isPossible = [](int side) { return side >= 1 && side <= kLargestSide; };
    if (!isPossible(shape.width) || !isPossible(shape.height)) {
        return std::nullopt;
    }
    const Drawing drawing = drawn(shape);
    if (drawing.image.isNull()) {
        return std::nullopt;
    }
    BubbleMask mask;
    for (int p = 0; p < (format == PixelFormat::nv12 ? 2 : 1); ++p) {
        Plane& plane = mask.planes_[static_cast<std::size_t>(p)];
        const int unitBytes = unitBytesOf(format, p);
        const int pixels = pixelsPerUnit(unitBytes);
        const int wholeLevel = 255 * pixels * pixels;
        plane.firstByte = drawing.left * bytesPerPixel(unitBytes);
        plane.firstRow = drawing.top / pixels;
        plane.bytes = drawing.image.width() * bytesPerPixel(unitBytes);
        plane.rows = drawing.image.height() / pixels;
        plane.shares.resize(static_cast<std::size_t>(plane.bytes) * static_cast<std::size_t>(plane.rows));
        for (int y = 0; y < plane.rows; ++y) {
            std::int16_t* shares = plane.row(y);
            for (int x = 0; x < drawing.image.width(); x += pixels) {
                const int level = drawing.level(x, y * pixels, pixels);
                const int share = (level * kWhole + wholeLevel / 2) / wholeLevel;
                shares = std::fill_n(shares, unitBytes, static_cast<std::int16_t>(share));
            }
        }
    }
    return mask;
}

void BubbleMask::uncover(const PixelBuffer& source, const FrameRow& row) const {
    const Plane& plane = planes_[static_cast<std::size_t>(row.plane)];
    const int y = row.y - plane.firstRow;
    const int from = std::max(plane.firstByte, 0);
    const int bytes =
        std::min(plane.firstByte + plane.bytes, blocksFor(row.width * row.unitBytes) * kBlockBytes) - from;
    if (y >= 0 && y < plane.rows && bytes > 0) {
        fadeTowards(source.plane(row.plane).row(row.y) + from, plane.row(y) + (from - plane.firstByte), row.data + from,
                    bytes);
    }
}

} // namespace velmo::internal
