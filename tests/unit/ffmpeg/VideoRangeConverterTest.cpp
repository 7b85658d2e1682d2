#include "platform/ffmpeg/internal/VideoRangeConverter.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace velmo::internal {
namespace {

using Color = std::array<double, 3>; // of 1: red, green, blue, or luma and two colour differences of +-0.5

struct Matrix {
    double red;
    double blue;
};
constexpr Matrix k601{0.299, 0.114};
constexpr Matrix k709{0.2126, 0.0722};

Color toYuv(const Color& rgb, const Matrix& m) {
    const double y = m.red * rgb[0] + (1 - m.red - m.blue) * rgb[1] + m.blue * rgb[2];
    return {y, (rgb[2] - y) / (2 * (1 - m.blue)), (rgb[0] - y) / (2 * (1 - m.red))};
}

std::array<int, 3> coded(const Color& yuv, bool full) {
    const auto code = [](double value) { return static_cast<int>(std::lround(value)); };
    return full ? std::array{code(yuv[0] * 255), code(128 + yuv[1] * 255), code(128 + yuv[2] * 255)}
                : std::array{code(16 + yuv[0] * 219), code(128 + yuv[1] * 224), code(128 + yuv[2] * 224)};
}

constexpr Color kColors[] = {{1, 1, 1},        {0, 0, 0},        {0.5, 0.5, 0.5},
                             {0.9, 0.7, 0.55}, {0.2, 0.45, 0.4}, {0.8, 0.2, 0.2}};

struct Kind {
    AVPixelFormat format;
    AVColorRange range;
    AVColorSpace space;
    bool full;
    Matrix matrix;
};

class VideoRangeConverterTest : public testing::TestWithParam<Kind> {
protected:
    static FramePtr frameOf(const Kind& kind, const std::array<int, 3>& yuv, int width, int height) {
        FramePtr frame(av_frame_alloc());
        frame->format = kind.format;
        frame->width = width;
        frame->height = height;
        frame->color_range = kind.range;
        frame->colorspace = kind.space;
        av_frame_get_buffer(frame.get(), 0);
        for (int y = 0; y < height; ++y) {
            if (kind.format == AV_PIX_FMT_YUYV422) {
                std::uint8_t* row = frame->data[0] + std::ptrdiff_t{y} * frame->linesize[0];
                for (int x = 0; x < width; ++x) {
                    row[2 * x] = static_cast<std::uint8_t>(yuv[0]);
                    row[2 * x + 1] = static_cast<std::uint8_t>(yuv[x % 2 == 0 ? 1 : 2]);
                }
                continue;
            }
            for (std::size_t p = 0; p < 3; ++p) {
                const bool half = p > 0 && kind.format == AV_PIX_FMT_YUVJ420P;
                std::uint8_t* row = frame->data[p] + std::ptrdiff_t{half ? y / 2 : y} * frame->linesize[p];
                std::fill_n(row, p > 0 ? width / 2 : width, static_cast<std::uint8_t>(yuv[p]));
            }
        }
        return frame;
    }
};

TEST_P(VideoRangeConverterTest, GivesTheSameColourInRec709VideoRange) {
    const Kind kind = GetParam();
    VideoRangeConverter converter(VideoRangeConverter::Untagged::camera);
    for (const Color& color : kColors) {
        const FramePtr frame = frameOf(kind, coded(toYuv(color, kind.matrix), kind.full), 64, 32);
        const FrameRef picture = converter.convert(*frame);
        ASSERT_TRUE(picture);
        const std::array<int, 3> expected = coded(toYuv(color, k709), false);
        EXPECT_NEAR(picture->plane(0).row(9)[21], expected[0], 2);
        EXPECT_NEAR(picture->plane(1).row(5)[20], expected[1], 2);
        EXPECT_NEAR(picture->plane(1).row(5)[21], expected[2], 2);
        EXPECT_EQ(picture->colorTags(), ColorTags{});
    }
}

INSTANTIATE_TEST_SUITE_P(
    Formats, VideoRangeConverterTest,
    testing::Values(Kind{AV_PIX_FMT_YUVJ422P, AVCOL_RANGE_JPEG, AVCOL_SPC_BT470BG, true, k601},
                    Kind{AV_PIX_FMT_YUVJ420P, AVCOL_RANGE_UNSPECIFIED, AVCOL_SPC_UNSPECIFIED, true, k601},
                    Kind{AV_PIX_FMT_YUV422P, AVCOL_RANGE_JPEG, AVCOL_SPC_BT709, true, k709},
                    Kind{AV_PIX_FMT_YUYV422, AVCOL_RANGE_UNSPECIFIED, AVCOL_SPC_UNSPECIFIED, false, k601}));

TEST(VideoRangeConverter, APictureOfAnotherSizeIsGivenInThatSize) {
    VideoRangeConverter converter(VideoRangeConverter::Untagged::file);
    for (const auto& [width, height] : {std::pair{320, 180}, {640, 480}, {33, 17}, {320, 180}}) {
        FramePtr frame(av_frame_alloc());
        frame->format = AV_PIX_FMT_YUV420P;
        frame->width = width;
        frame->height = height;
        av_frame_get_buffer(frame.get(), 0);
        const FrameRef picture = converter.convert(*frame);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->width(), width);
        EXPECT_EQ(picture->height(), height);
    }
}

} // namespace
} // namespace velmo::internal
