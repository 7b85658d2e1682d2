#include "compositor/internal/LightKernels.h"

#include "compositor/internal/PlaneLayout.h"

#include <algorithm>
#include <cmath>

// This file compiles itself once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "compositor/internal/LightKernels.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmo::internal {
namespace HWY_NAMESPACE {
namespace {

constexpr int kFraction = 7;
constexpr float kFarthest = 2.0F * LightProfile::kUnitsPerRadius; // its square and a row's still fit 31 bits

#if HWY_TARGET == HWY_SCALAR

// The machine without vectors: the same arithmetic, one component at a time.
void multiply(std::uint8_t& code, int gain, int black) {
    const int above = (code - black) * (1 << kFraction);
    const int dimmed = (above * gain + (1 << 14)) >> 15;
    code = static_cast<std::uint8_t>(((dimmed + (1 << (kFraction - 1))) >> kFraction) + black);
}

void multiplyUnit(std::uint8_t* unit, int unitBytes, int gain) {
    for (int c = 0; c < std::min(unitBytes, 3); ++c) {
        multiply(unit[c], gain, blackOf(unitBytes));
    }
}

void dimBlocksOn(std::uint8_t* row, int blocks, int unitBytes, int gain) {
    for (int i = 0; i < blocks * kBlockBytes; i += unitBytes) {
        multiplyUnit(row + i, unitBytes, gain);
    }
}

void lightBlocksOn(std::uint8_t* row, int blocks, int unitBytes, const LightRow& light) {
    const int units = kBlockBytes / unitBytes;
    const auto perUnit = static_cast<float>(light.perUnit);
    for (int b = 0; b < blocks; ++b, row += kBlockBytes) {
        const auto middle = static_cast<float>(light.middle - b * units);
        for (int u = 0; u < units; ++u) {
            const float away = std::min(std::abs((static_cast<float>(u) - middle) * perUnit), kFarthest);
            const auto whole = static_cast<std::int32_t>(away);
            const int index = std::min((whole * whole + light.rise) >> LightProfile::kIndexShift,
                                       static_cast<int>(LightProfile::kOutside));
            multiplyUnit(row + u * unitBytes, unitBytes, light.gains[index]);
        }
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::CappedTag<std::int16_t, kBlockBytes / 2>;
using Longs = hn::Repartition<std::int32_t, Words>;
using Floats = hn::Repartition<float, Words>;

void multiply(std::uint8_t* codes, hn::Vec<Words> gain, hn::Vec<Words> black) {
    const Words words;
    const hn::Rebind<std::uint8_t, Words> bytes;
    const auto above = hn::ShiftLeft<kFraction>(hn::Sub(hn::PromoteTo(words, hn::Load(bytes, codes)), black));
    const auto half = hn::Set(words, 1 << (kFraction - 1));
    const auto dimmed = hn::ShiftRight<kFraction>(hn::Add(hn::MulFixedPoint15(above, gain), half));
    hn::Store(hn::DemoteTo(bytes, hn::Add(dimmed, black)), bytes, codes);
}

/// The gains of the components of each unit, side by side.
template <int kUnitBytes>
void storeGains(hn::Vec<Longs> gain, std::int16_t* to) {
    const Longs longs;
    if constexpr (kUnitBytes == 1) {
        const hn::Rebind<std::int16_t, Longs> halves;
        hn::Store(hn::DemoteTo(halves, gain), halves, to);
    } else {
        auto* pairs = reinterpret_cast<std::int32_t*>(to);
        const auto twice = hn::Or(gain, hn::ShiftLeft<16>(gain));
        if constexpr (kUnitBytes == 2) {
            hn::Store(twice, longs, pairs);
        } else {
            const auto withAlpha = hn::Or(gain, hn::Set(longs, LightProfile::kWholeGain << 16));
            hn::StoreInterleaved2(twice, withAlpha, longs, pairs);
        }
    }
}

void dimBlocksOn(std::uint8_t* HWY_RESTRICT row, int blocks, int unitBytes, int gain) {
    const Words words;
    const auto step = static_cast<int>(hn::Lanes(words));
    const auto black = hn::Set(words, static_cast<std::int16_t>(blackOf(unitBytes)));
    const auto wanted = static_cast<std::int16_t>(gain);
    constexpr auto kWhole = static_cast<std::int16_t>(LightProfile::kWholeGain);
    HWY_ALIGN const std::int16_t four[] = {wanted, wanted, wanted, unitBytes == 4 ? kWhole : wanted,
                                           wanted, wanted, wanted, unitBytes == 4 ? kWhole : wanted};
    const auto gains = hn::LoadDup128(words, four);
    for (int i = 0; i < blocks * kBlockBytes; i += step) {
        multiply(row + i, gains, black);
    }
}

template <int kUnitBytes>
void lightBlocksOf(std::uint8_t* HWY_RESTRICT row, int blocks, const LightRow& light) {
    const Words words;
    const Longs longs;
    const Floats floats;
    constexpr int kUnits = kBlockBytes / kUnitBytes;
    const auto unitStep = static_cast<int>(hn::Lanes(floats));
    const auto byteStep = static_cast<int>(hn::Lanes(words));
    const auto perUnit = hn::Set(floats, static_cast<float>(light.perUnit));
    const auto farthest = hn::Set(floats, kFarthest);
    const auto rise = hn::Set(longs, light.rise);
    const auto outside = hn::Set(longs, LightProfile::kOutside);
    const auto black = hn::Set(words, static_cast<std::int16_t>(blackOf(kUnitBytes)));
    alignas(kBlockBytes) std::int16_t gains[kBlockBytes];
    for (int b = 0; b < blocks; ++b, row += kBlockBytes) {
        const auto middle = hn::Set(floats, static_cast<float>(light.middle - b * kUnits));
        for (int u = 0; u < kUnits; u += unitStep) {
            const auto units = hn::Iota(floats, static_cast<float>(u));
            const auto away = hn::Min(hn::Abs(hn::Mul(hn::Sub(units, middle), perUnit)), farthest);
            const auto whole = hn::ConvertTo(longs, away);
            const auto square = hn::Add(hn::Mul(whole, whole), rise);
            const auto index = hn::Min(hn::ShiftRight<LightProfile::kIndexShift>(square), outside);
            storeGains<kUnitBytes>(hn::GatherIndex(longs, light.gains, index), gains + u * kUnitBytes);
        }
        for (int i = 0; i < kBlockBytes; i += byteStep) {
            multiply(row + i, hn::Load(words, gains + i), black);
        }
    }
}

void lightBlocksOn(std::uint8_t* row, int blocks, int unitBytes, const LightRow& light) {
    if (unitBytes == 1) {
        lightBlocksOf<1>(row, blocks, light);
    } else if (unitBytes == 2) {
        lightBlocksOf<2>(row, blocks, light);
    } else {
        lightBlocksOf<4>(row, blocks, light);
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace velmo::internal
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::internal {

HWY_EXPORT(dimBlocksOn);
HWY_EXPORT(lightBlocksOn);

void dimBlocks(std::uint8_t* row, int blocks, int unitBytes, int gain) {
    HWY_DYNAMIC_DISPATCH(dimBlocksOn)(row, blocks, unitBytes, gain);
}

void lightBlocks(std::uint8_t* row, int blocks, int unitBytes, const LightRow& light) {
    HWY_DYNAMIC_DISPATCH(lightBlocksOn)(row, blocks, unitBytes, light);
}

} // namespace velmo::internal
#endif
