#include "platform/ffmpeg/internal/VideoRangeConverter.h"

#include <gmock/gmock.h>

#include <algorithm>
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

/// Coded values back to 0 to 1 and +-0.5, of the given range; and to red, green and blue.
Color decoded(const std::array<int, 3>& code, bool full, const Matrix& m) {
    const double y = full ? code[0] / 255.0 : (code[0] - 16) / 219.0;
    const double cb = (code[1] - 128) / (full ? 255.0 : 224.0);
    const double cr = (code[2] - 128) / (full ? 255.0 : 224.0);
    const double red = y + cr * 2 * (1 - m.red);
    const double blue = y + cb * 2 * (1 - m.blue);
    return {red, (y - m.red * red - m.blue * blue) / (1 - m.red - m.blue), blue};
}

/// Each pair of columns and each pair of rows has a colour of its own, and each pixel a luma of its own.
TEST_P(VideoRangeConverterTest, GivesEachPixelItsColourAtAnyEvenWidth) {
    const Kind kind = GetParam();
    VideoRangeConverter converter(VideoRangeConverter::Untagged::camera);
    const auto codeAt = [](int x, int y) {
        return std::array{60 + (x * 7 + y * 5) % 120, 90 + (x / 2 * 3 + y / 2) % 70, 100 + (x / 2 + y / 2 * 5) % 60};
    };
    constexpr int kHeight = 6;
    for (const int width : {128, 130, 254, 322, 640}) {
        const FramePtr frame = frameOf(kind, {0, 0, 0}, width, kHeight);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::array<int, 3> code = codeAt(x, y);
                if (kind.format == AV_PIX_FMT_YUYV422) {
                    std::uint8_t* const row = frame->data[0] + std::ptrdiff_t{y} * frame->linesize[0];
                    row[2 * x] = static_cast<std::uint8_t>(code[0]);
                    row[2 * x + 1] = static_cast<std::uint8_t>(code[x % 2 == 0 ? 1 : 2]);
                    continue;
                }
                const bool half = kind.format == AV_PIX_FMT_YUVJ420P;
                frame->data[0][y * frame->linesize[0] + x] = static_cast<std::uint8_t>(code[0]);
                for (std::size_t p = 1; p < 3; ++p) {
                    frame->data[p][(half ? y / 2 : y) * frame->linesize[p] + x / 2] =
                        static_cast<std::uint8_t>(code[p]);
                }
            }
        }
        const FrameRef picture = converter.convert(*frame);
        ASSERT_TRUE(picture);
        double farthest = 0;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < width; ++x) {
                const Color yuv = toYuv(decoded(codeAt(x, y), kind.full, kind.matrix), k709);
                const std::uint8_t* const color = picture->plane(1).row(y / 2) + x / 2 * 2;
                farthest =
                    std::max({farthest, std::abs(picture->plane(0).row(y)[x] - (16 + yuv[0] * 219)),
                              std::abs(color[0] - (128 + yuv[1] * 224)), std::abs(color[1] - (128 + yuv[2] * 224))});
            }
        }
        EXPECT_LT(farthest, 1) << width;
    }
}

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
