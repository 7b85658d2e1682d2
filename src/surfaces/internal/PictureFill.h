#pragma once

#include "media/PixelBuffer.h"
#include "surfaces/internal/FillKernels.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <vector>

namespace velmo {

/// Brings NV12 pictures of one size into images of another: filled, the middle kept, mirrored or not. Each pixel is the
/// mean of the area that it covers; where the image is the larger one, the way between the two nearest pixels.
/// Allocates when it is made and not afterwards. One thread at a time.
class PictureFill {
public:
    struct Shape {
        QSize from;
        QSize to;
        bool mirrored = false;
        friend bool operator==(const Shape&, const Shape&) = default;
    };
    explicit PictureFill(const Shape& shape);

    const Shape& shape() const { return shape_; }
    /// `from` and `to` (RGB32) have the sizes of the shape.
    void fill(const PixelBuffer& from, QImage& to);

private:
    using Axis = FillKernels::Axis;

    /// A plane's way to eight rows of the result.
    struct Line {
        Axis columns;
        Axis rows;
        int unitBytes = 1;
        std::size_t count = 0;             ///< bytes of a row that take part
        std::vector<std::uint16_t> sums;   ///< eight rows
        std::vector<std::uint16_t> turned; ///< the same, column by column

        void makeRoom();
        /// For the rows of the result from `row` on; beyond `last` the last one again.
        void add(const PlaneView& plane, int row, int last);
    };

    Shape shape_;
    Line luma_;
    Line chroma_;
};

} // namespace velmo
