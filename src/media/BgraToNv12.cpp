#include "media/BgraToNv12.h"

#include <cstddef>
#include <cstdint>

// compiled once for each instruction set by the include below
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "media/BgraToNv12.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#ifndef VELMO_BGRA_NV12_SHARED
#define VELMO_BGRA_NV12_SHARED
namespace velmo {
namespace {

/// Two rows of the source and what becomes of them.
struct RowPair {
    const std::uint8_t* top;
    const std::uint8_t* bottom;
    std::uint8_t* lumaTop;
    std::uint8_t* lumaBottom;
    std::uint8_t* chroma;
};

// Luma in units of 1/65536 of a code value for each step of a component: weight * 219 / 255.
constexpr std::uint32_t kLumaB = 4064;
constexpr std::uint32_t kLumaG = 40254;
constexpr std::uint32_t kLumaR = 11966;
constexpr std::uint32_t kLumaBias = 16 * 256 + 128 + 1; // black, rounding, and the mean of what three products lose

// Chroma likewise, weight * 224 / 255; each row adds up to 0, so that grey has none.
constexpr std::int32_t kCbB = 28784;
constexpr std::int32_t kCbG = -22188;
constexpr std::int32_t kCbR = -6596;
constexpr std::int32_t kCrB = -2639;
constexpr std::int32_t kCrG = -26145;
constexpr std::int32_t kCrR = 28784;
constexpr std::int32_t kChromaBias = 128 * 128 + 64 + 1;

// The scalar forms round in the same places as the vector ones: a picture does not depend on how it was cut.
constexpr std::uint8_t lumaOf(const std::uint8_t* pixel) {
    const auto high = [](std::uint32_t value, std::uint32_t weight) { return (value << 8) * weight >> 16; };
    return static_cast<std::uint8_t>(
        (high(pixel[0], kLumaB) + high(pixel[1], kLumaG) + high(pixel[2], kLumaR) + kLumaBias) >> 8);
}

/// `b`, `g`, `r` are sums of four pixels.
constexpr std::uint8_t chromaOf(std::int32_t b, std::int32_t g, std::int32_t r, std::int32_t weightB,
                                std::int32_t weightG, std::int32_t weightR) {
    const auto high = [](std::int32_t value, std::int32_t weight) { return (value << 5) * weight >> 16; };
    return static_cast<std::uint8_t>((high(b, weightB) + high(g, weightG) + high(r, weightR) + kChromaBias) >> 7);
}

/// Columns from `x` to `width`; an odd last one is its own neighbour.
void convertColumns(const RowPair& rows, int x, int width) {
    for (; x < width; x += 2) {
        const int next = x + 1 < width ? x + 1 : x;
        const std::uint8_t* block[] = {rows.top + 4 * x, rows.top + 4 * next, rows.bottom + 4 * x,
                                       rows.bottom + 4 * next};
        rows.lumaTop[x] = lumaOf(block[0]);
        rows.lumaTop[next] = lumaOf(block[1]);
        rows.lumaBottom[x] = lumaOf(block[2]);
        rows.lumaBottom[next] = lumaOf(block[3]);
        const auto sum = [&block](int i) { return block[0][i] + block[1][i] + block[2][i] + block[3][i]; };
        rows.chroma[x] = chromaOf(sum(0), sum(1), sum(2), kCbB, kCbG, kCbR);
        rows.chroma[x + 1] = chromaOf(sum(0), sum(1), sum(2), kCrB, kCrG, kCrR);
    }
}

} // namespace
} // namespace velmo
#endif

