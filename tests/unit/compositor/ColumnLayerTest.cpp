#include "compositor/internal/ColumnLayer.h"

#include "Composition.h"

#include <cmath>
#include <random>

namespace velmo {
namespace {

using internal::Column;
using internal::ColumnGeometry;
using internal::FrameRenderer;
using test::agrees;
using test::Composition;
using test::Content;
using test::makePicture;
using test::picturesAgree;
using test::plainPicture;
using test::windowPicture;

constexpr PixelFormat kFormats[] = {PixelFormat::nv12, PixelFormat::bgra};

std::shared_ptr<const NameTagText> tag(const std::string& name, const std::string& role) {
    return std::make_shared<const NameTagText>(NameTagText{name, role});
}

class ColumnLayerTest : public ::testing::Test {
protected:
    FrameRef render(const FrameRef& source) { return renderer_.render(*source, composition_.contents()); }

    FrameRenderer renderer_{&PixelBufferPool::create};
    Composition composition_;
};

/// Luma, counted from the upper left.
int luma(const FrameRef& picture, int x, int y) {
    return picture->plane(0).row(y)[x];
}

constexpr int kBackgroundLuma = 37; // 16 + 219 * (0.2126 * 0.04 + 0.7152 * 0.11 + 0.0722 * 0.09)
constexpr int kFlatLuma = 132;      // of (0.12, 0.66, 0.44)

TEST(ColumnGeometry, AllTheWayInTheColumnIsAFifthAndThePictureStandsBesideIt) {
    const ColumnGeometry left = ColumnGeometry::of(1920, 1080, 1, true);
    EXPECT_EQ(left.columnWidth, 384);
    EXPECT_DOUBLE_EQ(left.pictureScale, 0.8);
    EXPECT_EQ(left.column, (Rect{0, 0, 384, 1080}));
    EXPECT_NEAR(left.picture.x, 384, 1e-9);
    EXPECT_NEAR(left.picture.y, 108, 1e-9);
    EXPECT_NEAR(left.picture.width, 1536, 1e-9);
    EXPECT_NEAR(left.picture.height, 864, 1e-9);
    const ColumnGeometry right = ColumnGeometry::of(1920, 1080, 1, false);
    EXPECT_EQ(right.column, (Rect{1536, 0, 384, 1080}));
    EXPECT_EQ(right.picture.x, 0);
}

TEST(ColumnGeometry, HalfWayTheColumnIsHalfOutOfTheFrameOnItsSide) {
    EXPECT_EQ(ColumnGeometry::of(1920, 1080, 0.5, true).column, (Rect{-192, 0, 384, 1080}));
    EXPECT_EQ(ColumnGeometry::of(1920, 1080, 0.5, false).column, (Rect{1728, 0, 384, 1080}));
    EXPECT_DOUBLE_EQ(ColumnGeometry::of(1920, 1080, 0.5, true).pictureScale, 0.9);
}

TEST(ColumnGeometry, TheWidthIsRoundedHalvesAwayFromZero) {
    EXPECT_EQ(ColumnGeometry::of(1366, 768, 0.3, true).columnWidth, 273);
    EXPECT_EQ(ColumnGeometry::of(1367, 768, 1, true).columnWidth, 273);
    EXPECT_EQ(ColumnGeometry::of(1368, 768, 1, true).columnWidth, 274);
    EXPECT_EQ(ColumnGeometry::of(2, 2, 1, true).columnWidth, 0);
}

TEST_F(ColumnLayerTest, AgreesWithTheReferenceOnBothSidesHalfWayAndAllTheWay) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 321, 181, Content::noise);
        for (const double zoom : {1.0, 2.0, 4.0}) {
            composition_.window = {zoom == 1 ? Point{0.5, 0.5} : Point{0.4, 0.63}, zoom};
            for (const double slide : {0.0011, 0.1, 0.5, 0.77, 1.0}) {
                for (const bool left : {true, false}) {
                    for (const bool hasCamera : {true, false}) {
                        composition_.column =
                            Column{slide, left, hasCamera ? makePicture(format, 160, 91, Content::noise, 8) : nullptr,
                                   nullptr};
                        ASSERT_TRUE(agrees(renderer_, source, composition_, "column"))
                            << "zoom " << zoom << ", slide " << slide << ", left " << left << ", camera " << hasCamera;
                    }
                }
            }
        }
    }
}

