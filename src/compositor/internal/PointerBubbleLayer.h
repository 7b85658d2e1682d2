#pragma once

#include "compositor/internal/FrameContents.h"
#include "compositor/internal/Layer.h"

#include <QImage>

namespace velmo::internal {

/// The soap bubble on the pointer: a small bitmap, drawn anew for each frame and laid over the picture. It lies on the
/// zoomed picture, but its size is the frame's.
///
/// The bitmap stands on a grid of the frame (64 pixels across for whole blocks of a row, 2 down for whole rows of
/// chroma), and the figure is drawn into it with its middle at its place, to 1/64 of a pixel. So nothing is
/// resampled, and a slow pointer moves it smoothly.
class PointerBubbleLayer final : public Layer {
public:
    /// Draws the figure. False when nothing of it would be seen. The bitmap is kept while the size of the frame stays;
    /// the drawing itself takes memory for its paths.
    bool prepare(const PointerFigure& figure, const CropWindow& window, int width, int height);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    bool keepBitmap(int side);

    QImage bitmap_;
    int left_ = 0; // frame pixels, y down
    int top_ = 0;
};

} // namespace velmo::internal
