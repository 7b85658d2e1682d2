#include "platform/x11/internal/PictureScaler.h"

#include "TestPicture.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace velmo::x11 {
namespace {

void fillWithNoise(TestPicture& picture, unsigned seed) {
    std::mt19937 random(seed);
    std::generate(picture.pixels.begin(), picture.pixels.end(), [&] { return static_cast<std::uint8_t>(random()); });
}

/// The weighted mean that pixel `x`, `y` of a picture of `width` x `height` has to be.
double reference(const Picture& from, int width, int height, int x, int y, int part) {
    const auto weigh = [](int count, int size, int at, auto visit) {
        const double scale = static_cast<double>(count) / size;
        const double reach = std::max(1.0, scale);
        const double centre = (at + 0.5) * scale - 0.5;
        double total = 0;
        for (int j = static_cast<int>(centre - reach) - 1; j <= centre + reach + 1; ++j) {
            const double weight = std::max(0.0, 1 - std::abs(j - centre) / reach);
            total += weight;
            visit(std::clamp(j, 0, count - 1), weight);
        }
        return total;
    };
    double sum = 0;
    double columns = 0;
    const double rows = weigh(from.height, height, y, [&](int row, double rowWeight) {
        columns = weigh(from.width, width, x,
                        [&](int column, double weight) { sum += from.at(column, row)[part] * weight * rowWeight; });
    });
    return sum / rows / columns;
}

TEST(PictureScaler, AgreesWithTheWeightedMeanUpAndDownOnEveryInstructionSet) {
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(target);
        for (const auto& [width, height] :
             {std::pair{50, 30}, {20, 12}, {37, 29}, {75, 45}, {101, 90}, {3, 2}, {1, 1}}) {
            TestPicture from(50, 30, true);
            fillWithNoise(from, 9);
            TestPicture to(width, height, true);
            PictureScaler(50, 30, width, height).scale(from.picture, to.picture, {0, 0, width, height});
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    for (int part = 0; part < 4; ++part) {
                        ASSERT_NEAR(to.picture.at(x, y)[part], reference(from.picture, width, height, x, y, part), 0.6)
                            << width << "x" << height << " at " << x << "," << y;
                    }
                }
            }
        }
    }
    hwy::SetSupportedTargetsForTest(0);
}

TEST(PictureScaler, FlatColoursStayExactlyTheSame) {
    for (const int value : {0, 1, 127, 254, 255}) {
        TestPicture from(40, 40, true);
        std::fill(from.pixels.begin(), from.pixels.end(), static_cast<std::uint8_t>(value));
        for (const int size : {13, 27, 40, 41, 64}) {
            TestPicture to(size, size, true);
            PictureScaler(40, 40, size, size).scale(from.picture, to.picture, {0, 0, size, size});
            EXPECT_TRUE(std::all_of(to.pixels.begin(), to.pixels.end(), [&](int byte) { return byte == value; }))
                << value << " at " << size;
        }
    }
}

TEST(PictureScaler, WhatAChangeAffectsIsAllThatIsDifferent) {
    std::mt19937 random(11);
    for (const auto& [width, height] : {std::pair{40, 22}, {96, 54}, {150, 100}}) {
        TestPicture from(96, 54, true);
        fillWithNoise(from, 10);
        PictureScaler scaler(96, 54, width, height);
        TestPicture kept(width, height, true);
        scaler.scale(from.picture, kept.picture, {0, 0, width, height});
        for (int round = 0; round < 30; ++round) {
            const PixelRect change{static_cast<int>(random() % 90), static_cast<int>(random() % 50),
                                   1 + static_cast<int>(random() % 6), 1 + static_cast<int>(random() % 4)};
            for (int y = change.y; y < change.bottom(); ++y) {
                for (int x = change.x; x < change.right(); ++x) {
                    from.picture.at(x, y)[0] ^= 0xff;
                }
            }
            scaler.scale(from.picture, kept.picture, scaler.affectedBy(change));
            TestPicture fresh(width, height, true);
            scaler.scale(from.picture, fresh.picture, {0, 0, width, height});
            ASSERT_EQ(kept.pixels, fresh.pixels);
        }
    }
}

} // namespace
} // namespace velmo::x11
