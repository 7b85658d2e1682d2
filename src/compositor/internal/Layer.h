#pragma once

#include <cstdint>

namespace velmo::internal {

/// One row of one plane of the frame in the making. `y` counts from the top: layers turn the y of the image space
/// over when they are prepared, and nowhere else.
struct FrameRow {
    int plane = 0;
    int y = 0;
    std::uint8_t* data = nullptr; ///< 64-byte aligned, writable up to the next multiple of 64 bytes
    int width = 0;                ///< in units of the plane
    int unitBytes = 1;
};

class LayersBelow;

/// One thing in the frame: the zoomed screen, a light, a bitmap, a column. Lives on the video queue.
///
/// A layer is asked row by row, each plane from top to bottom. One that lies on the picture first has what is below
/// it painted into the same row and then changes that; one that moves the picture has rows below it painted into
/// lines of its own; one that covers everything asks for nothing. Painting must not allocate.
class Layer {
public:
    virtual ~Layer() = default;
    virtual void paint(const FrameRow& row, const LayersBelow& below) = 0;
};

/// The layers under one layer. A borrowed view.
class LayersBelow {
public:
    LayersBelow(Layer* const* layers, int count) : layers_(layers), count_(count) {}

    /// The picture as it is without the layers above. Undefined contents when there is no layer at all.
    void paint(const FrameRow& row) const {
        if (count_ > 0) {
            layers_[count_ - 1]->paint(row, LayersBelow(layers_, count_ - 1));
        }
    }

private:
    Layer* const* layers_;
    int count_;
};

} // namespace velmo::internal
