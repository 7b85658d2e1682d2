#pragma once

#include "compositor/internal/FrameContents.h"
#include "compositor/internal/Layer.h"
#include "compositor/internal/LightProfile.h"

namespace velmo::internal {

/// Dims the picture but for a soft disc around a place of the screen. The disc lies on the zoomed picture, but its
/// size is the frame's. A unit of a plane is lit as its middle is.
class SpotlightLayer final : public Layer {
public:
    /// Allocates nothing.
    void prepare(const Spotlight& spotlight, const CropWindow& window, int width, int height);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    void light(const FrameRow& row, int fromBlock, int toBlock, double rise) const;

    LightProfile profile_;
    Point middle_; // frame pixels, y down
    double innerRadius_ = 0;
    double outerRadius_ = 0;
};

} // namespace velmo::internal
