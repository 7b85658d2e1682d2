#include "ui/Blur.h"

#include <QImage>

#include <cstddef>
#include <vector>

namespace velmo::Blur {

namespace {

/// One pass of a running mean of 2 * `radius` + 1 over a line of `count` values, `step` bytes apart.
void blurLine(uchar* line, int count, std::ptrdiff_t step, int radius, std::vector<uchar>& copy) {
    copy.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        copy[static_cast<std::size_t>(i)] = line[i * step];
    }
    const auto at = [&](int i) {
        return i < 0 || i >= count ? 0 : static_cast<int>(copy[static_cast<std::size_t>(i)]);
    };
    int sum = 0;
    for (int i = -radius; i <= radius; ++i) {
        sum += at(i);
    }
    for (int i = 0; i < count; ++i) {
        line[i * step] = static_cast<uchar>(sum / (2 * radius + 1));
        sum += at(i + radius + 1) - at(i - radius);
    }
}

} // namespace

void boxes(QImage& alpha, int radius) {
    std::vector<uchar> copy;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < alpha.height(); ++y) {
            blurLine(alpha.scanLine(y), alpha.width(), 1, radius, copy);
        }
        for (int x = 0; x < alpha.width(); ++x) {
            blurLine(alpha.bits() + x, alpha.height(), alpha.bytesPerLine(), radius, copy);
        }
    }
}

} // namespace velmo::Blur
