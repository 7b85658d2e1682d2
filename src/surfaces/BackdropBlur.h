#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

namespace velmo {

/// Makes of a picture of the desktop the soft ground that stands behind the presenter: 640 pixels wide, blurred with a
/// sigma of 9, a little richer in colour and a little darker. Stretched over a display that looks like a blur of all
/// its pixels. One thread at a time, any thread; keeps its buffers.
class BackdropBlur {
public:
    static constexpr int kWidth = 640;

    /// RGB32, `kWidth` wide, in the ratio of `image`. Null for a null picture.
    QImage render(const QImage& image);
    /// So that the first real picture finds code and memory ready.
    void warmUp();

private:
    void blurRows(int width, int height, int box);
    void blurColumns(int width, int height, int box);

    // Four components a pixel, 256 times their values, so that six passes round nothing that can be seen.
    std::vector<std::uint16_t> pixels_;
    std::vector<std::uint16_t> passed_;
    std::vector<std::uint32_t> sums_;
};

} // namespace velmo
