#include "surfaces/internal/FillKernels.h"

#include <algorithm>

// compiled once for each instruction set by the include below
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "surfaces/internal/FillKernels.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#ifndef VELMO_FILL_KERNEL_FACTORS
#define VELMO_FILL_KERNEL_FACTORS
namespace velmo::FillKernels {

// 16384 times: a product's upper half of values with 6 more bits has 4 more bits.
inline constexpr std::int16_t kLuma = 19077;
inline constexpr std::int16_t kRedOfCr = 29372;
inline constexpr std::int16_t kGreenOfCb = -3494;
inline constexpr std::int16_t kGreenOfCr = -8731;
inline constexpr std::int16_t kBlueOfTwiceCb = 17305;

} // namespace velmo::FillKernels
#endif

HWY_BEFORE_NAMESPACE();
namespace velmo::FillKernels {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

void addRowsOn(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
               std::size_t bytes, std::uint16_t* sums) {
    for (std::size_t i = 0; i < bytes; ++i) {
        std::uint32_t sum = 0;
        for (int tap = 0; tap < count; ++tap) {
            sum += std::uint32_t{first[tap * stride + static_cast<std::ptrdiff_t>(i)]} * weights[tap];
        }
        sums[i] = static_cast<std::uint16_t>(sum);
    }
}

void turnOn(const std::uint16_t* rows, std::size_t stride, std::size_t count, std::uint16_t* turned) {
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            turned[i * kRows + row] = rows[row * stride + i];
        }
    }
}

int upperHalf(int value, int factor) {
    return value * factor >> 16;
}

std::uint32_t byteOf(int value) {
    return static_cast<std::uint32_t>(std::clamp((value + 8) >> 4, 0, 255));
}

int sumOf(const std::uint16_t* from, std::ptrdiff_t step, const std::uint16_t* weights, int count) {
    std::uint32_t sum = 128;
    for (int tap = 0; tap < count; ++tap) {
        sum += std::uint32_t{from[tap * step]} * weights[tap] >> 16;
    }
    return static_cast<int>(std::min(sum, 0xffffU));
}

