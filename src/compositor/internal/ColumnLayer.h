#pragma once

#include "compositor/internal/ColumnGeometry.h"
#include "compositor/internal/FrameContents.h"
#include "compositor/internal/Layer.h"
#include "compositor/internal/NameTagCache.h"
#include "compositor/internal/PictureOver.h"
#include "compositor/internal/PlaneLayout.h"
#include "compositor/internal/StretchedRows.h"
#include "compositor/internal/VideoWeights.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace velmo::internal {

/// The camera in a column beside the picture, which shrinks to make room, and the name tag in it.
///
/// The picture below is asked row by row and shrunk on the way: it never exists at its full size. A unit that a part
/// covers in part has it in that part.
class ColumnLayer final : public Layer {
public:
    /// Borrows the camera's picture until the frame is painted. Allocates only when the size or the format of frame
    /// or camera changes, and for a new name tag.
    void prepare(const Column& column, const PixelBuffer& source);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    struct alignas(kBlockBytes) Block {
        std::uint8_t bytes[kBlockBytes];
    };
    using Blocks = std::vector<Block>;

    struct Plane {
        StretchedRows picture;
        Blocks pictureRow; ///< a row of what is below, whole
        PlaneView camera;
        StretchedRows cameraRows;
        Blocks cameraRow; ///< of the units that show it
        int from = 0;     ///< units that show the column
        int to = 0;
        UnitCode background{};
        UnitCode flat{};
    };

    void prepare(Plane& plane, const PixelBuffer& source, int index, const PixelBuffer* camera);
    void prepareCamera(Plane& plane, const PlaneView& camera, int cameraWidth, int cameraHeight, int unitBytes);
    void prepareNameTag(const Column& column, const PixelBuffer& source);
    void paintPicture(Plane& plane, const FrameRow& row, const LayersBelow& below) const;
    void paintColumn(Plane& plane, const FrameRow& row) const;

    ColumnGeometry geometry_;
    int width_ = 0;
    int height_ = 0;
    bool hasCamera_ = false;
    std::array<Plane, 2> planes_;
    NameTagCache nameTags_;
    FrameRef nameTag_;
    PictureOver nameTagOver_;
    bool showsNameTag_ = false;
};

} // namespace velmo::internal