TEST_F(ColumnLayerTest, AgreesWithTheReferenceAtTheUsualSizeWithTheTagInIt) {
    const FrameRef source = makePicture(PixelFormat::nv12, 1920, 1080, Content::noise);
    for (const double slide : {0.5, 1.0}) {
        composition_.column = Column{slide, slide == 1, makePicture(PixelFormat::nv12, 1280, 720, Content::noise, 5),
                                     tag("Ana Martínez Soto", "Profesora de Matemáticas")};
        EXPECT_TRUE(agrees(renderer_, source, composition_, "column-1920x1080"));
    }
}

TEST_F(ColumnLayerTest, ThePictureKeepsItsShapeInTheMiddleOfTheHeight) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 1920, 1080, 200);
    composition_.column = Column{1, true, nullptr, nullptr};
    const FrameRef frame = render(source);
    for (const int x : {384, 1000, 1919}) {
        EXPECT_EQ(luma(frame, x, 107), kBackgroundLuma);
        EXPECT_EQ(luma(frame, x, 108), 200);
        EXPECT_EQ(luma(frame, x, 971), 200);
        EXPECT_EQ(luma(frame, x, 972), kBackgroundLuma);
    }
    for (const int y : {0, 107, 500, 1079}) {
        EXPECT_EQ(luma(frame, 0, y), kFlatLuma);
        EXPECT_EQ(luma(frame, 383, y), kFlatLuma);
    }
}

TEST_F(ColumnLayerTest, AtTheRightThePictureStandsAtTheLeft) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 1920, 1080, 200);
    composition_.column = Column{1, false, nullptr, nullptr};
    const FrameRef frame = render(source);
    EXPECT_EQ(luma(frame, 0, 500), 200);
    EXPECT_EQ(luma(frame, 1535, 500), 200);
    EXPECT_EQ(luma(frame, 1536, 500), kFlatLuma);
    EXPECT_EQ(luma(frame, 1919, 0), kFlatLuma);
    EXPECT_EQ(luma(frame, 1000, 20), kBackgroundLuma);
}

/// A picture whose columns tell where they are: the middle third is bright.
FrameRef bandedCamera(int width, int height) {
    const FrameRef camera = plainPicture(PixelFormat::nv12, width, height, 60);
    for (int y = 0; y < height; ++y) {
        std::fill_n(camera->plane(0).row(y) + width / 3, width / 3, std::uint8_t{220});
    }
    return camera;
}

TEST_F(ColumnLayerTest, AWideCameraIsCutAtBothSidesAndFillsTheColumn) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 1920, 1080, 30);
    composition_.column = Column{1, true, bandedCamera(1920, 1080), nullptr};
    const FrameRef frame = render(source);
    for (const int x : {0, 191, 383}) { // 640 bright pixels about the middle are wider than the column
        for (const int y : {0, 540, 1079}) {
            EXPECT_EQ(luma(frame, x, y), 220);
        }
    }
    EXPECT_EQ(luma(frame, 384, 540), 30);
}

TEST_F(ColumnLayerTest, ATallCameraIsCutAtTopAndBottom) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 1920, 1080, 30);
    composition_.column = Column{1, true, bandedCamera(192, 1080), nullptr};
    const FrameRef frame = render(source);
    EXPECT_EQ(luma(frame, 10, 0), 60);
    EXPECT_EQ(luma(frame, 192, 0), 220);
    EXPECT_EQ(luma(frame, 373, 1079), 60);
    EXPECT_TRUE(agrees(renderer_, source, composition_, "tall-camera"));
}

