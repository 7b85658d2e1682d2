#include "platform/x11/internal/PictureScaler.h"

#include <algorithm>
#include <cmath>

// compiled once for each instruction set by the include below
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/x11/internal/PictureScaler.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmo::x11 {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

void addRows(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
             std::size_t bytes, std::uint16_t* row) {
    for (std::size_t i = 0; i < bytes; ++i) {
        std::uint32_t sum = 0;
        for (int tap = 0; tap < count; ++tap) {
            sum += (std::uint32_t{first[tap * stride + static_cast<std::ptrdiff_t>(i)]} << 8) * weights[tap] >> 16;
        }
        row[i] = static_cast<std::uint16_t>(sum);
    }
}

void addColumns(const std::uint16_t* row, int origin, const PictureScaler::Axis::Taps* taps,
                const std::uint16_t* weights, int count, std::uint8_t* to) {
    for (int x = 0; x < count; ++x, to += 4) {
        for (int part = 0; part < 4; ++part) {
            const std::uint16_t* from = row + std::ptrdiff_t{4} * (taps[x].first - origin) + part;
            std::uint32_t sum = 128;
            for (int tap = 0; tap < taps[x].count; ++tap, from += 4) {
                sum += std::uint32_t{*from} * weights[taps[x].weights + static_cast<std::size_t>(tap)] >> 16;
            }
            to[part] = static_cast<std::uint8_t>(sum >> 8);
        }
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// `row` = the weighted sum of `count` rows of `bytes` bytes, 256 times the values. `row` has room for 64 more.
void addRows(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
             std::size_t bytes, std::uint16_t* row) {
    const hn::ScalableTag<std::uint16_t> words;
    const hn::Rebind<std::uint8_t, decltype(words)> small;
    for (std::size_t i = 0; i < bytes; i += hn::Lanes(words)) {
        auto sum = hn::Zero(words);
        const std::uint8_t* from = first + i;
        const std::size_t left = bytes - i;
        for (int tap = 0; tap < count; ++tap, from += stride) {
            HWY_ALIGN std::uint8_t last[HWY_MAX_BYTES] = {};
            if (left < hn::Lanes(words)) {
                std::copy_n(from, left, last);
            }
            const auto value = hn::LoadU(small, left < hn::Lanes(words) ? last : from);
            const auto high = hn::ShiftLeft<8>(hn::PromoteTo(words, value));
            sum = hn::Add(sum, hn::MulHigh(high, hn::Set(words, weights[tap])));
        }
        hn::StoreU(sum, words, row + i);
    }
}

/// One pixel of the result for each of `taps`, from a row of `addRows` that begins with pixel `origin`.
void addColumns(const std::uint16_t* row, int origin, const PictureScaler::Axis::Taps* taps,
                const std::uint16_t* weights, int count, std::uint8_t* to) {
    const hn::FixedTag<std::uint16_t, 4> words;
    const hn::Rebind<std::uint8_t, decltype(words)> small;
    for (int x = 0; x < count; ++x, to += 4) {
        const std::uint16_t* from = row + std::ptrdiff_t{4} * (taps[x].first - origin);
        auto sum = hn::Set(words, 128);
        for (int tap = 0; tap < taps[x].count; ++tap, from += 4) {
            const auto weight = hn::Set(words, weights[taps[x].weights + static_cast<std::size_t>(tap)]);
            sum = hn::Add(sum, hn::MulHigh(hn::LoadU(words, from), weight));
        }
        hn::StoreU(hn::DemoteTo(small, hn::BitCast(hn::RebindToSigned<decltype(words)>(), hn::ShiftRight<8>(sum))),
                   small, to);
    }
}

#endif

} // namespace HWY_NAMESPACE
} // namespace velmo::x11
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::x11 {
namespace {

HWY_EXPORT(addRows);
HWY_EXPORT(addColumns);

constexpr double kUnity = 65536;
constexpr std::size_t kSpareWords = 64; // whole vectors are stored

PictureScaler::Axis makeAxis(int from, int to) {
    PictureScaler::Axis axis;
    axis.scale = static_cast<double>(from) / to;
    axis.reach = std::max(1.0, axis.scale);
    std::vector<double> raw;
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * axis.scale - 0.5;
        const int begin = static_cast<int>(std::floor(centre - axis.reach)) + 1;
        const int end = static_cast<int>(std::ceil(centre + axis.reach));
        const int first = std::clamp(begin, 0, from - 1);
        const int last = std::clamp(end - 1, first, from - 1);
        raw.assign(static_cast<std::size_t>(last - first + 1), 0);
        double total = 0;
        for (int j = begin; j < end; ++j) { // pixels beyond the edge are the edge's
            const double weight = std::max(0.0, 1 - std::abs(j - centre) / axis.reach);
            raw[static_cast<std::size_t>(std::clamp(j, first, last) - first)] += weight;
            total += weight;
        }
        axis.taps.push_back({first, last - first + 1, axis.weights.size()});
        double done = 0;
        double given = 0;
        for (const double weight : raw) { // rounded so that the sum is exact
            done += weight / total * kUnity;
            const double share = std::round(done) - given;
            given += share;
            axis.weights.push_back(static_cast<std::uint16_t>(std::min(share, kUnity - 1)));
        }
    }
    return axis;
}

void affectedLine(const PictureScaler::Axis& axis, int first, int end, int& from, int& size) {
    const int count = static_cast<int>(axis.taps.size());
    const double low = (first + 0.5 - axis.reach) / axis.scale - 0.5;
    const double high = (end - 0.5 + axis.reach) / axis.scale - 0.5;
    from = std::clamp(static_cast<int>(std::floor(low)), 0, count);
    size = std::clamp(static_cast<int>(std::ceil(high)) + 1, from, count) - from;
}

} // namespace

PictureScaler::PictureScaler(int fromWidth, int fromHeight, int toWidth, int toHeight)
    : horizontal_(makeAxis(fromWidth, toWidth)), vertical_(makeAxis(fromHeight, toHeight)),
      row_(static_cast<std::size_t>(fromWidth) * 4 + kSpareWords) {}

PixelRect PictureScaler::affectedBy(const PixelRect& source) const {
    PixelRect rect;
    affectedLine(horizontal_, source.x, source.right(), rect.x, rect.width);
    affectedLine(vertical_, source.y, source.bottom(), rect.y, rect.height);
    return rect;
}

void PictureScaler::scale(const Picture& from, const Picture& to, const PixelRect& rect) {
    if (rect.isEmpty()) {
        return;
    }
    const Axis::Taps* columns = horizontal_.taps.data() + rect.x;
    const int left = columns[0].first;
    const int right = columns[rect.width - 1].first + columns[rect.width - 1].count;
    const auto bytes = static_cast<std::size_t>(right - left) * 4;
    for (int y = rect.y; y < rect.bottom(); ++y) {
        const Axis::Taps& rows = vertical_.taps[static_cast<std::size_t>(y)];
        HWY_DYNAMIC_DISPATCH(addRows)
        (from.at(left, rows.first), from.stride, rows.count, vertical_.weights.data() + rows.weights, bytes,
         row_.data());
        HWY_DYNAMIC_DISPATCH(addColumns)
        (row_.data(), left, columns, horizontal_.weights.data(), rect.width, to.at(rect.x, y));
    }
}

} // namespace velmo::x11
#endif
