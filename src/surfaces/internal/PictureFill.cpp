#include "surfaces/internal/PictureFill.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmo {
namespace {

using FillKernels::Axis;
using FillKernels::kRows;
using FillKernels::kSpare;

// What the weights of one pixel sum to.
constexpr int kRowUnity = 256;
constexpr int kColumnUnity = 65536;
constexpr int kMostWeight = 65535;

/// The share of each unit in [from, to), or the two units around the middle of a part of a unit.
struct Window {
    int first;
    std::vector<double> shares;
};

Window coverage(double from, double step) {
    if (step < 1) {
        const double middle = from + step / 2 - 0.5;
        const double below = std::floor(middle);
        return {static_cast<int>(below), {1 - (middle - below), middle - below}};
    }
    const double to = from + step;
    Window window{static_cast<int>(std::floor(from)), {}};
    for (int unit = window.first; unit < to; ++unit) {
        window.shares.push_back((std::min(to, unit + 1.0) - std::max(from, static_cast<double>(unit))) / step);
    }
    return window;
}

/// Units beyond the ends are the last ones.
void clampTo(Window& window, int available) {
    while (window.first < 0 && window.shares.size() > 1) {
        window.shares[1] += window.shares[0];
        window.shares.erase(window.shares.begin());
        ++window.first;
    }
    while (window.first + static_cast<int>(window.shares.size()) > available && window.shares.size() > 1) {
        window.shares[window.shares.size() - 2] += window.shares.back();
        window.shares.pop_back();
    }
    window.first = std::clamp(window.first, 0, available - 1);
}

Axis makeAxis(double begin, double step, int available, int count, int unity, bool mirrored) {
    std::vector<Window> windows;
    Axis axis;
    for (int i = 0; i < count; ++i) {
        windows.push_back(coverage(begin + (mirrored ? count - 1 - i : i) * step, step));
        clampTo(windows.back(), available);
        axis.count = std::max(axis.count, static_cast<int>(windows.back().shares.size()));
    }
    axis.first = available;
    for (Window& window : windows) {
        const int fits = std::min(window.first, available - axis.count); // units of weight 0 come before or after
        window.shares.insert(window.shares.begin(), static_cast<std::size_t>(window.first - fits), 0);
        window.shares.resize(static_cast<std::size_t>(axis.count));
        axis.begins.push_back(fits);
        double share = 0;
        int given = 0;
        for (const double part : window.shares) { // rounded sums, so that all together are exact
            share += part;
            const int upTo = static_cast<int>(std::lround(share * unity));
            axis.weights.push_back(static_cast<std::uint16_t>(std::min(upTo - given, kMostWeight)));
            given = upTo;
        }
        axis.first = std::min(axis.first, fits);
        axis.end = std::max(axis.end, fits + axis.count);
    }
    return axis;
}

} // namespace

void PictureFill::Line::makeRoom() {
    count = static_cast<std::size_t>(unitBytes * (columns.end - columns.first));
    sums.resize(kRows * (count + kSpare));
    turned.resize(kRows * (count + kSpare));
}

void PictureFill::Line::add(const PlaneView& plane, int row, int last) {
    const std::size_t stride = count + kSpare;
    for (std::size_t i = 0; i < kRows; ++i) {
        const auto line = static_cast<std::size_t>(std::min(row + static_cast<int>(i), last));
        // Reads past a row stay inside the plane and its spare bytes.
        FillKernels::addRows(plane.row(rows.begins[line]) + unitBytes * columns.first, plane.stride, rows.count,
                             rows.weights.data() + line * static_cast<std::size_t>(rows.count), count,
                             sums.data() + i * stride);
    }
    FillKernels::turn(sums.data(), stride, count, turned.data());
}

PictureFill::PictureFill(const Shape& shape) : shape_(shape) {
    const int width = shape.from.width();
    const int height = shape.from.height();
    const QSize to = shape.to;
    const double step = std::min(width / static_cast<double>(to.width()), height / static_cast<double>(to.height()));
    const double left = (width - step * to.width()) / 2;
    const double top = (height - step * to.height()) / 2;
    luma_.columns = makeAxis(left, step, width, to.width(), kColumnUnity, shape.mirrored);
    luma_.rows = makeAxis(top, step, height, to.height(), kRowUnity, false);
    luma_.makeRoom();
    chroma_.columns = makeAxis(left / 2, step / 2, (width + 1) / 2, to.width(), kColumnUnity, shape.mirrored);
    chroma_.rows = makeAxis(top / 2, step / 2, (height + 1) / 2, to.height(), kRowUnity, false);
    chroma_.unitBytes = 2;
    chroma_.makeRoom();
}

void PictureFill::fill(const PixelBuffer& from, QImage& to) {
    const int last = shape_.to.height() - 1;
    uchar* const bits = to.bits();
    for (int y = 0; y <= last; y += static_cast<int>(kRows)) {
        luma_.add(from.plane(0), y, last);
        chroma_.add(from.plane(1), y, last);
        std::array<std::uint32_t*, kRows> rows{};
        for (std::size_t i = 0; i < kRows; ++i) {
            rows[i] =
                reinterpret_cast<std::uint32_t*>(bits + to.bytesPerLine() * std::min(y + static_cast<int>(i), last));
        }
        FillKernels::mixColumns(luma_.turned.data(), luma_.columns, chroma_.turned.data(), chroma_.columns,
                                rows.data());
    }
}

} // namespace velmo