void mixColumnsOn(const std::uint16_t* luma, const Axis& lumaAxis, const std::uint16_t* chroma, const Axis& chromaAxis,
                  std::uint32_t* const* rows) {
    constexpr auto kStep = static_cast<std::ptrdiff_t>(kRows);
    const std::uint16_t* lumaWeights = lumaAxis.weights.data();
    const std::uint16_t* chromaWeights = chromaAxis.weights.data();
    for (std::size_t x = 0; x < lumaAxis.begins.size(); ++x) {
        const std::uint16_t* lumaFrom = luma + kStep * (lumaAxis.begins[x] - lumaAxis.first);
        const std::uint16_t* chromaFrom = chroma + 2 * kStep * (chromaAxis.begins[x] - chromaAxis.first);
        for (std::ptrdiff_t row = 0; row < kStep; ++row) {
            const int y = upperHalf((sumOf(lumaFrom + row, kStep, lumaWeights, lumaAxis.count) >> 2) - 1024, kLuma);
            const int cb = (sumOf(chromaFrom + row, 2 * kStep, chromaWeights, chromaAxis.count) >> 2) - 8192;
            const int cr = (sumOf(chromaFrom + kStep + row, 2 * kStep, chromaWeights, chromaAxis.count) >> 2) - 8192;
            rows[row][x] = 0xff000000U | byteOf(y + upperHalf(cr, kRedOfCr)) << 16 |
                           byteOf(y + upperHalf(cb, kGreenOfCb) + upperHalf(cr, kGreenOfCr)) << 8 |
                           byteOf(y + upperHalf(2 * cb, kBlueOfTwiceCb));
        }
        lumaWeights += lumaAxis.count;
        chromaWeights += chromaAxis.count;
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using WordTag = hn::FixedTag<std::uint16_t, kRows>;
using SignedTag = hn::FixedTag<std::int16_t, kRows>;
using Words = hn::Vec<WordTag>;
using Signed = hn::Vec<SignedTag>;

void addRowsOn(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
               std::size_t bytes, std::uint16_t* sums) {
    const hn::ScalableTag<std::uint16_t> words;
    const hn::Rebind<std::uint8_t, decltype(words)> small;
    for (std::size_t i = 0; i < bytes; i += hn::Lanes(words)) {
        auto sum = hn::Zero(words);
        const std::uint8_t* from = first + i;
        for (int tap = 0; tap < count; ++tap, from += stride) {
            const auto value = hn::PromoteTo(words, hn::LoadU(small, from));
            sum = hn::Add(sum, hn::Mul(value, hn::Set(words, weights[tap])));
        }
        hn::StoreU(sum, words, sums + i);
    }
}

void turnOn(const std::uint16_t* rows, std::size_t stride, std::size_t count, std::uint16_t* turned) {
    const WordTag words;
    for (std::size_t i = 0; i < count; i += kRows) {
        Words a[kRows];
        for (std::size_t row = 0; row < kRows; ++row) {
            a[row] = hn::LoadU(words, rows + row * stride + i);
        }
        for (int stage = 0; stage < 3; ++stage) { // rows r and r + 4 into each other, three times
            Words b[kRows];
            for (std::size_t half = 0; half < kRows / 2; ++half) {
                b[2 * half] = hn::InterleaveLower(words, a[half], a[half + kRows / 2]);
                b[2 * half + 1] = hn::InterleaveUpper(words, a[half], a[half + kRows / 2]);
            }
            std::copy(b, b + kRows, a);
        }
        for (std::size_t column = 0; column < kRows; ++column) {
            hn::StoreU(a[column], words, turned + (i + column) * kRows);
        }
    }
}

/// 256 times the mean of `count` columns that are `step` values apart.
HWY_INLINE Words sumOf(const std::uint16_t* from, std::ptrdiff_t step, const std::uint16_t* weights, int count) {
    const WordTag words;
    Words sum = hn::Set(words, 128);
    for (int tap = 0; tap < count; ++tap, from += step) {
        sum = hn::SaturatedAdd(sum, hn::MulHigh(hn::LoadU(words, from), hn::Set(words, weights[tap])));
    }
    return sum;
}

/// 64 times the value less `zero`.
HWY_INLINE Signed around(Words sum, std::int16_t zero) {
    const SignedTag tag;
    return hn::Sub(hn::BitCast(tag, hn::ShiftRight<2>(sum)), hn::Set(tag, zero));
}

HWY_INLINE Signed upperHalf(Signed value, std::int16_t factor) {
    return hn::MulHigh(value, hn::Set(SignedTag(), factor));
}

HWY_INLINE Words byteOf(Signed value) {
    const SignedTag tag;
    const Signed whole = hn::ShiftRight<4>(hn::Add(value, hn::Set(tag, 8)));
    return hn::BitCast(WordTag(), hn::Min(hn::Max(whole, hn::Zero(tag)), hn::Set(tag, 255)));
}

using Pixels = hn::FixedTag<std::uint32_t, kRows / 2>;

/// One column of pixels.
struct Column {
    hn::Vec<Pixels> upper; // rows
    hn::Vec<Pixels> lower;
};

HWY_INLINE Column columnOf(Words red, Words green, Words blue) {
    const WordTag words;
    const Words low = hn::Or(blue, hn::ShiftLeft<8>(green));
    const Words high = hn::Or(red, hn::Set(words, 0xff00));
    return {hn::BitCast(Pixels(), hn::InterleaveLower(words, low, high)),
            hn::BitCast(Pixels(), hn::InterleaveUpper(words, low, high))};
}

/// Four columns beside each other as four rows of four.
HWY_INLINE void storeSquare(hn::Vec<Pixels> a, hn::Vec<Pixels> b, hn::Vec<Pixels> c, hn::Vec<Pixels> d,
                            std::uint32_t* const* rows, std::size_t x) {
    const Pixels pixels;
    const auto upperLeft = hn::InterleaveLower(pixels, a, b);
    const auto lowerLeft = hn::InterleaveUpper(pixels, a, b);
    const auto upperRight = hn::InterleaveLower(pixels, c, d);
    const auto lowerRight = hn::InterleaveUpper(pixels, c, d);
    hn::StoreU(hn::ConcatLowerLower(pixels, upperRight, upperLeft), pixels, rows[0] + x);
    hn::StoreU(hn::ConcatUpperUpper(pixels, upperRight, upperLeft), pixels, rows[1] + x);
    hn::StoreU(hn::ConcatLowerLower(pixels, lowerRight, lowerLeft), pixels, rows[2] + x);
    hn::StoreU(hn::ConcatUpperUpper(pixels, lowerRight, lowerLeft), pixels, rows[3] + x);
}

HWY_INLINE void storeColumn(const Column& column, std::uint32_t* const* rows, std::size_t x) {
    HWY_ALIGN std::uint32_t values[kRows];
    hn::Store(column.upper, Pixels(), values);
    hn::Store(column.lower, Pixels(), values + kRows / 2);
    for (std::size_t row = 0; row < kRows; ++row) {
        rows[row][x] = values[row];
    }
}

/// `kTaps` units make each unit of both axes; 0: as many as the axes say. Known ones are no loops.
template <int kTaps>
class Mixer {
public:
    Mixer(const std::uint16_t* luma, const Axis& lumaAxis, const std::uint16_t* chroma, const Axis& chromaAxis)
        : luma_(luma), lumaAxis_(lumaAxis), chroma_(chroma), chromaAxis_(chromaAxis) {}

    HWY_INLINE Column at(std::size_t x) const {
        constexpr auto kStep = static_cast<std::ptrdiff_t>(kRows);
        const int lumaTaps = kTaps > 0 ? kTaps : lumaAxis_.count;
        const int chromaTaps = kTaps > 0 ? kTaps : chromaAxis_.count;
        const std::uint16_t* lumaFrom = luma_ + kStep * (lumaAxis_.begins[x] - lumaAxis_.first);
        const std::uint16_t* chromaFrom = chroma_ + 2 * kStep * (chromaAxis_.begins[x] - chromaAxis_.first);
        const std::uint16_t* lumaWeights = lumaAxis_.weights.data() + x * static_cast<std::size_t>(lumaTaps);
        const std::uint16_t* chromaWeights = chromaAxis_.weights.data() + x * static_cast<std::size_t>(chromaTaps);
        const Signed y = upperHalf(around(sumOf(lumaFrom, kStep, lumaWeights, lumaTaps), 1024), kLuma);
        const Signed cb = around(sumOf(chromaFrom, 2 * kStep, chromaWeights, chromaTaps), 8192);
        const Signed cr = around(sumOf(chromaFrom + kStep, 2 * kStep, chromaWeights, chromaTaps), 8192);
        const Signed green = hn::Add(upperHalf(cb, kGreenOfCb), upperHalf(cr, kGreenOfCr));
        return columnOf(byteOf(hn::Add(y, upperHalf(cr, kRedOfCr))), byteOf(hn::Add(y, green)),
                        byteOf(hn::Add(y, upperHalf(hn::Add(cb, cb), kBlueOfTwiceCb))));
    }

    void run(std::uint32_t* const* rows) const {
        const std::size_t columns = lumaAxis_.begins.size();
        std::size_t x = 0;
        for (; x + 4 <= columns; x += 4) {
            const Column a = at(x);
            const Column b = at(x + 1);
            const Column c = at(x + 2);
            const Column d = at(x + 3);
            storeSquare(a.upper, b.upper, c.upper, d.upper, rows, x);
            storeSquare(a.lower, b.lower, c.lower, d.lower, rows + kRows / 2, x);
        }
        for (; x < columns; ++x) {
            storeColumn(at(x), rows, x);
        }
    }

private:
    const std::uint16_t* luma_;
    const Axis& lumaAxis_;
    const std::uint16_t* chroma_;
    const Axis& chromaAxis_;
};

void mixColumnsOn(const std::uint16_t* luma, const Axis& lumaAxis, const std::uint16_t* chroma, const Axis& chromaAxis,
                  std::uint32_t* const* rows) {
    constexpr int kEnlarging = 2;
    if (lumaAxis.count == kEnlarging && chromaAxis.count == kEnlarging) {
        Mixer<kEnlarging>(luma, lumaAxis, chroma, chromaAxis).run(rows);
    } else {
        Mixer<0>(luma, lumaAxis, chroma, chromaAxis).run(rows);
    }
}

#endif

} // namespace HWY_NAMESPACE
} // namespace velmo::FillKernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::FillKernels {
namespace {

HWY_EXPORT(addRowsOn);
HWY_EXPORT(turnOn);
HWY_EXPORT(mixColumnsOn);

} // namespace

void addRows(const std::uint8_t* first, std::ptrdiff_t stride, int count, const std::uint16_t* weights,
             std::size_t bytes, std::uint16_t* sums) {
    HWY_DYNAMIC_DISPATCH(addRowsOn)(first, stride, count, weights, bytes, sums);
}

void turn(const std::uint16_t* rows, std::size_t stride, std::size_t count, std::uint16_t* turned) {
    HWY_DYNAMIC_DISPATCH(turnOn)(rows, stride, count, turned);
}

void mixColumns(const std::uint16_t* luma, const Axis& lumaAxis, const std::uint16_t* chroma, const Axis& chromaAxis,
                std::uint32_t* const* rows) {
    HWY_DYNAMIC_DISPATCH(mixColumnsOn)(luma, lumaAxis, chroma, chromaAxis, rows);
}

} // namespace velmo::FillKernels
#endif
