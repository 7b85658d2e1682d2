#include "compositor/internal/PictureOver.h"

#include "compositor/internal/BitmapGrid.h"
#include "compositor/internal/LineKernels.h"
#include "compositor/internal/PixelShare.h"
#include "compositor/internal/RowKernels.h"

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

constexpr int kChannels = 4;

void fade(std::int16_t* from, int components, double share) {
    const int part = fixedShare(share);
    std::transform(from, from + components, from,
                   [part](int value) { return static_cast<std::int16_t>((value * part + (1 << 14)) >> 15); });
}

} // namespace

bool PictureOver::prepare(const PixelBuffer& picture, const Rect& place, int width, int height) {
    const bool isSeen = place.width > 0 && place.height > 0 && place.minX() < width && place.maxX() > 0 &&
                        place.minY() < height && place.maxY() > 0;
    if (!isSeen || picture.format() != PixelFormat::bgra) {
        return false;
    }
    // What hangs over the edge of the frame by one pixel still counts for its unit of chroma.
    const auto within = [](double position, int length) {
        return static_cast<int>(std::clamp(position, -1.0 * kColumnGrid, 1.0 * length + kColumnGrid));
    };
    source_ = picture.plane(0);
    place_ = place;
    left_ = within(std::floor(place.minX()), width);
    right_ = within(std::ceil(place.maxX()), width);
    top_ = within(std::floor(place.minY()), height);
    bottom_ = within(std::ceil(place.maxY()), height);
    from_ = std::max(0, floorToGrid(left_, kColumnGrid));
    to_ = std::min(ceilToGrid(right_, kColumnGrid), ceilToGrid(width, kColumnGrid));
    rows_.prepare(AxisMap::scaled(source_.height, place.y, source_.height / place.height),
                  AxisMap::scaled(source_.width, place.x - from_, source_.width / place.width), to_ - from_, kChannels);
    for (Line& line : lines_) {
        line.resize(rows_.count());
    }
    return true;
}

void PictureOver::paint(const FrameRow& row) {
    const int height = pixelsPerUnit(row.unitBytes);
    const int y = row.y * height;
    if (y + height <= top_ || y >= bottom_) {
        return;
    }
    const int end = blocksFor(row.width * row.unitBytes) * kBlockBytes / bytesPerPixel(row.unitBytes);
    const int pixels = std::min(to_, end) - from_;
    std::uint8_t* data = row.data + from_ * bytesPerPixel(row.unitBytes);
    blendInto(y, lines_[0]);
    if (row.unitBytes == 1) {
        layLineOverLuma(lines_[0].data(), data, pixels);
    } else if (row.unitBytes == 2) {
        blendInto(y + 1, lines_[1]);
        layLinesOverChroma(lines_[0].data(), lines_[1].data(), data, pixels);
    } else {
        layLineOverBgra(lines_[0].data(), data, pixels);
    }
}

/// One row of frame pixels.
void PictureOver::blendInto(int y, Line& line) {
    const double share = shareOf(y, y + 1, place_.minY(), place_.maxY());
    if (!(share > 0)) {
        std::fill_n(line.data(), rows_.count(), std::int16_t{0});
        return;
    }
    const auto [upper, lower, weight] = rows_.at(y, [this](int sourceRow, std::int16_t* stretched) {
        stretchRow(source_.row(sourceRow), rows_.columns(), stretched);
        trim(stretched);
    });
    blendToLine(upper, lower, weight, line.data(), rows_.count());
    if (share < 1) {
        fade(line.data(), rows_.count(), share);
    }
}

/// Clear beside the place, and in part clear where it covers a pixel in part.
void PictureOver::trim(std::int16_t* line) const {
    const int first = std::max(left_, from_);
    const int last = std::min(right_, to_) - 1;
    std::fill(line, line + (first - from_) * kChannels, std::int16_t{0});
    std::fill(line + (last + 1 - from_) * kChannels, line + (to_ - from_) * kChannels, std::int16_t{0});
    for (const int x : {first, last}) {
        const double share = shareOf(x, x + 1, place_.minX(), place_.maxX());
        if (share < 1) {
            fade(line + (x - from_) * kChannels, kChannels, share);
        }
        if (first == last) {
            break;
        }
    }
}

} // namespace velmo::internal
