#include "platform/ffmpeg/internal/Rec709Kernels.h"

#include <algorithm>
#include <cmath>

// compiled once for each instruction set by the include below
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/ffmpeg/internal/Rec709Kernels.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmo::internal::Rec709Kernels {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Values have 6 more bits, so that the upper half of a product has 4 more.
constexpr int kMore = 6;
constexpr int kLeft = 4;
constexpr int kHalf = 1 << (kLeft - 1);

using Bytes = hn::ScalableTag<std::uint8_t>;
using Wide = hn::ScalableTag<std::int16_t>;
using Pairs = hn::ScalableTag<std::uint32_t>;

template <class D>
HWY_INLINE hn::Vec<D> load(D wide, const std::uint8_t* from, int zero) {
    const auto value = hn::PromoteTo(wide, hn::LoadU(hn::Rebind<std::uint8_t, D>(), from));
    return hn::ShiftLeft<kMore>(hn::Sub(value, hn::Set(wide, static_cast<std::int16_t>(zero))));
}

template <class D, class V>
HWY_INLINE V times(D wide, V value, std::int16_t factor) {
    return hn::MulHigh(value, hn::Set(wide, factor));
}

/// Whole units above `zero`.
HWY_INLINE hn::Vec<Wide> rounded(hn::Vec<Wide> value, int zero) {
    const auto half = hn::Set(Wide(), static_cast<std::int16_t>((zero << kLeft) + kHalf));
    return hn::ShiftRight<kLeft>(hn::Add(value, half));
}

/// Calls with the beginning of each `step` units; the last ones overlap those before.
template <typename Work>
HWY_INLINE void eachStep(std::size_t count, std::size_t step, const Work& work) {
    for (std::size_t i = 0; i + step < count; i += step) {
        work(i);
    }
    work(count - step);
}

void lumaOn(const Matrix& matrix, const std::uint8_t* luma, const std::uint8_t* cb, const std::uint8_t* cr,
            std::size_t pixels, std::uint8_t* to) {
    const Wide wide;
    const Pairs pairs;
    const hn::Rebind<std::int16_t, Pairs> half;
    const hn::Rebind<std::uint16_t, Pairs> plain;
    eachStep(pixels / 2, hn::Lanes(pairs), [&](std::size_t pair) {
        const auto tint = hn::Add(times(half, load(half, cb + pair, 128), matrix.lumaOfCb),
                                  times(half, load(half, cr + pair, 128), matrix.lumaOfCr));
        const auto once = hn::PromoteTo(pairs, hn::BitCast(plain, tint));
        const auto twice = hn::BitCast(wide, hn::Or(once, hn::ShiftLeft<16>(once)));
        const auto grey = times(wide, load(wide, luma + 2 * pair, matrix.black), matrix.luma);
        const hn::Rebind<std::uint8_t, Wide> bytes;
        hn::StoreU(hn::DemoteTo(bytes, rounded(hn::Add(grey, twice), 16)), bytes, to + 2 * pair);
    });
}

void colorOn(const Matrix& matrix, ColorRow upper, ColorRow lower, std::size_t pairs, std::uint8_t* to) {
    const Wide wide;
    const auto mean = [wide](const std::uint8_t* a, const std::uint8_t* b) {
        return hn::ShiftRight<1>(hn::Add(load(wide, a, 128), load(wide, b, 128)));
    };
    const auto byteOf = [wide](hn::Vec<Wide> value) {
        return hn::Min(hn::Max(rounded(value, 128), hn::Zero(wide)), hn::Set(wide, 255));
    };
    eachStep(pairs, hn::Lanes(wide), [&](std::size_t i) {
        const auto cb = mean(upper.cb + i, lower.cb + i);
        const auto cr = mean(upper.cr + i, lower.cr + i);
        const auto newCb = byteOf(hn::Add(times(wide, cb, matrix.cb), times(wide, cr, matrix.cbOfCr)));
        const auto newCr = byteOf(hn::Add(times(wide, cb, matrix.crOfCb), times(wide, cr, matrix.cr)));
        hn::StoreU(hn::BitCast(Bytes(), hn::Or(newCb, hn::ShiftLeft<8>(newCr))), Bytes(), to + 2 * i);
    });
}

void unpackOn(const std::uint8_t* packed, std::size_t pixels, std::uint8_t* luma, std::uint8_t* cb, std::uint8_t* cr) {
    const Bytes bytes;
    eachStep(pixels / 2, hn::Lanes(bytes), [&](std::size_t pair) {
        hn::Vec<Bytes> even;
        hn::Vec<Bytes> odd;
        hn::Vec<Bytes> blue;
        hn::Vec<Bytes> red;
        hn::LoadInterleaved4(bytes, packed + 4 * pair, even, blue, odd, red);
        hn::StoreInterleaved2(even, odd, bytes, luma + 2 * pair);
        hn::StoreU(blue, bytes, cb + pair);
        hn::StoreU(red, bytes, cr + pair);
    });
}

} // namespace HWY_NAMESPACE
} // namespace velmo::internal::Rec709Kernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::internal::Rec709Kernels {
namespace {

HWY_EXPORT(lumaOn);
HWY_EXPORT(colorOn);
HWY_EXPORT(unpackOn);

constexpr double kRed = 0.2126;
constexpr double kBlue = 0.0722;
constexpr double kGreen = 1 - kRed - kBlue;

std::int16_t share(double value) {
    return static_cast<std::int16_t>(std::lround(value * 16384));
}

} // namespace

Matrix makeMatrix(double red, double blue, bool fullRange) {
    const double green = 1 - red - blue;
    // What one unit of each difference adds to red, green and blue.
    const double redOfCr = 2 * (1 - red);
    const double blueOfCb = 2 * (1 - blue);
    const double greenOfCr = -redOfCr * red / green;
    const double greenOfCb = -blueOfCb * blue / green;
    const double lumaOfCb = kGreen * greenOfCb + kBlue * blueOfCb;
    const double lumaOfCr = kRed * redOfCr + kGreen * greenOfCr;
    const double toCb = 1 / (2 * (1 - kBlue));
    const double toCr = 1 / (2 * (1 - kRed));
    const double luma = fullRange ? 219.0 / 255 : 1;
    const double color = fullRange ? 224.0 / 255 : 1;
    const double lumaOfColor = fullRange ? luma : 219.0 / 224;
    return {share(luma),
            share(lumaOfCb * lumaOfColor),
            share(lumaOfCr * lumaOfColor),
            share((blueOfCb - lumaOfCb) * toCb * color),
            share(-lumaOfCr * toCb * color),
            share(-lumaOfCb * toCr * color),
            share((redOfCr - lumaOfCr) * toCr * color),
            static_cast<std::int16_t>(fullRange ? 0 : 16)};
}

void luma(const Matrix& matrix, const std::uint8_t* luma, const std::uint8_t* cb, const std::uint8_t* cr,
          std::size_t pixels, std::uint8_t* to) {
    HWY_DYNAMIC_DISPATCH(lumaOn)(matrix, luma, cb, cr, pixels, to);
}

void color(const Matrix& matrix, ColorRow upper, ColorRow lower, std::size_t pairs, std::uint8_t* to) {
    HWY_DYNAMIC_DISPATCH(colorOn)(matrix, upper, lower, pairs, to);
}

void unpack(const std::uint8_t* packed, std::size_t pixels, std::uint8_t* luma, std::uint8_t* cb, std::uint8_t* cr) {
    HWY_DYNAMIC_DISPATCH(unpackOn)(packed, pixels, luma, cb, cr);
}

} // namespace velmo::internal::Rec709Kernels
#endif