TEST_F(ColumnLayerTest, CamerasOfEverySizeFillTheColumn) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 322, 181, Content::noise);
        for (const Size size : {Size{1, 1}, Size{2, 300}, Size{640, 480}, Size{1280, 720}, Size{3840, 2160},
                                Size{31, 17}, Size{500, 1}}) {
            composition_.column = Column{
                0.8, true,
                makePicture(format, static_cast<int>(size.width), static_cast<int>(size.height), Content::noise, 4),
                nullptr};
            ASSERT_TRUE(agrees(renderer_, source, composition_, "camera-sizes")) << size.width << "x" << size.height;
        }
    }
}

TEST_F(ColumnLayerTest, ACameraInAnotherFormatCountsAsNone) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 640, 360, 200);
    composition_.column = Column{1, true, plainPicture(PixelFormat::bgra, 64, 64, 90), nullptr};
    EXPECT_EQ(luma(render(source), 20, 20), kFlatLuma);
}

TEST_F(ColumnLayerTest, TheBubblesShrinkWithThePictureAndTheTagDoesNot) {
    const FrameRef source = makePicture(PixelFormat::nv12, 641, 361, Content::noise);
    composition_.screen = {0, 0, 641, 361};
    composition_.window = {{0.4, 0.4}, 2};
    BubbleInfo info;
    info.window = {301, 141, 90, 70};
    info.rect = {31, 41, 60, 60};
    composition_.bubbles = {{info, windowPicture(90, 70)}, {info, nullptr}};
    for (const double slide : {0.4, 1.0}) {
        for (const bool left : {true, false}) {
            composition_.column =
                Column{slide, left, makePicture(PixelFormat::nv12, 320, 240, Content::noise, 2), tag("Ana Soto", "")};
            EXPECT_TRUE(agrees(renderer_, source, composition_, "column-over-bubbles"));
        }
    }
}

TEST_F(ColumnLayerTest, WithAllAtOnceHardlyAComponentIsFurtherOffThanOne) {
    const FrameRef source = makePicture(PixelFormat::nv12, 641, 361, Content::noise);
    composition_.screen = {0, 0, 641, 361};
    composition_.window = {{0.4, 0.4}, 2.3};
    composition_.spotlight = {{0.42, 0.45}, 0.7};
    BubbleInfo info;
    info.window = {301, 141, 90, 70};
    info.rect = {31, 41, 60, 60};
    composition_.bubbles = {{info, windowPicture(90, 70)}, {info, nullptr}};
    composition_.column =
        Column{0.7, true, makePicture(PixelFormat::nv12, 320, 240, Content::noise, 2), tag("Ana Soto", "Física")};
    const FrameRef frame = render(source);
    const FrameRef expected = test::referenceRender(*source, composition_.scene());
    EXPECT_TRUE(picturesAgree(*frame, *expected, 2, "all-at-once")); // each thing that lies on another rounds again
    EXPECT_LT(test::componentsApart(*frame, *expected, 1), 641u * 361u / 1000u);
}

TEST_F(ColumnLayerTest, TheTagStandsInTheMiddleOfTheColumnAndSlidesWithIt) {
    const FrameRef source = plainPicture(PixelFormat::nv12, 1920, 1080, 30);
    composition_.column = Column{1, true, nullptr, nullptr};
    const FrameRef without = render(source);
    composition_.column->nameTag = tag("Ana", "Física");
    const FrameRef with = render(source);
    int first = 1920;
    int last = -1;
    int lowest = -1;
    for (int y = 0; y < 1080; ++y) {
        for (int x = 0; x < 1920; ++x) {
            if (luma(with, x, y) != luma(without, x, y)) {
                first = std::min(first, x);
                last = std::max(last, x);
                lowest = y;
            }
        }
    }
    EXPECT_NEAR((first + last + 1) / 2.0, 192, 1);
    EXPECT_NEAR(1079 - lowest, 1080 * 0.035, 1);
    composition_.column->slide = 0.5;
    EXPECT_TRUE(agrees(renderer_, source, composition_, "sliding-tag"));
}

