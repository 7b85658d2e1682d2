#include "compositor/internal/RowKernels.h"

#include "OnlyTarget.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace velmo::internal {
namespace {

struct alignas(64) Block {
    std::int16_t words[32];
};

std::vector<std::uint8_t> renderRow(int unitBytes) {
    constexpr int kUnits = 333;
    std::mt19937 random(3);
    std::vector<std::uint8_t> rows[2];
    ColumnTable table;
    table.prepare(AxisMap::through(kUnits, 0.43, 1.37), kUnits, unitBytes);
    const auto components = static_cast<std::size_t>(table.groupCount() * ColumnTable::kGroup);
    std::vector<Block> lines[2] = {std::vector<Block>(components / 32), std::vector<Block>(components / 32)};
    for (int i = 0; i < 2; ++i) {
        rows[i].resize(kUnits * static_cast<std::size_t>(unitBytes) + 64);
        std::generate(rows[i].begin(), rows[i].end(), [&] { return random() % 3 == 0 ? 0 : random() % 3 * 127 + 1; });
        stretchRow(rows[i].data(), table, lines[i].front().words);
    }
    std::vector<std::uint8_t> out;
    for (const int weight : {0, 1, 9999, 16384, 32767}) {
        std::vector<std::uint8_t> row(components);
        blendLines(lines[0].front().words, lines[1].front().words, weight, row.data(), static_cast<int>(components));
        out.insert(out.end(), row.begin(), row.begin() + kUnits * unitBytes);
        std::vector<Block> line(components / 32);
        blendToLine(lines[0].front().words, lines[1].front().words, weight, line.front().words,
                    static_cast<int>(components));
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(line.front().words);
        out.insert(out.end(), bytes, bytes + 2 * kUnits * unitBytes);
    }
    return out;
}

TEST(RowKernels, EveryInstructionSetOfThisMachineGivesTheSameBytes) {
    int compared = 0;
    for (const int unitBytes : {1, 2, 4}) {
        const std::vector<std::uint8_t> best = renderRow(unitBytes);
        compared += test::onEachTarget([&](const char* name) { EXPECT_EQ(renderRow(unitBytes), best) << name; });
    }
    EXPECT_GE(compared, 3);
}

/// The components of a row that is scaled with `step` source units to a unit, rounded.
std::vector<int> scaledRow(const std::vector<std::uint8_t>& source, int unitBytes, double step, int units) {
    ColumnTable table;
    const int length = static_cast<int>(source.size() - 64) / unitBytes;
    table.prepare(AxisMap::scaled(length, 0.3, step), units, unitBytes);
    std::vector<Block> line(static_cast<std::size_t>(table.groupCount() * ColumnTable::kGroup / 32));
    stretchRow(source.data(), table, line.front().words);
    const std::int16_t* first = line.front().words;
    return {first, first + units * unitBytes};
}

TEST(RowKernels, ARowThatIsShrunkALotIsScaledByTheSameLaw) {
    std::mt19937 random(5);
    for (const int unitBytes : {1, 2, 4}) {
        std::vector<std::uint8_t> source(static_cast<std::size_t>(400 * unitBytes + 64));
        std::generate(source.begin(), source.end(), [&] { return static_cast<std::uint8_t>(random()); });
        for (const double step : {0.4, 1.0, 1.25, 1.5, 1.9, 2.0, 2.4, 7.3, 60.0}) {
            const int units = 70;
            const std::vector<int> row = scaledRow(source, unitBytes, step, units);
            for (int i = 0; i < units; ++i) {
                const double x = std::clamp((i + 0.5 - 0.3) * step - 0.5, 0.0, 399.0);
                const int left = static_cast<int>(x);
                const int right = std::min(left + 1, 399);
                for (int c = 0; c < unitBytes; ++c) {
                    const double a = source[static_cast<std::size_t>(left * unitBytes + c)];
                    const double b = source[static_cast<std::size_t>(right * unitBytes + c)];
                    ASSERT_NEAR(row[static_cast<std::size_t>(i * unitBytes + c)] / 128.0, a + (b - a) * (x - left),
                                0.02)
                        << unitBytes << " bytes, step " << step << ", unit " << i;
                }
            }
        }
    }
}

TEST(AxisMap, AnUnscaledSourceAtAWholePlaceIsTakenUnitByUnit) {
    const AxisMap map = AxisMap::scaled(50, -7, 1);
    for (int i = 0; i < 43; ++i) {
        EXPECT_EQ(map.at(i).index, i + 7);
        EXPECT_EQ(map.at(i).weight, 0);
    }
    EXPECT_EQ(map.at(49).index, 49);
    EXPECT_EQ(AxisMap::scaled(50, 7, 1).at(3).index, 0);
}

TEST(AxisMap, NeighboursNeverLieFurtherApartThanTheirOutputs) {
    std::mt19937 random(11);
    for (int k = 0; k < 200; ++k) {
        const int length = 1 + static_cast<int>(random() % 4000);
        const double scale = 1 + std::uniform_real_distribution(0.0, 1.0)(random) * (k % 2 == 0 ? 0.001 : 19);
        const AxisMap map = AxisMap::through(length, std::uniform_real_distribution(-0.5, 1.5)(random), scale);
        for (int i = 0; i + 7 < length; ++i) {
            const AxisMap::Tap tap = map.at(i);
            ASSERT_GE(tap.index, 0);
            ASSERT_LE(tap.index, length - 1);
            ASSERT_TRUE(tap.index < length - 1 || tap.weight == 0);
            ASSERT_LE(map.at(i + 7).index - tap.index, 7);
        }
    }
}

TEST(AxisMap, ValuesThatAreNoNumbersStillGiveALegalMap) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double center : {0.5, nan, infinity, -infinity}) {
        for (const double scale : {2.0, nan, infinity, -infinity}) {
            const AxisMap map = AxisMap::through(100, center, scale);
            for (const int i : {0, 50, 99}) {
                EXPECT_GE(map.at(i).index, 0);
                EXPECT_LE(map.at(i).index, 99);
                const AxisMap::Tap tap = AxisMap::scaled(100, center, scale).at(i);
                EXPECT_GE(tap.index, 0);
                EXPECT_LE(tap.index, 99);
            }
        }
    }
}

} // namespace
} // namespace velmo::internal
