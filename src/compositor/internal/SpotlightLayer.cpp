#include "compositor/internal/SpotlightLayer.h"

#include "compositor/internal/LightKernels.h"
#include "compositor/internal/PlaneLayout.h"

#include <algorithm>
#include <cmath>

namespace velmo::internal {

namespace {

/// Half of what a row that passes the middle of a disc at `rise` has of it; 0 beside the disc.
double halfChord(double radius, double rise) {
    return std::abs(rise) < radius ? std::sqrt(radius * radius - rise * rise) : 0.0;
}

void dim(const FrameRow& row, int fromBlock, int toBlock, int gain) {
    if (fromBlock < toBlock) {
        dimBlocks(row.data + fromBlock * kBlockBytes, toBlock - fromBlock, row.unitBytes, gain);
    }
}

} // namespace

void SpotlightLayer::prepare(const Spotlight& spotlight, const CropWindow& window, int width, int height) {
    profile_.prepare(spotlight.alpha);
    middle_ = window.inFrame(spotlight.at, width, height);
    innerRadius_ = LightProfile::kInnerRadius * height;
    outerRadius_ = LightProfile::kOuterRadius * height;
}

// Blocks wholly outside take one gain, blocks wholly inside stay as they are, and only the edge is worked out.
void SpotlightLayer::paint(const FrameRow& row, const LayersBelow& below) {
    below.paint(row);
    const int blocks = blocksFor(row.width * row.unitBytes);
    const double rise = (row.y + 0.5) * pixelsPerUnit(row.unitBytes) - middle_.y;
    const double outer = halfChord(outerRadius_, rise);
    const double inner = halfChord(innerRadius_, rise);
    if (!(outer > 0)) {
        dim(row, 0, blocks, profile_.outsideGain());
        return;
    }
    const auto blockAt = [&](double x) {
        const double block = x * bytesPerPixel(row.unitBytes) / kBlockBytes;
        return std::max(0.0, std::min<double>(blocks, block));
    };
    const int outerFrom = static_cast<int>(std::floor(blockAt(middle_.x - outer)));
    const int outerTo = static_cast<int>(std::ceil(blockAt(middle_.x + outer)));
    const int innerFrom = static_cast<int>(std::ceil(blockAt(middle_.x - inner)));
    const int innerTo = std::max(innerFrom, static_cast<int>(std::floor(blockAt(middle_.x + inner))));
    dim(row, 0, outerFrom, profile_.outsideGain());
    light(row, outerFrom, std::min(innerFrom, outerTo), rise);
    light(row, std::min(innerTo, outerTo), outerTo, rise);
    dim(row, outerTo, blocks, profile_.outsideGain());
}

void SpotlightLayer::light(const FrameRow& row, int fromBlock, int toBlock, double rise) const {
    if (fromBlock >= toBlock) {
        return;
    }
    const int pixels = pixelsPerUnit(row.unitBytes);
    const double perPixel = LightProfile::kUnitsPerRadius / outerRadius_;
    const int firstUnit = fromBlock * kBlockBytes / row.unitBytes;
    const auto away = static_cast<std::int32_t>(std::abs(rise) * perPixel);
    lightBlocks(row.data + fromBlock * kBlockBytes, toBlock - fromBlock, row.unitBytes,
                {profile_.gains(), middle_.x / pixels - 0.5 - firstUnit, perPixel * pixels, away * away});
}

} // namespace velmo::internal
