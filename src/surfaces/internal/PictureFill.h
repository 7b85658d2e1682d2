#pragma once

#include "media/PixelBuffer.h"

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
    /// Which units of a line make unit `i` of the result, and how much each; the weights of one sum to 256.
    struct Axis {
        struct Taps {
            int first = 0;
            int count = 0;
            std::size_t weights = 0; ///< index of the first
        };
        std::vector<Taps> taps;
        std::vector<std::uint16_t> weights;
        int first = 0; ///< units of the source that take part
        int end = 0;
    };
    static Axis makeAxis(double begin, double step, int available, int count);
    static void mirror(Axis& axis);

    /// The weighted sum of the rows of `tap`, 256 times the values, from unit `columns.first` on.
    static void addRows(const PlaneView& plane, int unitBytes, const Axis& columns, const Axis& rows, int row,
                        std::vector<std::uint16_t>& sums);
    void addLuma();
    void addChroma();
    void convertRow(std::uint32_t* to) const;

    Shape shape_;
    Axis lumaColumns_;
    Axis lumaRows_;
    Axis chromaColumns_;
    Axis chromaRows_;
    std::vector<std::uint16_t> lumaSums_;
    std::vector<std::uint16_t> chromaSums_;
    std::vector<std::int32_t> luma_;   ///< one row of the result, 0 to 255
    std::vector<std::int32_t> chroma_; ///< likewise, Cb and Cr in turn
};

} // namespace velmo
