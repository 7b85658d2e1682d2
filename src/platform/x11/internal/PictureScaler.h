#pragma once

#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/PixelRect.h"

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// Brings a picture to another size: bilinear upwards; downwards a triangle over all the pixels that become one, so
/// thin strokes of text stay even. Each pixel of the result depends only on the picture, not on the part asked for.
class PictureScaler {
public:
    PictureScaler(int fromWidth, int fromHeight, int toWidth, int toHeight);

    /// The part of the result that the part `source` of the picture takes part in.
    PixelRect affectedBy(const PixelRect& source) const;
    /// Makes the part `rect` of `to`. Both pictures have the sizes given to the constructor.
    void scale(const Picture& from, const Picture& to, const PixelRect& rect);

    /// Which pixels of a line make pixel `first[i]..` of the result, and how much each; weights are parts of 65536.
    struct Axis {
        struct Taps {
            int first = 0;
            int count = 0;
            std::size_t weights = 0; ///< index of the first
        };
        std::vector<Taps> taps;
        std::vector<std::uint16_t> weights;
        double scale = 1;
        double reach = 1;
    };

private:
    Axis horizontal_;
    Axis vertical_;
    std::vector<std::uint16_t> row_; ///< one row, scaled vertically, 256 times the values
};

} // namespace velmo::x11