HWY_BEFORE_NAMESPACE();
namespace velmo {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

void convertRowPair(const RowPair& rows, int width) {
    convertColumns(rows, 0, width);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<std::uint32_t> kPixels;
const hn::Repartition<std::uint16_t, decltype(kPixels)> kWords;
const hn::Repartition<std::int16_t, decltype(kPixels)> kSigned;
const hn::Repartition<std::uint8_t, decltype(kPixels)> kBytes;
using Pixels = hn::Vec<decltype(kPixels)>;
using Bytes = hn::Vec<decltype(kBytes)>;
using Words = hn::Vec<decltype(kWords)>;

/// Adds the two halves of each 32-bit lane into the lower one.
HWY_INLINE Words addHalves(Words sums) {
    const Pixels lanes = hn::BitCast(kPixels, sums);
    return hn::BitCast(kWords, hn::Add(lanes, hn::ShiftRight<16>(lanes)));
}

/// The lower halves of all lanes of four vectors, plus `bias`, without their last `kShift` bits, as bytes in order.
template <int kShift>
HWY_INLINE Bytes pack(Words a, Words b, Words c, Words d, Words bias) {
    const Words first = hn::ShiftRight<kShift>(hn::Add(hn::ConcatEven(kWords, b, a), bias));
    const Words second = hn::ShiftRight<kShift>(hn::Add(hn::ConcatEven(kWords, d, c), bias));
    return hn::ConcatEven(kBytes, hn::BitCast(kBytes, second), hn::BitCast(kBytes, first));
}

HWY_INLINE Words lumaSums(Pixels pixels) {
    const Words words = hn::BitCast(kWords, pixels); // B and G in one, R and the fourth byte in the next
    const Words blueRed = hn::BitCast(kWords, hn::Set(kPixels, kLumaR << 16 | kLumaB));
    const Words green = hn::BitCast(kWords, hn::Set(kPixels, kLumaG));
    const Words high = hn::And(words, hn::Set(kWords, 0xff00));
    return addHalves(hn::Add(hn::MulHigh(hn::ShiftLeft<8>(words), blueRed), hn::MulHigh(high, green)));
}

/// Cb in the even lanes, Cr in the odd ones, of the two pixels of each pair of lanes in both rows.
HWY_INLINE Words chromaSums(Pixels top, Pixels bottom) {
    alignas(16) static constexpr std::int16_t kBlueRed[8] = {kCbB, kCbR, kCrB, kCrR, kCbB, kCbR, kCrB, kCrR};
    alignas(16) static constexpr std::int16_t kGreen[8] = {kCbG, 0, kCrG, 0, kCbG, 0, kCrG, 0};
    const Words low = hn::Set(kWords, 0x00ff);
    const Words topWords = hn::BitCast(kWords, top);
    const Words bottomWords = hn::BitCast(kWords, bottom);
    const Words blueRed = hn::Add(hn::And(topWords, low), hn::And(bottomWords, low));
    const Words green = hn::Add(hn::ShiftRight<8>(topWords), hn::ShiftRight<8>(bottomWords));
    const auto weighted = [](Words sums, const std::int16_t* weights) HWY_ATTR {
        const Words neighbours = hn::BitCast(kWords, hn::Shuffle2301(hn::BitCast(kPixels, sums)));
        const auto four = hn::BitCast(kSigned, hn::ShiftLeft<5>(hn::Add(sums, neighbours)));
        return hn::BitCast(kWords, hn::MulHigh(four, hn::LoadDup128(kSigned, weights)));
    };
    return addHalves(hn::Add(weighted(blueRed, kBlueRed), weighted(green, kGreen)));
}

HWY_INLINE void convertBlock(const RowPair& rows, std::size_t x) {
    const std::size_t lanes = hn::Lanes(kPixels);
    const Words lumaBias = hn::Set(kWords, static_cast<std::uint16_t>(kLumaBias));
    const Words chromaBias = hn::Set(kWords, static_cast<std::uint16_t>(kChromaBias));
    const auto load = [lanes, x](const std::uint8_t* row, std::size_t i)
                          HWY_ATTR { return hn::BitCast(kPixels, hn::LoadU(kBytes, row + 4 * (x + i * lanes))); };
    const Pixels t0 = load(rows.top, 0);
    const Pixels t1 = load(rows.top, 1);
    const Pixels t2 = load(rows.top, 2);
    const Pixels t3 = load(rows.top, 3);
    const Pixels b0 = load(rows.bottom, 0);
    const Pixels b1 = load(rows.bottom, 1);
    const Pixels b2 = load(rows.bottom, 2);
    const Pixels b3 = load(rows.bottom, 3);
    hn::StoreU(pack<8>(lumaSums(t0), lumaSums(t1), lumaSums(t2), lumaSums(t3), lumaBias), kBytes, rows.lumaTop + x);
    hn::StoreU(pack<8>(lumaSums(b0), lumaSums(b1), lumaSums(b2), lumaSums(b3), lumaBias), kBytes, rows.lumaBottom + x);
    hn::StoreU(pack<7>(chromaSums(t0, b0), chromaSums(t1, b1), chromaSums(t2, b2), chromaSums(t3, b3), chromaBias),
               kBytes, rows.chroma + x);
}

void convertRowPair(const RowPair& rows, int width) {
    const int block = static_cast<int>(hn::Lanes(kBytes));
    const int even = width & ~1;
    int x = 0;
    for (; x + block <= even; x += block) {
        convertBlock(rows, static_cast<std::size_t>(x));
    }
    if (x < even && even >= block) { // once more over pixels that are done costs less than one by one
        convertBlock(rows, static_cast<std::size_t>(even - block));
        x = even;
    }
    convertColumns(rows, x, width);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace velmo
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo {
namespace {

HWY_EXPORT(convertRowPair);

} // namespace

void convertBgraToNv12(const PlaneView& from, const PixelBuffer& to, const PixelArea& area) {
    const PlaneView luma = to.plane(0);
    const PlaneView chroma = to.plane(1);
    const auto convert = HWY_DYNAMIC_DISPATCH(convertRowPair);
    const std::ptrdiff_t left = std::ptrdiff_t{4} * area.x;
    for (int y = area.y; y < area.y + area.height; y += 2) {
        const int next = y + 1 < to.height() ? y + 1 : y; // an odd last row is its own neighbour
        convert({from.row(y) + left, from.row(next) + left, luma.row(y) + area.x, luma.row(next) + area.x,
                 chroma.row(y / 2) + area.x},
                area.width);
    }
}

} // namespace velmo
#endif
