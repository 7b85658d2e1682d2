#include "compositor/internal/RowKernels.h"

#include <algorithm>

// This file compiles itself once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "compositor/internal/RowKernels.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmo::internal {
namespace HWY_NAMESPACE {
namespace {

constexpr int kLineFraction = 7;

#if HWY_TARGET == HWY_SCALAR

// The machine without vectors: the same arithmetic, one component at a time.
int scaled(int difference, int weight) {
    return (difference * weight + (1 << (AxisMap::kWeightBits - 1))) >> AxisMap::kWeightBits;
}

void stretchRowOn(const std::uint8_t* source, const ColumnTable& table, std::int16_t* line) {
    for (int g = 0; g < table.groupCount(); ++g, line += ColumnTable::kGroup) {
        const ColumnTable::Group& group = table.groups()[g];
        for (int c = 0; c < ColumnTable::kGroup; ++c) {
            const std::uint8_t* first = source + table.offsets()[g] + group.pick[2 * c];
            const int above = first[0] << kLineFraction;
            const int difference = (first[table.unitBytes()] - first[0]) * (1 << kLineFraction);
            line[c] = static_cast<std::int16_t>(above + scaled(difference, group.weight[c]));
        }
    }
}

void blendLinesOn(const std::int16_t* upper, const std::int16_t* lower, int weight, std::uint8_t* row, int count) {
    for (int i = 0; i < count; ++i) {
        const int blended = upper[i] + scaled(lower[i] - upper[i], weight);
        row[i] = static_cast<std::uint8_t>((blended + (1 << (kLineFraction - 1))) >> kLineFraction);
    }
}

void blendToLineOn(const std::int16_t* upper, const std::int16_t* lower, int weight, std::int16_t* blended, int count) {
    for (int i = 0; i < count; ++i) {
        blended[i] = static_cast<std::int16_t>(upper[i] + scaled(lower[i] - upper[i], weight));
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;

void stretchRowOn(const std::uint8_t* HWY_RESTRICT source, const ColumnTable& table, std::int16_t* HWY_RESTRICT line) {
    const hn::FixedTag<std::uint8_t, 16> bytes;
    const hn::FixedTag<std::int16_t, 8> words;
    const auto toSecond = hn::Set(bytes, static_cast<std::uint8_t>(table.unitBytes()));
    const ColumnTable::Group* group = table.groups();
    const std::int32_t* offset = table.offsets();
    const int count = table.groupCount();
    for (int g = 0; g < count; ++g, ++group, line += ColumnTable::kGroup) {
        const auto near = hn::LoadU(bytes, source + offset[g]);
        const auto pick = hn::Load(bytes, group->pick);
        const auto first = hn::BitCast(words, hn::TableLookupBytesOr0(near, pick));
        const auto second = hn::BitCast(words, hn::TableLookupBytesOr0(near, hn::Add(pick, toSecond)));
        const auto weight = hn::Load(words, group->weight);
        const auto difference = hn::ShiftLeft<kLineFraction>(hn::Sub(second, first));
        hn::Store(hn::Add(hn::ShiftLeft<kLineFraction>(first), hn::MulFixedPoint15(difference, weight)), words, line);
    }
}

void blendLinesOn(const std::int16_t* HWY_RESTRICT upper, const std::int16_t* HWY_RESTRICT lower, int weight,
                  std::uint8_t* HWY_RESTRICT row, int count) {
    const hn::CappedTag<std::int16_t, ColumnTable::kRowStep / 2> words;
    const hn::Rebind<std::uint8_t, decltype(words)> bytes;
    const auto share = hn::Set(words, static_cast<std::int16_t>(weight));
    const auto half = hn::Set(words, 1 << (kLineFraction - 1));
    const auto step = static_cast<int>(hn::Lanes(words));
    for (int i = 0; i < count; i += step) {
        const auto above = hn::Load(words, upper + i);
        const auto below = hn::Load(words, lower + i);
        const auto blended = hn::Add(above, hn::MulFixedPoint15(hn::Sub(below, above), share));
        hn::StoreU(hn::DemoteTo(bytes, hn::ShiftRight<kLineFraction>(hn::Add(blended, half))), bytes, row + i);
    }
}

void blendToLineOn(const std::int16_t* HWY_RESTRICT upper, const std::int16_t* HWY_RESTRICT lower, int weight,
                   std::int16_t* HWY_RESTRICT blended, int count) {
    const hn::CappedTag<std::int16_t, ColumnTable::kRowStep / 2> words;
    const auto share = hn::Set(words, static_cast<std::int16_t>(weight));
    const auto step = static_cast<int>(hn::Lanes(words));
    for (int i = 0; i < count; i += step) {
        const auto above = hn::Load(words, upper + i);
        const auto below = hn::Load(words, lower + i);
        hn::Store(hn::Add(above, hn::MulFixedPoint15(hn::Sub(below, above), share)), words, blended + i);
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace velmo::internal
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmo::internal {

HWY_EXPORT(stretchRowOn);
HWY_EXPORT(blendLinesOn);
HWY_EXPORT(blendToLineOn);

namespace {

/// A picture that is shrunk a lot: the same arithmetic, one unit at a time.
void stretchWideRow(const std::uint8_t* source, const ColumnTable& table, std::int16_t* line) {
    constexpr int kFraction = 7;
    constexpr int kHalf = 1 << (AxisMap::kWeightBits - 1);
    const int bytes = table.unitBytes();
    const int units = table.groupCount() * ColumnTable::kGroup / bytes;
    for (int i = 0; i < units; ++i) {
        const AxisMap::Tap tap = table.map().at(std::min(i, table.units() - 1));
        const std::uint8_t* first = source + tap.index * bytes;
        for (int c = 0; c < bytes; ++c) {
            const int difference = (first[bytes + c] - first[c]) * (1 << kFraction);
            const int moved = (difference * tap.weight + kHalf) >> AxisMap::kWeightBits;
            *line++ = static_cast<std::int16_t>((first[c] << kFraction) + moved);
        }
    }
}

} // namespace

void stretchRow(const std::uint8_t* source, const ColumnTable& table, std::int16_t* line) {
    if (table.isWide()) {
        stretchWideRow(source, table, line);
        return;
    }
    HWY_DYNAMIC_DISPATCH(stretchRowOn)(source, table, line);
}

void blendLines(const std::int16_t* upper, const std::int16_t* lower, int weight, std::uint8_t* row, int count) {
    HWY_DYNAMIC_DISPATCH(blendLinesOn)(upper, lower, weight, row, count);
}

void blendToLine(const std::int16_t* upper, const std::int16_t* lower, int weight, std::int16_t* blended, int count) {
    HWY_DYNAMIC_DISPATCH(blendToLineOn)(upper, lower, weight, blended, count);
}

} // namespace velmo::internal
#endif
