#pragma once

#include "compositor/internal/AxisMap.h"
#include "compositor/internal/ColumnTable.h"
#include "compositor/internal/CropWindow.h"
#include "compositor/internal/Layer.h"
#include "media/PixelBuffer.h"

#include <array>
#include <cstdint>
#include <vector>

namespace velmo::internal {

/// The base of every frame: the captured screen, seen through the zoom window and stretched to the whole frame
/// bilinearly. The law of sampling is told at `ZoomProcessor::render`.
///
/// Each source row is stretched sideways once, into a line that is kept while output rows lie beside it; an output
/// row is then a blend of two lines. The window at rest on the whole screen copies rows.
class CropLayer final : public Layer {
public:
    /// Borrows `source` until the frame is painted. Allocates only when the size or the format changes.
    void prepare(const PixelBuffer& source, const CropWindow& window);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    struct alignas(ColumnTable::kRowStep) LineBlock {
        std::int16_t components[ColumnTable::kRowStep / 2];
    };
    struct Line {
        int sourceRow = -1;
        std::vector<LineBlock> blocks;
        std::int16_t* data() { return blocks.front().components; }
    };
    struct Plane {
        PlaneView source;
        AxisMap rows;
        ColumnTable columns;
        bool isCopied = false;
        std::array<Line, 2> lines;
    };

    static void prepare(Plane& plane, const PlaneView& source, int unitBytes, const CropWindow& window);
    static std::int16_t* stretched(Plane& plane, int sourceRow, int rowToKeep);

    std::array<Plane, 2> planes_;
};

} // namespace velmo::internal
