#pragma once

#include "compositor/internal/CropWindow.h"
#include "compositor/internal/Layer.h"
#include "compositor/internal/StretchedRows.h"
#include "media/PixelBuffer.h"

#include <array>

namespace velmo::internal {

/// The base of every frame: the captured screen, seen through the zoom window and stretched to the whole frame
/// bilinearly. The law of sampling is told at `ZoomProcessor::render`. The window at rest on the whole screen copies
/// rows.
class CropLayer final : public Layer {
public:
    /// Borrows `source` until the frame is painted. Allocates only when the size or the format changes.
    void prepare(const PixelBuffer& source, const CropWindow& window);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    struct Plane {
        PlaneView source;
        bool isCopied = false;
        StretchedRows rows;
    };

    static void prepare(Plane& plane, const PlaneView& source, int unitBytes, const CropWindow& window);

    std::array<Plane, 2> planes_;
};

} // namespace velmo::internal
