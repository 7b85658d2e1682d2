#include "platform/x11/internal/Nv12Convert.h"

#include "TestPicture.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace velmo::x11 {
namespace {

TestPicture noise(int width, int height, unsigned seed) {
    TestPicture result(width, height, false);
    std::mt19937 random(seed);
    for (std::uint8_t& byte : result.pixels) {
        byte = static_cast<std::uint8_t>(random() % 4 == 0 ? (random() % 2) * 255 : random());
    }
    return result;
}

/// Rec. 709 as it is written down.
void expectConverted(const Picture& picture, const PixelBuffer& buffer) {
    const auto component = [&](int x, int y, int i) {
        return static_cast<double>(picture.at(std::min(x, buffer.width() - 1), std::min(y, buffer.height() - 1))[i]);
    };
    const auto luma = [](double r, double g, double b) { return 0.2126 * r + 0.7152 * g + 0.0722 * b; };
    for (int y = 0; y < buffer.height(); ++y) {
        for (int x = 0; x < buffer.width(); ++x) {
            const double expected = 16 + luma(component(x, y, 2), component(x, y, 1), component(x, y, 0)) * 219 / 255;
            ASSERT_NEAR(buffer.plane(0).row(y)[x], expected, 0.52) << x << " " << y;
        }
    }
    for (int y = 0; y < buffer.plane(1).height; ++y) {
        for (int x = 0; x < buffer.plane(1).width; ++x) {
            double mean[3] = {};
            for (int i = 0; i < 3; ++i) {
                mean[i] = (component(2 * x, 2 * y, i) + component(2 * x + 1, 2 * y, i) +
                           component(2 * x, 2 * y + 1, i) + component(2 * x + 1, 2 * y + 1, i)) /
                          4;
            }
            const double grey = luma(mean[2], mean[1], mean[0]);
            ASSERT_NEAR(buffer.plane(1).row(y)[2 * x], 128 + (mean[0] - grey) / 1.8556 * 224 / 255, 0.54);
            ASSERT_NEAR(buffer.plane(1).row(y)[2 * x + 1], 128 + (mean[2] - grey) / 1.5748 * 224 / 255, 0.54);
        }
    }
}

TEST(Nv12Convert, FollowsRec709ForSizesOfEveryKindOnEveryInstructionSet) {
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(target);
        for (const auto& [width, height] :
             {std::pair{2, 2}, {1, 1}, {3, 5}, {16, 2}, {30, 4}, {62, 6}, {65, 7}, {128, 2}, {131, 3}, {640, 48}}) {
            const TestPicture picture = noise(width, height, static_cast<unsigned>(width * 31 + height));
            const FrameRef buffer = PixelBuffer::create(PixelFormat::nv12, width, height);
            convertToNv12(picture.picture, *buffer, {0, 0, width, height});
            expectConverted(picture.picture, *buffer);
        }
    }
    hwy::SetSupportedTargetsForTest(0);
}

TEST(Nv12Convert, TheWholeIsTheSameHoweverItIsCut) {
    const TestPicture picture = noise(301, 87, 3);
    const FrameRef whole = PixelBuffer::create(PixelFormat::nv12, 301, 87);
    const FrameRef parts = PixelBuffer::create(PixelFormat::nv12, 301, 87);
    convertToNv12(picture.picture, *whole, {0, 0, 301, 87});
    for (int y = 0; y < 87; y += 10) {
        for (int x = 0; x < 301; x += 34) {
            convertToNv12(picture.picture, *parts, PixelRect{x, y, 34, 10}.intersected({0, 0, 301, 87}));
        }
    }
    for (int plane = 0; plane < 2; ++plane) {
        const PlaneView view = whole->plane(plane);
        for (int y = 0; y < view.height; ++y) {
            const auto bytes = static_cast<std::size_t>(view.width) * (plane == 0 ? 1 : 2);
            ASSERT_EQ(std::memcmp(view.row(y), parts->plane(plane).row(y), bytes), 0) << plane << " " << y;
        }
    }
}

TEST(Nv12Convert, OnlyTheRectangleIsTouched) {
    const TestPicture picture = noise(100, 50, 4);
    const FrameRef buffer = PixelBuffer::create(PixelFormat::nv12, 100, 50);
    for (int plane = 0; plane < 2; ++plane) {
        std::memset(buffer->plane(plane).data, 1,
                    static_cast<std::size_t>(buffer->plane(plane).stride) *
                        static_cast<std::size_t>(buffer->plane(plane).height));
    }
    convertToNv12(picture.picture, *buffer, {10, 20, 70, 10});
    EXPECT_EQ(buffer->plane(0).row(19)[40], 1);
    EXPECT_EQ(buffer->plane(0).row(20)[9], 1);
    EXPECT_EQ(buffer->plane(0).row(20)[80], 1);
    EXPECT_EQ(buffer->plane(0).row(30)[40], 1);
    EXPECT_EQ(buffer->plane(1).row(10)[9], 1);
    EXPECT_EQ(buffer->plane(1).row(10)[80], 1);
    EXPECT_EQ(buffer->plane(1).row(15)[40], 1);
    EXPECT_GE(buffer->plane(0).row(20)[10], 16);
    EXPECT_GE(buffer->plane(0).row(29)[79], 16);
}

TEST(CopyToBgra, ThePadByteComesOutOpaqueAndAlphaIsKept) {
    TestPicture picture = noise(20, 4, 5);
    const FrameRef buffer = PixelBuffer::create(PixelFormat::bgra, 20, 4);
    copyToBgra(picture.picture, *buffer, {0, 0, 20, 4});
    EXPECT_EQ(buffer->plane(0).row(2)[7], 255);
    EXPECT_EQ(buffer->plane(0).row(2)[6], picture.picture.at(1, 2)[2]);
    picture.picture.hasAlpha = true;
    copyToBgra(picture.picture, *buffer, {0, 0, 20, 4});
    EXPECT_EQ(buffer->plane(0).row(2)[7], picture.picture.at(1, 2)[3]);
}

} // namespace
} // namespace velmo::x11