TEST_F(ColumnLayerTest, ATagWithoutRoomLeavesTheColumnAsItIs) {
    const FrameRef source = makePicture(PixelFormat::nv12, 60, 400, Content::noise); // a column of 12 pixels
    composition_.column = Column{1, true, nullptr, nullptr};
    const FrameRef without = render(source);
    composition_.column->nameTag = tag("Ana", "Física");
    EXPECT_TRUE(picturesAgree(*render(source), *without, 0, "no-room-for-a-tag"));
}

TEST_F(ColumnLayerTest, AgreesWithTheReferenceForEveryTinySize) {
    for (const PixelFormat format : kFormats) {
        for (int width = 1; width <= 12; ++width) {
            for (int height = 1; height <= 7; ++height) {
                const FrameRef source = makePicture(format, width, height, Content::noise, 7);
                for (const double slide : {0.3, 1.0}) {
                    composition_.column =
                        Column{slide, width % 2 == 0, makePicture(format, 9, 7, Content::noise), nullptr};
                    ASSERT_TRUE(agrees(renderer_, source, composition_, "tiny-column")) << slide;
                }
            }
        }
    }
}

TEST_F(ColumnLayerTest, ANewPictureOfTheCameraIsShown) {
    const FrameRef source = makePicture(PixelFormat::nv12, 320, 180, Content::noise);
    for (std::uint32_t seed = 1; seed < 4; ++seed) {
        composition_.column = Column{1, true, makePicture(PixelFormat::nv12, 90, 60, Content::noise, seed), nullptr};
        ASSERT_TRUE(agrees(renderer_, source, composition_, "new-camera-picture"));
    }
}

class ColumnProperty : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(ColumnProperty, AgreesWithTheReferenceOverRandomSizesAndSlides) {
    std::mt19937 random(GetParam());
    const auto within = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    FrameRenderer renderer(&PixelBufferPool::create);
    for (int i = 0; i < 40; ++i) {
        const PixelFormat format = kFormats[random() % 2];
        const FrameRef source = makePicture(format, static_cast<int>(within(1, 300)), static_cast<int>(within(1, 200)),
                                            Content::noise, random());
        Composition composition;
        composition.window = {{within(0.3, 0.7), within(0.3, 0.7)}, within(1, 4)};
        const FrameRef camera = makePicture(format, static_cast<int>(within(1, 400)), static_cast<int>(within(1, 300)),
                                            Content::noise, random());
        composition.column =
            Column{within(0.0011, 1), random() % 2 == 0, random() % 4 == 0 ? nullptr : camera, nullptr};
        ASSERT_TRUE(agrees(renderer, source, composition, "random-column")) << "round " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ColumnProperty, ::testing::Range(1u, 7u));

TEST(NameTagCache, IsDrawnAnewForAnotherTextOrSizeAndNotOtherwise) {
    internal::NameTagCache cache;
    const FrameRef first = cache.find({"Ana", "Física"}, 384, 1080);
    ASSERT_TRUE(first);
    EXPECT_EQ(cache.find({"Ana", "Física"}, 384, 1080), first);
    const FrameRef named = cache.find({"Eva", "Física"}, 384, 1080);
    EXPECT_NE(named, first);
    EXPECT_NE(cache.find({"Eva", "Química"}, 384, 1080), named);
    const FrameRef wide = cache.find({"Eva", "Química"}, 512, 1080);
    const FrameRef tall = cache.find({"Eva", "Química"}, 512, 1440);
    EXPECT_NE(tall, wide);
    EXPECT_EQ(cache.find({"Eva", "Química"}, 512, 1440), tall);
}

TEST(NameTagCache, ATextWithoutRoomIsTriedAgainAndForgottenByTheNext) {
    internal::NameTagCache cache;
    ASSERT_TRUE(cache.find({"Ana", ""}, 384, 1080));
    EXPECT_FALSE(cache.find({"Ana", ""}, 40, 1080));
    EXPECT_FALSE(cache.find({"Ana", ""}, 40, 1080));
    EXPECT_TRUE(cache.find({"Ana", ""}, 384, 1080));
}

} // namespace
} // namespace velmo
