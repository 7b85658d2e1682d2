#include "OnlyTarget.h"
#include "compositor/internal/BlendKernels.h"
#include "compositor/internal/LightKernels.h"
#include "compositor/internal/LineKernels.h"
#include "compositor/internal/PlaneLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace velmo::internal {
namespace {

constexpr int kPixels = 512;

struct alignas(kBlockBytes) Row {
    std::array<std::uint8_t, 4 * kPixels> bytes{};
    friend bool operator==(const Row&, const Row&) = default;
};

Row noise(std::mt19937& random) {
    Row row;
    std::generate(row.bytes.begin(), row.bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
    return row;
}

/// Premultiplied pixels; each fourth is clear and each fourth opaque.
Row bitmapRow(std::mt19937& random) {
    Row row = noise(random);
    for (std::size_t i = 0; i < row.bytes.size(); i += 4) {
        std::uint8_t& alpha = row.bytes[i + 3];
        alpha = i % 16 == 0 ? 0 : i % 16 == 4 ? 255 : alpha;
        for (std::size_t c = 0; c < 3; ++c) {
            row.bytes[i + c] = static_cast<std::uint8_t>(row.bytes[i + c] * alpha / 255);
        }
    }
    return row;
}

struct Blend {
    std::mt19937 random{5};
    Row upper = bitmapRow(random);
    Row lower = bitmapRow(random);
    Row below = noise(random);

    Row over(int unitBytes) const {
        Row row = below;
        if (unitBytes == 1) {
            blendOverLuma(upper.bytes.data(), row.bytes.data(), kPixels);
        } else if (unitBytes == 2) {
            blendOverChroma(upper.bytes.data(), lower.bytes.data(), row.bytes.data(), kPixels);
        } else {
            blendOverBgra(upper.bytes.data(), row.bytes.data(), kPixels);
        }
        return row;
    }
};

struct Rgb {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
    double luma() const { return 0.2126 * red + 0.7152 * green + 0.0722 * blue; }
};

Rgb pixel(const Row& row, int i) {
    const std::uint8_t* p = row.bytes.data() + 4 * i;
    return {p[2] / 255.0, p[1] / 255.0, p[0] / 255.0, p[3] / 255.0};
}

Rgb mean(const Row& upper, const Row& lower, int i) {
    Rgb sum;
    for (const Rgb& p : {pixel(upper, i), pixel(upper, i + 1), pixel(lower, i), pixel(lower, i + 1)}) {
        sum = {sum.red + p.red / 4, sum.green + p.green / 4, sum.blue + p.blue / 4, sum.alpha + p.alpha / 4};
    }
    return sum;
}

TEST(BlendKernels, LayABitmapOverEachPlaneToTheNearestCodeValue) {
    const Blend blend;
    const Row luma = blend.over(1);
    const Row chroma = blend.over(2);
    const Row bgra = blend.over(4);
    constexpr double kNearest = 0.5 + 0.05;
    for (int i = 0; i < kPixels; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const Rgb p = pixel(blend.upper, i);
        ASSERT_NEAR(luma.bytes[at], 16 * p.alpha + 219 * p.luma() + (1 - p.alpha) * blend.below.bytes[at], kNearest);
        for (std::size_t c = 4 * at; c < 4 * at + 4; ++c) {
            ASSERT_NEAR(bgra.bytes[c], blend.upper.bytes[c] + (1 - p.alpha) * blend.below.bytes[c], kNearest);
        }
        if (i % 2 == 0) {
            const Rgb m = mean(blend.upper, blend.lower, i);
            const double cb = 128 * m.alpha + 224 * (m.blue - m.luma()) / 1.8556;
            const double cr = 128 * m.alpha + 224 * (m.red - m.luma()) / 1.5748;
            ASSERT_NEAR(chroma.bytes[at], cb + (1 - m.alpha) * blend.below.bytes[at], kNearest);
            ASSERT_NEAR(chroma.bytes[at + 1], cr + (1 - m.alpha) * blend.below.bytes[at + 1], kNearest);
        }
    }
}

TEST(BlendKernels, AClearBitmapChangesNothingAndAnOpaqueOneLeavesNothing) {
    std::mt19937 random(6);
    Blend blend;
    blend.upper = blend.lower = Row{};
    for (const int unitBytes : {1, 2, 4}) {
        EXPECT_EQ(blend.over(unitBytes), blend.below);
    }
    blend.upper.bytes.fill(255);
    blend.lower.bytes.fill(255);
    const std::array<int, 3> white = {235, 128, 255};
    for (int k = 0; k < 3; ++k) {
        const Row row = blend.over(1 << k);
        EXPECT_EQ(std::count(row.bytes.begin(), row.bytes.begin() + kPixels, white[static_cast<std::size_t>(k)]),
                  kPixels);
    }
}

/// The same pixels as lines, with a fraction of a code value more.
struct LineBlend {
    static constexpr int kFractions = 128;
    struct alignas(kBlockBytes) Line {
        std::array<std::int16_t, 4 * kPixels> components{};
    };
    Blend blend;
    Line upper = line(blend.upper);
    Line lower = line(blend.lower);

    static Line line(const Row& row) {
        Line made;
        for (std::size_t i = 0; i < row.bytes.size(); ++i) {
            const bool hasRoom = row.bytes[i] < row.bytes[i | 3];
            made.components[i] =
                static_cast<std::int16_t>(row.bytes[i] * kFractions + (hasRoom ? i * 37 % kFractions : 0));
        }
        return made;
    }

    Row over(int unitBytes) const {
        Row row = blend.below;
        if (unitBytes == 1) {
            layLineOverLuma(upper.components.data(), row.bytes.data(), kPixels);
        } else if (unitBytes == 2) {
            layLinesOverChroma(upper.components.data(), lower.components.data(), row.bytes.data(), kPixels);
        } else {
            layLineOverBgra(upper.components.data(), row.bytes.data(), kPixels);
        }
        return row;
    }

    Rgb pixel(const Line& from, int i) const {
        const std::int16_t* p = from.components.data() + 4 * i;
        const double whole = 255.0 * kFractions;
        return {p[2] / whole, p[1] / whole, p[0] / whole, p[3] / whole};
    }
};

TEST(LineKernels, LayALineOverEachPlaneToTheNearestCodeValue) {
    const LineBlend lines;
    const Row luma = lines.over(1);
    const Row chroma = lines.over(2);
    const Row bgra = lines.over(4);
    const Row& below = lines.blend.below;
    constexpr double kNearest = 0.5 + 0.05;
    for (int i = 0; i < kPixels; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const Rgb p = lines.pixel(lines.upper, i);
        ASSERT_NEAR(luma.bytes[at], 16 * p.alpha + 219 * p.luma() + (1 - p.alpha) * below.bytes[at], kNearest);
        const double codes[] = {255 * p.blue, 255 * p.green, 255 * p.red, 255 * p.alpha};
        for (std::size_t c = 0; c < 4; ++c) {
            ASSERT_NEAR(bgra.bytes[4 * at + c], codes[c] + (1 - p.alpha) * below.bytes[4 * at + c], kNearest);
        }
        if (i % 2 == 0) {
            Rgb m;
            for (const Rgb& one :
                 {p, lines.pixel(lines.upper, i + 1), lines.pixel(lines.lower, i), lines.pixel(lines.lower, i + 1)}) {
                m = {m.red + one.red / 4, m.green + one.green / 4, m.blue + one.blue / 4, m.alpha + one.alpha / 4};
            }
            const double cb = 128 * m.alpha + 224 * (m.blue - m.luma()) / 1.8556;
            const double cr = 128 * m.alpha + 224 * (m.red - m.luma()) / 1.5748;
            ASSERT_NEAR(chroma.bytes[at], cb + (1 - m.alpha) * below.bytes[at], kNearest);
            ASSERT_NEAR(chroma.bytes[at + 1], cr + (1 - m.alpha) * below.bytes[at + 1], kNearest);
        }
    }
}

TEST(LineKernels, AClearLineChangesNothingAndAnOpaqueOneLeavesNothing) {
    LineBlend lines;
    lines.upper = lines.lower = LineBlend::Line{};
    for (const int unitBytes : {1, 2, 4}) {
        EXPECT_EQ(lines.over(unitBytes), lines.blend.below);
    }
    lines.upper.components.fill(255 * LineBlend::kFractions);
    lines.lower = lines.upper;
    const std::array<int, 3> white = {235, 128, 255};
    for (int k = 0; k < 3; ++k) {
        const Row row = lines.over(1 << k);
        EXPECT_EQ(std::count(row.bytes.begin(), row.bytes.begin() + kPixels, white[static_cast<std::size_t>(k)]),
                  kPixels);
    }
}

TEST(LineKernels, ColoursBeyondTheirAlphaEndAtWhite) {
    LineBlend lines;
    lines.blend.below.bytes.fill(250);
    for (std::size_t i = 0; i < lines.upper.components.size(); ++i) {
        lines.upper.components[i] = static_cast<std::int16_t>(i % 4 == 3 ? 0 : 255 * LineBlend::kFractions);
    }
    for (const int unitBytes : {1, 4}) {
        const Row row = lines.over(unitBytes);
        const int brightened = unitBytes == 1 ? kPixels : 3 * kPixels;
        EXPECT_EQ(std::count(row.bytes.begin(), row.bytes.begin() + kPixels * unitBytes, 255), brightened);
        test::onEachTarget([&](const char* name) { EXPECT_EQ(lines.over(unitBytes), row) << name; });
    }
}

/// From `below` towards `upper` by shares that take in nothing and all.
Row faded(const Blend& blend) {
    std::array<std::int16_t, 4 * kPixels> shares{};
    for (std::size_t i = 0; i < shares.size(); ++i) {
        shares[i] = static_cast<std::int16_t>(i % 3 == 0 ? 0 : i % 3 == 1 ? 32767 : i * 997 % 32768);
    }
    Row row = blend.below;
    fadeTowards(blend.upper.bytes.data(), shares.data(), row.bytes.data(), 4 * kPixels);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const double exact =
            blend.below.bytes[i] + (blend.upper.bytes[i] - blend.below.bytes[i]) * (shares[i] / 32767.0);
        EXPECT_NEAR(row.bytes[i], exact, i % 3 == 2 ? 0.55 : 0) << i;
    }
    return row;
}

Row lit(int unitBytes, double alpha, double rise) {
    std::mt19937 random(8);
    Row row = noise(random);
    LightProfile profile;
    profile.prepare(alpha);
    const double perUnit = 91.7;
    const auto away = static_cast<std::int32_t>(rise * LightProfile::kUnitsPerRadius);
    lightBlocks(row.bytes.data(), blocksFor(kPixels * unitBytes), unitBytes,
                {profile.gains(), 203.3, perUnit, away * away});
    dimBlocks(row.bytes.data(), 3, unitBytes, profile.outsideGain());
    return row;
}

TEST(EffectKernels, EveryInstructionSetOfThisMachineGivesTheSameBytes) {
    const Blend blend;
    int compared = 0;
    for (const int unitBytes : {1, 2, 4}) {
        const Row blended = blend.over(unitBytes);
        const Row light = lit(unitBytes, 0.83, 0.4);
        const Row rim = lit(unitBytes, 1, 0.97);
        const LineBlend lines;
        const Row laid = lines.over(unitBytes);
        const Row fade = faded(blend);
        compared += test::onEachTarget([&](const char* name) {
            EXPECT_EQ(blend.over(unitBytes), blended) << name;
            EXPECT_EQ(lit(unitBytes, 0.83, 0.4), light) << name;
            EXPECT_EQ(lit(unitBytes, 1, 0.97), rim) << name;
            EXPECT_EQ(lines.over(unitBytes), laid) << name;
            EXPECT_EQ(faded(blend), fade) << name;
        });
    }
    EXPECT_GE(compared, 3);
}

TEST(LightKernels, AWholeGainChangesNoCodeValue) {
    Row row;
    for (std::size_t i = 0; i < row.bytes.size(); ++i) {
        row.bytes[i] = static_cast<std::uint8_t>(i);
    }
    const Row before = row;
    for (const int unitBytes : {1, 2, 4}) {
        dimBlocks(row.bytes.data(), blocksFor(kPixels * unitBytes), unitBytes, LightProfile::kWholeGain);
        EXPECT_EQ(row, before);
    }
}

TEST(LightProfile, RunsFromAWholeGainWithinToTheOutsideGain) {
    LightProfile profile;
    profile.prepare(1);
    EXPECT_EQ(profile.gains()[0], LightProfile::kWholeGain);
    EXPECT_EQ(profile.outsideGain(), std::lround(std::pow(0.22, 1 / 2.2) * 32768));
    EXPECT_TRUE(std::is_sorted(profile.gains(), profile.gains() + LightProfile::kOutside + 1, std::greater<>()));
    const auto inner = static_cast<int>(LightProfile::kOutside / (1.45 * 1.45));
    EXPECT_EQ(profile.gains()[inner - 1], LightProfile::kWholeGain);
    EXPECT_LT(profile.gains()[inner + 2], LightProfile::kWholeGain);
}

} // namespace
} // namespace velmo::internal
