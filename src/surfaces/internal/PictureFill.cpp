#include "surfaces/internal/PictureFill.h"

#include <algorithm>
#include <cmath>

#include <hwy/highway.h>

namespace velmo {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int kWeightSum = 256;
constexpr std::size_t kSpare = 64; // what a vector may write beyond a row

/// Rec. 709, video range to full range, 256 times.
constexpr int kLuma = 298;
constexpr int kRedOfCr = 459;
constexpr int kGreenOfCb = -55;
constexpr int kGreenOfCr = -136;
constexpr int kBlueOfCb = 541;

std::uint32_t component(int value) {
    return static_cast<std::uint32_t>(std::clamp((value + 128) >> 8, 0, 255));
}

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

} // namespace

PictureFill::Axis PictureFill::makeAxis(double begin, double step, int available, int count) {
    Axis axis;
    axis.first = available;
    for (int i = 0; i < count; ++i) {
        Window window = coverage(begin + i * step, step);
        clampTo(window, available);
        axis.taps.push_back({window.first, static_cast<int>(window.shares.size()), axis.weights.size()});
        double share = 0;
        int given = 0;
        for (const double part : window.shares) { // rounded sums, so that all together are exact
            share += part;
            const int upTo = static_cast<int>(std::lround(share * kWeightSum));
            axis.weights.push_back(static_cast<std::uint16_t>(upTo - given));
            given = upTo;
        }
        axis.first = std::min(axis.first, window.first);
        axis.end = std::max(axis.end, window.first + axis.taps.back().count);
    }
    return axis;
}

void PictureFill::mirror(Axis& axis) {
    std::reverse(axis.taps.begin(), axis.taps.end());
}

PictureFill::PictureFill(const Shape& shape) : shape_(shape) {
    const double width = shape.from.width();
    const double height = shape.from.height();
    const double step = std::min(width / shape.to.width(), height / shape.to.height());
    const double left = (width - step * shape.to.width()) / 2;
    const double top = (height - step * shape.to.height()) / 2;
    lumaColumns_ = makeAxis(left, step, shape.from.width(), shape.to.width());
    lumaRows_ = makeAxis(top, step, shape.from.height(), shape.to.height());
    chromaColumns_ = makeAxis(left / 2, step / 2, (shape.from.width() + 1) / 2, shape.to.width());
    chromaRows_ = makeAxis(top / 2, step / 2, (shape.from.height() + 1) / 2, shape.to.height());
    if (shape.mirrored) {
        mirror(lumaColumns_);
        mirror(chromaColumns_);
    }
    const auto units = [](const Axis& axis) { return static_cast<std::size_t>(axis.end - axis.first); };
    lumaSums_.resize(units(lumaColumns_) + kSpare);
    chromaSums_.resize(2 * units(chromaColumns_) + kSpare);
    luma_.resize(lumaColumns_.taps.size());
    chroma_.resize(2 * chromaColumns_.taps.size());
}

void PictureFill::addRows(const PlaneView& plane, int unitBytes, const Axis& columns, const Axis& rows, int row,
                          std::vector<std::uint16_t>& sums) {
    const Axis::Taps& taps = rows.taps[static_cast<std::size_t>(row)];
    const auto bytes = static_cast<std::size_t>(unitBytes * (columns.end - columns.first));
    const hn::ScalableTag<std::uint16_t> words;
    const hn::Rebind<std::uint8_t, decltype(words)> small;
    for (std::size_t i = 0; i < bytes; i += hn::Lanes(words)) {
        auto sum = hn::Zero(words);
        for (int tap = 0; tap < taps.count; ++tap) {
            // Reads past a row stay inside the plane and its spare bytes.
            const std::uint8_t* from = plane.row(taps.first + tap) + unitBytes * columns.first + i;
            const auto weight = hn::Set(words, rows.weights[taps.weights + static_cast<std::size_t>(tap)]);
            sum = hn::Add(sum, hn::Mul(hn::PromoteTo(words, hn::LoadU(small, from)), weight));
        }
        hn::StoreU(sum, words, sums.data() + i);
    }
}

void PictureFill::addLuma() {
    for (std::size_t x = 0; x < luma_.size(); ++x) {
        const Axis::Taps& taps = lumaColumns_.taps[x];
        const std::uint16_t* from = lumaSums_.data() + (taps.first - lumaColumns_.first);
        const std::uint16_t* weight = lumaColumns_.weights.data() + taps.weights;
        std::uint32_t sum = 1 << 15;
        for (int tap = 0; tap < taps.count; ++tap) {
            sum += std::uint32_t{from[tap]} * weight[tap];
        }
        luma_[x] = static_cast<std::int32_t>(sum >> 16);
    }
}

void PictureFill::addChroma() {
    for (std::size_t x = 0; x < chromaColumns_.taps.size(); ++x) {
        const Axis::Taps& taps = chromaColumns_.taps[x];
        const std::uint16_t* from = chromaSums_.data() + std::ptrdiff_t{2} * (taps.first - chromaColumns_.first);
        const std::uint16_t* weight = chromaColumns_.weights.data() + taps.weights;
        std::uint32_t blue = 1 << 15;
        std::uint32_t red = 1 << 15;
        for (int tap = 0; tap < taps.count; ++tap) {
            blue += std::uint32_t{from[2 * tap]} * weight[tap];
            red += std::uint32_t{from[2 * tap + 1]} * weight[tap];
        }
        chroma_[2 * x] = static_cast<std::int32_t>(blue >> 16);
        chroma_[2 * x + 1] = static_cast<std::int32_t>(red >> 16);
    }
}

void PictureFill::convertRow(std::uint32_t* to) const {
    for (std::size_t x = 0; x < luma_.size(); ++x) {
        const int luma = kLuma * (luma_[x] - 16);
        const int cb = chroma_[2 * x] - 128;
        const int cr = chroma_[2 * x + 1] - 128;
        to[x] = 0xff000000U | component(luma + kRedOfCr * cr) << 16 |
                component(luma + kGreenOfCb * cb + kGreenOfCr * cr) << 8 | component(luma + kBlueOfCb * cb);
    }
}

void PictureFill::fill(const PixelBuffer& from, QImage& to) {
    for (int y = 0; y < shape_.to.height(); ++y) {
        addRows(from.plane(0), 1, lumaColumns_, lumaRows_, y, lumaSums_);
        addRows(from.plane(1), 2, chromaColumns_, chromaRows_, y, chromaSums_);
        addLuma();
        addChroma();
        convertRow(reinterpret_cast<std::uint32_t*>(to.scanLine(y)));
    }
}

} // namespace velmo
