#include "compositor/internal/LineKernels.h"

// This file compiles itself once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "compositor/internal/LineKernels.cpp"
#include <hwy/foreach_target.h>

#include "compositor/internal/BlendArithmetic.inc"

HWY_BEFORE_NAMESPACE();
namespace velmo::internal {
namespace HWY_NAMESPACE {
namespace {

constexpr int kOpaque = 255 << kFraction;

#if HWY_TARGET == HWY_SCALAR

/// What a pixel leaves of the picture, in 1/2^15.
int keptBeside(int alpha) {
    return kOpaque - alpha + ((kOpaque - alpha) >> 8);
}

void lineOverLumaOn(const std::int16_t* line, std::uint8_t* row, int pixels) {
    for (int i = 0; i < pixels; ++i, line += 4) {
        row[i] = over(weighed(line[0], line[1], line[2], line[3], kLuma), keptBeside(line[3]), row[i]);
    }
}

void linesOverChromaOn(const std::int16_t* upper, const std::int16_t* lower, std::uint8_t* row, int pixels) {
    for (int i = 0; i < pixels; i += 2, upper += 8, lower += 8) {
        int mean[4];
        for (int c = 0; c < 4; ++c) {
            const int left = (upper[c] >> 1) + (lower[c] >> 1);
            const int right = (upper[c + 4] >> 1) + (lower[c + 4] >> 1);
            mean[c] = (left + right) >> 1;
        }
        const int kept = keptBeside(mean[3]);
        row[i] = over(weighed(mean[0], mean[1], mean[2], mean[3], kCb), kept, row[i]);
        row[i + 1] = over(weighed(mean[0], mean[1], mean[2], mean[3], kCr), kept, row[i + 1]);
    }
}

void lineOverBgraOn(const std::int16_t* line, std::uint8_t* row, int pixels) {
    for (int i = 0; i < 4 * pixels; ++i) {
        row[i] = over(line[i], keptBeside(line[i | 3]), row[i]);
    }
}

void fadeTowardsOn(const std::uint8_t* source, const std::int16_t* shares, std::uint8_t* row, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        const int moved = (row[i] << kFraction) + scaled((source[i] - row[i]) * (1 << kFraction), shares[i]);
        row[i] = static_cast<std::uint8_t>((moved + (1 << (kFraction - 1))) >> kFraction);
    }
}

#else

using Codes = hn::Rebind<std::uint8_t, Numbers>;

Number keptBeside(Number alpha) {
    const auto left = hn::Sub(hn::Set(Numbers(), kOpaque), alpha);
    return hn::Add(left, hn::ShiftRight<8>(left));
}

Number codesAt(const std::uint8_t* row) {
    return hn::PromoteTo(Numbers(), hn::LoadU(Codes(), row));
}

void storeCodes(Number codes, std::uint8_t* row) {
    hn::StoreU(hn::DemoteTo(Codes(), codes), Codes(), row);
}

void lineOverLumaOn(const std::int16_t* HWY_RESTRICT line, std::uint8_t* HWY_RESTRICT row, int pixels) {
    const auto step = static_cast<int>(hn::Lanes(Numbers()));
    for (int i = 0; i < pixels; i += step) {
        Number blue, green, red, alpha;
        hn::LoadInterleaved4(Numbers(), line + 4 * i, blue, green, red, alpha);
        storeCodes(over(weighed(blue, green, red, alpha, kLuma), keptBeside(alpha), codesAt(row + i)), row + i);
    }
}

/// The mean of each two neighbours, in the place of both.
Number meanOfPairs(Number upper, Number lower) {
    const hn::Repartition<std::int32_t, Numbers> pairs;
    const auto column = hn::BitCast(pairs, hn::Add(hn::ShiftRight<1>(upper), hn::ShiftRight<1>(lower)));
    const auto first = hn::ShiftRight<16>(hn::ShiftLeft<16>(column));
    const auto mean = hn::ShiftRight<1>(hn::Add(first, hn::ShiftRight<16>(column)));
    const auto low = hn::And(mean, hn::Set(pairs, 0xffff));
    return hn::BitCast(Numbers(), hn::Or(low, hn::ShiftLeft<16>(mean)));
}

void linesOverChromaOn(const std::int16_t* HWY_RESTRICT upper, const std::int16_t* HWY_RESTRICT lower,
                       std::uint8_t* HWY_RESTRICT row, int pixels) {
    const Numbers numbers;
    const auto step = static_cast<int>(hn::Lanes(numbers));
    for (int i = 0; i < pixels; i += step) {
        Number blue[2], green[2], red[2], alpha[2];
        hn::LoadInterleaved4(numbers, upper + 4 * i, blue[0], green[0], red[0], alpha[0]);
        hn::LoadInterleaved4(numbers, lower + 4 * i, blue[1], green[1], red[1], alpha[1]);
        const Number b = meanOfPairs(blue[0], blue[1]);
        const Number g = meanOfPairs(green[0], green[1]);
        const Number r = meanOfPairs(red[0], red[1]);
        const Number a = meanOfPairs(alpha[0], alpha[1]);
        const Number added = hn::OddEven(weighed(b, g, r, a, kCr), weighed(b, g, r, a, kCb));
        storeCodes(over(added, keptBeside(a), codesAt(row + i)), row + i);
    }
}

void lineOverBgraOn(const std::int16_t* HWY_RESTRICT line, std::uint8_t* HWY_RESTRICT row, int pixels) {
    const Numbers numbers;
    const hn::Repartition<std::uint64_t, Numbers> whole;
    const auto step = static_cast<int>(hn::Lanes(numbers));
    for (int i = 0; i < 4 * pixels; i += step) {
        const auto added = hn::Load(numbers, line + i);
        const auto single = hn::ShiftRight<48>(hn::BitCast(whole, added));
        const auto two = hn::Or(single, hn::ShiftLeft<16>(single));
        const auto alpha = hn::BitCast(numbers, hn::Or(two, hn::ShiftLeft<32>(two)));
        storeCodes(over(added, keptBeside(alpha), codesAt(row + i)), row + i);
    }
}

void fadeTowardsOn(const std::uint8_t* HWY_RESTRICT source, const std::int16_t* HWY_RESTRICT shares,
                   std::uint8_t* HWY_RESTRICT row, int bytes) {
    const Numbers numbers;
    const auto half = hn::Set(numbers, 1 << (kFraction - 1));
    const auto step = static_cast<int>(hn::Lanes(numbers));
    for (int i = 0; i < bytes; i += step) {
        const Number from = codesAt(row + i);
        const auto way = hn::ShiftLeft<kFraction>(hn::Sub(codesAt(source + i), from));
        const auto moved =
            hn::Add(hn::ShiftLeft<kFraction>(from), hn::MulFixedPoint15(way, hn::LoadU(numbers, shares + i)));
        storeCodes(hn::ShiftRight<kFraction>(hn::Add(moved, half)), row + i);
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace velmo::internal
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::internal {

HWY_EXPORT(lineOverLumaOn);
HWY_EXPORT(linesOverChromaOn);
HWY_EXPORT(lineOverBgraOn);
HWY_EXPORT(fadeTowardsOn);

void layLineOverLuma(const std::int16_t* line, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(lineOverLumaOn)(line, row, pixels);
}

void layLinesOverChroma(const std::int16_t* upper, const std::int16_t* lower, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(linesOverChromaOn)(upper, lower, row, pixels);
}

void layLineOverBgra(const std::int16_t* line, std::uint8_t* row, int pixels) {
    HWY_DYNAMIC_DISPATCH(lineOverBgraOn)(line, row, pixels);
}

void fadeTowards(const std::uint8_t* source, const std::int16_t* shares, std::uint8_t* row, int bytes) {
    HWY_DYNAMIC_DISPATCH(fadeTowardsOn)(source, shares, row, bytes);
}

} // namespace velmo::internal
#endif
