#pragma once

#include "compositor/internal/Layer.h"
#include "media/PixelBuffer.h"

#include <array>

namespace velmo::internal {

/// The layers of one frame, bottom first. Borrows them; lives for one frame.
class LayerList {
public:
    static constexpr int kCapacity = 16;

    /// Lays `layer` on top. A list that is full leaves it out.
    void add(Layer& layer);

    /// Evaluates the whole list once, row by row, into `target`.
    void paint(PixelBuffer& target) const;

private:
    std::array<Layer*, kCapacity> layers_{};
    int count_ = 0;
};

} // namespace velmo::internal
