#include "compositor/internal/RowKernels.h"

#include "OnlyTarget.h"

#include <gtest/gtest.h>
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
            }
        }
    }
}

} // namespace
} // namespace velmo::internal
