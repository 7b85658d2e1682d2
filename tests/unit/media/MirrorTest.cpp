#include "media/Mirror.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>

namespace velmo {
namespace {

using Size = std::array<int, 2>;

class Mirror : public testing::TestWithParam<Size> {};

TEST_P(Mirror, ExchangesLeftAndRightOfLumaAndOfWholeChromaPairs) {
    const auto [width, height] = GetParam();
    const FrameRef from = PixelBuffer::create(PixelFormat::nv12, width, height);
    const FrameRef to = PixelBuffer::create(PixelFormat::nv12, width, height);
    for (int p = 0; p < 2; ++p) {
        const PlaneView plane = from->plane(p);
        for (int y = 0; y < plane.height; ++y) {
            for (int i = 0; i < plane.width * (p + 1); ++i) {
                plane.row(y)[i] = static_cast<std::uint8_t>(i * 7 + y * 31 + p);
            }
        }
    }
    mirrorNv12(*from, *to);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            ASSERT_EQ(to->plane(0).row(y)[x], from->plane(0).row(y)[width - 1 - x]) << x << ' ' << y;
        }
    }
    const int pairs = from->plane(1).width;
    for (int y = 0; y < from->plane(1).height; ++y) {
        for (int x = 0; x < pairs; ++x) {
            ASSERT_EQ(to->plane(1).row(y)[2 * x], from->plane(1).row(y)[2 * (pairs - 1 - x)]) << x << ' ' << y;
            ASSERT_EQ(to->plane(1).row(y)[2 * x + 1], from->plane(1).row(y)[2 * (pairs - 1 - x) + 1]);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Mirror, testing::Values(Size{64, 4}, Size{1, 1}, Size{2, 2}, Size{10, 3}, Size{33, 5}));

} // namespace
} // namespace velmo
