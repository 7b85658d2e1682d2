#pragma once

#include "compositor/internal/FrameContents.h"
#include "compositor/internal/Layer.h"
#include "compositor/internal/MaskCache.h"
#include "compositor/internal/PictureOver.h"

#include <memory>
#include <vector>

namespace velmo::internal {

/// The bubbles and the phone, where and as big as they stand on the screen, whatever the zoom.
///
/// One with a picture of its window has it laid over, with the window's own alpha. One that has none yet is uncovered:
/// the unzoomed screen shows through its shape, and through that of its label.
class BubblesLayer final : public Layer {
public:
    /// Borrows `source` and the pictures until the frame is painted. False when there is nothing to lay. Allocates
    /// only for a new mask, a longer row or more bubbles than before.
    bool prepare(const FrameContents& contents, const PixelBuffer& source);

    void paint(const FrameRow& row, const LayersBelow& below) override;

private:
    /// Keeps its memory from frame to frame.
    struct Item {
        std::shared_ptr<const BubbleMask> mask; ///< null: a picture
        PictureOver picture;
    };

    Item& next();
    void prepare(const BubbleInfo& bubble, const FrameRef& picture, const Rect& screen);
    void uncover(const Rect& place, bool circle, double corner);

    MaskCache masks_;
    std::vector<Item> items_;
    std::size_t count_ = 0;
    const PixelBuffer* source_ = nullptr;
};

} // namespace velmo::internal
