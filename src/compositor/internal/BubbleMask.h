#pragma once

#include "compositor/internal/Layer.h"
#include "media/PixelBuffer.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace velmo::internal {

/// The shape of a bubble at its place in the frame, as the share that each byte of a row has of it. A unit of chroma
/// has the mean of the four pixels that it covers.
class BubbleMask {
public:
    /// Where and what it is. Frame pixels, y down.
    struct Shape {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool circle = false;
        double corner = 0; ///< corner size as a fraction of the shorter side
        friend bool operator==(const Shape&, const Shape&) = default;
    };

    static constexpr int kLargestSide = 1 << 14;

    /// An ellipse, or a rectangle with corners of min(corner * shorter side + 4, half of it). Absent when a side is
    /// below 1 or above `kLargestSide`, or memory is out.
    static std::optional<BubbleMask> make(const Shape& shape, PixelFormat format);
    static double cornerRadius(const Shape& shape);

    /// Moves the row of `source` that lies at the same place into the picture.
    void uncover(const PixelBuffer& source, const FrameRow& row) const;

private:
    struct Plane {
        int firstByte = 0; ///< a multiple of 64, of the frame's row; may be negative
        int firstRow = 0;
        int bytes = 0; ///< a row of shares
        int rows = 0;
        std::vector<std::int16_t> shares; ///< in 1/2^15

        std::int16_t* row(int y) { return shares.data() + static_cast<std::ptrdiff_t>(y) * bytes; }
        const std::int16_t* row(int y) const { return shares.data() + static_cast<std::ptrdiff_t>(y) * bytes; }
    };

    std::array<Plane, 2> planes_;
};

} // namespace velmo::internal
