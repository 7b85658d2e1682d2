#include "compositor/internal/BlendKernels.h"

// This file compiles itself once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "compositor/internal/BlendKernels.cpp"
#include <hwy/foreach_target.h>

#include "compositor/internal/BlendArithmetic.inc"

HWY_BEFORE_NAMESPACE();
namespace velmo::internal {
namespace HWY_NAMESPACE {
namespace {

constexpr int kFourShift = kFraction - 2; // the sum of four, as a mean with `kFraction` bits
constexpr int kFourOpaque = 4 * 255;

#if HWY_TARGET == HWY_SCALAR

struct Pixel {
    int blue;
    int green;
    int red;
    int alpha;
    int kept; // what it leaves of the picture, in 1/2^15
};

int weighedPixel(const Pixel& pixel, const Weights& by) {
    return weighed(pixel.blue, pixel.green, pixel.red, pixel.alpha, by);
}

int keptBeside(int alpha) {
    return ((255 - alpha) << 7) + ((255 - alpha) >> 1);
}

Pixel pixelAt(const std::uint8_t* p) {
    return {p[0] << kFraction, p[1] << kFraction, p[2] << kFraction, p[3] << kFraction, keptBeside(p[3])};
}

Pixel meanAt(const std::uint8_t* upper, const std::uint8_t* lower) {
    const auto sum = [&](int c) { return upper[c] + upper[c + 4] + lower[c] + lower[c + 4]; };
    const int left = kFourOpaque - sum(3);
    return {sum(0) << kFourShift, sum(1) << kFourShift, sum(2) << kFourShift, sum(3) << kFourShift,
            (left << 5) + (left >> 3)};
}

void overLumaOn(const std::uint8_t* bitmap, std::uint8_t* row, int pixels) {
    for (int i = 0; i < pixels; ++i) {
        const Pixel pixel = pixelAt(bitmap + 4 * i);
        row[i] = over(weighedPixel(pixel, kLuma), pixel.kept, row[i]);
    }
}

void overChromaOn(const std::uint8_t* upper, const std::uint8_t* lower, std::uint8_t* row, int pixels) {
    for (int i = 0; i < pixels; i += 2) {
        const Pixel mean = meanAt(upper + 4 * i, lower + 4 * i);
        row[i] = over(weighedPixel(mean, kCb), mean.kept, row[i]);
        row[i + 1] = over(weighedPixel(mean, kCr), mean.kept, row[i + 1]);
    }
}

void overBgraOn(const std::uint8_t* bitmap, std::uint8_t* row, int pixels) {
    for (int i = 0; i < 4 * pixels; ++i) {
        row[i] = over(bitmap[i] << kFraction, keptBeside(bitmap[i | 3]), row[i]);
    }
}

#else

// Components of 8 bits are worked on as the even and the odd ones of words of 16.
using Bytes = hn::CappedTag<std::uint8_t, kBlockBytes>;
using Words = hn::Repartition<std::uint16_t, Bytes>;
using ByteVector = hn::Vec<Bytes>;

Number even(ByteVector v) {
    return hn::BitCast(Numbers(), hn::And(hn::BitCast(Words(), v), hn::Set(Words(), 0xff)));
}

Number odd(ByteVector v) {
    return hn::BitCast(Numbers(), hn::ShiftRight<8>(hn::BitCast(Words(), v)));
}

ByteVector joined(Number evenOnes, Number oddOnes) {
    const auto high = hn::ShiftLeft<8>(hn::BitCast(Words(), oddOnes));
    return hn::BitCast(Bytes(), hn::Or(hn::BitCast(Words(), evenOnes), high));
}

Number keptBeside(Number alpha) {
    const auto left = hn::Sub(hn::Set(Numbers(), 255), alpha);
    return hn::Add(hn::ShiftLeft<7>(left), hn::ShiftRight<1>(left));
}

void overLumaOn(const std::uint8_t* HWY_RESTRICT bitmap, std::uint8_t* HWY_RESTRICT row, int pixels) {
    const Bytes bytes;
    const auto step = static_cast<int>(hn::Lanes(bytes));
    for (int i = 0; i < pixels; i += step) {
        ByteVector blue, green, red, alpha;
        hn::LoadInterleaved4(bytes, bitmap + 4 * i, blue, green, red, alpha);
        const auto below = hn::Load(bytes, row + i);
        const auto blended = [&](auto half) {
            const auto light = [&](ByteVector v) { return hn::ShiftLeft<kFraction>(half(v)); };
            const auto added = weighed(light(blue), light(green), light(red), light(alpha), kLuma);
            return over(added, keptBeside(half(alpha)), half(below));
        };
        const auto result =
            joined(blended([](ByteVector v) { return even(v); }), blended([](ByteVector v) { return odd(v); }));
        hn::Store(result, bytes, row + i);
    }
}

Number sumOfFour(ByteVector upper, ByteVector lower) {
    return hn::Add(hn::Add(even(upper), odd(upper)), hn::Add(even(lower), odd(lower)));
}

void overChromaOn(const std::uint8_t* HWY_RESTRICT upper, const std::uint8_t* HWY_RESTRICT lower,
                  std::uint8_t* HWY_RESTRICT row, int pixels) {
    const Bytes bytes;
    const auto step = static_cast<int>(hn::Lanes(bytes));
    for (int i = 0; i < pixels; i += step) {
        ByteVector blue[2], green[2], red[2], alpha[2];
        hn::LoadInterleaved4(bytes, upper + 4 * i, blue[0], green[0], red[0], alpha[0]);
        hn::LoadInterleaved4(bytes, lower + 4 * i, blue[1], green[1], red[1], alpha[1]);
        const auto mean = [](const ByteVector* v) { return hn::ShiftLeft<kFourShift>(sumOfFour(v[0], v[1])); };
        const auto left = hn::Sub(hn::Set(Numbers(), kFourOpaque), sumOfFour(alpha[0], alpha[1]));
        const auto kept = hn::Add(hn::ShiftLeft<5>(left), hn::ShiftRight<3>(left));
        const auto below = hn::Load(bytes, row + i);
        const auto cb = weighed(mean(blue), mean(green), mean(red), mean(alpha), kCb);
        const auto cr = weighed(mean(blue), mean(green), mean(red), mean(alpha), kCr);
        hn::Store(joined(over(cb, kept, even(below)), over(cr, kept, odd(below))), bytes, row + i);
    }
}

void overBgraOn(const std::uint8_t* HWY_RESTRICT bitmap, std::uint8_t* HWY_RESTRICT row, int pixels) {
    const Bytes bytes;
    const hn::Repartition<std::uint32_t, Bytes> longs;
    const auto step = static_cast<int>(hn::Lanes(bytes));
    for (int i = 0; i < 4 * pixels; i += step) {
        const auto source = hn::LoadU(bytes, bitmap + i);
        const auto below = hn::Load(bytes, row + i);
        const auto single = hn::ShiftRight<24>(hn::BitCast(longs, source));
        const auto kept = keptBeside(hn::BitCast(Numbers(), hn::Or(single, hn::ShiftLeft<16>(single))));
        const auto first = over(hn::ShiftLeft<kFraction>(even(source)), kept, even(below));
        const auto second = over(hn::ShiftLeft<kFraction>(odd(source)), kept, odd(below));
        hn::Store(joined(first, second), bytes, row + i);
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace velmo::internal
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::internal {

HWY_EXPORT(overLumaOn);
HWY_EXPORT(overChromaOn);
HWY_EXPORT(overBgraOn);

void blendOverLuma(const std::uint8_t* bitmap, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(overLumaOn)(bitmap, row, pixels);
}

void blendOverChroma(const std::uint8_t* upper, const std::uint8_t* lower, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(overChromaOn)(upper, lower, row, pixels);
}

void blendOverBgra(const std::uint8_t* bitmap, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(overBgraOn)(bitmap, row, pixels);
}

} // namespace velmo::internal
#endif
