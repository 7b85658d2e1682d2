#include "compositor/internal/FrameRenderer.h"
#include "support/Pictures.h"
#include "support/ReferenceRenderer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace velmo {
namespace {

using internal::FrameContents;
using internal::FrameRenderer;
using internal::PointerFigure;
using test::Content;
using test::makePicture;
using test::picturesAgree;

constexpr PixelFormat kFormats[] = {PixelFormat::nv12, PixelFormat::bgra};
constexpr Content kContents[] = {Content::noise, Content::blackAndWhite, Content::gradient, Content::flat};

const auto kPalette = std::make_shared<const std::vector<Color>>(
    std::vector<Color>{Color::fromHex(0x1fa870), Color::fromHex(0xf2c14e), Color::fromHex(0x3b82f6), {1, 0, 0.5, 1}});

FrameRenderer makeRenderer() {
    return FrameRenderer(&PixelBufferPool::create);
}

FrameContents spotlightAt(Point at, double alpha, internal::CropWindow window = {}) {
    return {window, {at, alpha}, {}};
}

FrameContents bubbleAt(Point at, double age = 1, internal::CropWindow window = {}) {
    return {window, {}, PointerFigure{at, age, kPalette}};
}

/// The law of the bitmap: its corner is the last one of a grid of 64 x 2 pixels that leaves the figure its room.
Point sheetFor(const FrameContents& contents, int width, int height) {
    const double half = (std::ceil(0.034 * height * 4.2) + 8) / 2;
    const Point place = contents.pointerFigure->at;
    const double x = ((place.x - contents.window.center.x) * contents.window.scale + 0.5) * width;
    const double y = (0.5 - (place.y - contents.window.center.y) * contents.window.scale) * height;
    return {std::floor((x - half) / 64) * 64, std::floor((y - half) / 2) * 2};
}

test::ReferenceScene sceneOf(const FrameContents& contents, int width, int height) {
    test::ReferenceScene scene;
    scene.center = contents.window.center;
    scene.scale = contents.window.scale;
    scene.spot = contents.spotlight.at;
    scene.spotAlpha = contents.spotlight.alpha;
    if (contents.pointerFigure) {
        scene.bubble = {contents.pointerFigure->at, contents.pointerFigure->age, *contents.pointerFigure->colors,
                        sheetFor(contents, width, height)};
    }
    return scene;
}

void expectAgreement(FrameRenderer& renderer, const FrameRef& source, const FrameContents& contents,
                     const std::string& name) {
    const FrameRef actual = renderer.render(*source, contents);
    ASSERT_TRUE(actual);
    const FrameRef expected = test::referenceRender(*source, sceneOf(contents, source->width(), source->height()));
    ASSERT_TRUE(picturesAgree(*actual, *expected, 1, name))
        << "size " << source->width() << "x" << source->height() << ", centre " << contents.window.center.x << ", "
        << contents.window.center.y << ", scale " << contents.window.scale << ", spot " << contents.spotlight.at.x
        << ", " << contents.spotlight.at.y << ", alpha " << contents.spotlight.alpha;
}

/// Luma or blue of a pixel counted from the upper left.
int at(const FrameRef& picture, int x, int y) {
    return picture->plane(0).row(y)[x * (picture->format() == PixelFormat::bgra ? 4 : 1)];
}

FrameRef plain(PixelFormat format, int width, int height, std::uint8_t value) {
    const FrameRef picture = makePicture(format, width, height, Content::flat);
    for (int p = 0; p < picture->planeCount(); ++p) {
        const PlaneView plane = picture->plane(p);
        std::fill_n(plane.data, plane.stride * plane.height, value);
    }
    return picture;
}

class EffectProperty : public ::testing::TestWithParam<std::uint32_t> {
protected:
    double within(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }

    FrameRef anyPicture(int leastHeight) {
        const int width = static_cast<int>(within(1, 400));
        const int height = static_cast<int>(within(leastHeight, 260));
        return makePicture(kFormats[random_() % 2], width, height, kContents[random_() % 4], random_());
    }

    internal::CropWindow anyWindow() {
        const double scale = random_() % 3 == 0 ? 1 : within(1, 6);
        return scale == 1 ? internal::CropWindow{} : internal::CropWindow{{within(0, 1), within(0, 1)}, scale};
    }

    Point anyPlace() { return {within(-0.1, 1.1), within(-0.1, 1.1)}; }

    std::mt19937 random_{GetParam()};
    FrameRenderer renderer_ = makeRenderer();
};

TEST_P(EffectProperty, TheSpotlightAgreesWithTheReference) {
    for (int i = 0; i < 60; ++i) {
        const FrameRef source = anyPicture(1);
        const FrameContents contents = spotlightAt(anyPlace(), i % 3 == 0 ? 1 : within(0.0011, 1), anyWindow());
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer_, source, contents, "spotlight"));
    }
}

TEST_P(EffectProperty, ThePointerBubbleAgreesWithTheReference) {
    for (int i = 0; i < 60; ++i) {
        const FrameRef source = anyPicture(1);
        const FrameContents contents = bubbleAt(anyPlace(), within(0, 3.4), anyWindow());
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer_, source, contents, "pointer-bubble"));
    }
}

TEST_P(EffectProperty, BothTogetherAgreeWithTheReference) {
    for (int i = 0; i < 40; ++i) {
        const FrameRef source = anyPicture(1);
        FrameContents contents = spotlightAt(anyPlace(), within(0.0011, 1), anyWindow());
        const Point beside{contents.spotlight.at.x + within(-0.05, 0.05), contents.spotlight.at.y};
        contents.pointerFigure = PointerFigure{beside, within(0, 3.4), kPalette};
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer_, source, contents, "both-effects"));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, EffectProperty, ::testing::Range(1u, 6u));

TEST(EffectLayers, AgreeWithTheReferenceAtFullSizes) {
    FrameRenderer renderer = makeRenderer();
    FrameContents contents{{{0.613, 0.377}, 2.37}, {{0.58, 0.41}, 1}, PointerFigure{{0.581, 0.405}, 1.3, kPalette}};
    expectAgreement(renderer, makePicture(PixelFormat::nv12, 1920, 1080, Content::noise), contents, "1920x1080");
    expectAgreement(renderer, makePicture(PixelFormat::bgra, 1367, 769, Content::noise), contents, "1367x769");
    contents.spotlight.alpha = 0.37;
    expectAgreement(renderer, makePicture(PixelFormat::nv12, 3840, 2160, Content::noise), contents, "3840x2160");
}

TEST(EffectLayers, AgreeWithTheReferenceForEveryTinySize) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        for (int width = 1; width <= 9; ++width) {
            for (int height = 1; height <= 9; ++height) {
                const FrameRef source = makePicture(format, width, height, Content::noise, 7);
                FrameContents contents = spotlightAt({0.4, 0.6}, 0.9);
                contents.pointerFigure = PointerFigure{{0.45, 0.52}, 1, kPalette};
                ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, contents, "tiny-effects"));
            }
        }
    }
}

TEST(SpotlightLayer, AtFullOpacityTheOutsideKeeps22PerCentOfItsLight) {
    const double left = std::pow(0.22, 1 / 2.2);
    FrameRenderer renderer = makeRenderer();
    const FrameRef bgra = renderer.render(*plain(PixelFormat::bgra, 400, 200, 200), spotlightAt({0.2, 0.5}, 1));
    EXPECT_NEAR(std::pow(at(bgra, 399, 100) / 200.0, 2.2), 0.22, 0.003);
    EXPECT_EQ(at(bgra, 80, 100), 200);
    const FrameRef nv12 = renderer.render(*plain(PixelFormat::nv12, 400, 200, 216), spotlightAt({0.2, 0.5}, 1));
    EXPECT_EQ(at(nv12, 399, 100), static_cast<int>(std::lround(16 + 200 * left)));
    EXPECT_EQ(at(nv12, 80, 100), 216);
    EXPECT_EQ(nv12->plane(1).row(50)[399], static_cast<int>(std::lround(128 + 88 * left)));
    EXPECT_EQ(nv12->plane(1).row(50)[80], 216);
}

TEST(SpotlightLayer, TooFaintALightIsLeftOut) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 100, 60, Content::noise);
    for (const double alpha : {0.0, 0.0005, 0.001}) {
        EXPECT_TRUE(picturesAgree(*renderer.render(*source, spotlightAt({0.5, 0.5}, alpha)), *source, 0, "faint"));
    }
    const FrameRef white = plain(PixelFormat::bgra, 100, 60, 255);
    EXPECT_LT(at(renderer.render(*white, spotlightAt({0.5, 0.5}, 0.01)), 0, 0), 255);
}

TEST(SpotlightLayer, KeepsTheDiscAndItsAlphaUntouched) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::bgra, 300, 300, Content::noise);
    const FrameRef lit = renderer.render(*source, spotlightAt({0.5, 0.5}, 1));
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x) {
            const bool isInside = std::hypot(x + 0.5 - 150, y + 0.5 - 150) < 300 * 0.17 - 0.1;
            ASSERT_TRUE(!isInside || at(lit, x, y) == at(source, x, y)) << x << ", " << y;
            ASSERT_EQ(lit->plane(0).row(y)[4 * x + 3], source->plane(0).row(y)[4 * x + 3]) << x << ", " << y;
        }
    }
}

TEST(SpotlightLayer, FallsEvenlyInLightFromTheInnerRadiusToTheOuter) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef lit = renderer.render(*plain(PixelFormat::bgra, 1000, 1000, 255), spotlightAt({0.5, 0.5}, 1));
    double last = 1;
    for (const double share : {0.25, 0.5, 0.75}) {
        const double distance = 170 * (1 + 0.45 * share);
        const double light = std::pow(at(lit, 500 + static_cast<int>(distance), 500) / 255.0, 2.2);
        EXPECT_NEAR(light, 1 - 0.78 * share, 0.012);
        EXPECT_LT(light, last);
        last = light;
    }
}

TEST(SpotlightLayer, NearTheEdgeOfTheFrameTheRestOfTheFrameIsStillDimmed) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 321, 181, Content::noise);
        for (const Point spot : {Point{0, 0}, Point{1, 1}, Point{0, 0.99}, Point{1.02, 0.5}, Point{0.5, -0.1},
                                 Point{-3, 0.5}, Point{0.5, 40}, Point{1e9, -1e9}}) {
            ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, spotlightAt(spot, 1), "spot-at-the-edge"));
        }
    }
}

TEST(SpotlightLayer, TheDiscKeepsItsSizeWhileThePictureIsZoomed) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 320, 180, 255);
    const FrameRef unzoomed = renderer.render(*source, spotlightAt({0.5, 0.5}, 1));
    const Point center{0.3, 0.6};
    const FrameRef zoomed = renderer.render(*source, spotlightAt(center, 1, {center, 2}));
    EXPECT_TRUE(picturesAgree(*zoomed, *unzoomed, 0, "disc-while-zoomed"));
}

TEST(SpotlightLayer, AHighSpotLiesHighInTheFrameAndOneBesideTheCentreTwiceAsFarAtZoomTwo) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 400, 400, 255);
    const FrameRef high = renderer.render(*source, spotlightAt({0.5, 0.9}, 1));
    EXPECT_EQ(at(high, 200, 40), 255);
    EXPECT_LT(at(high, 200, 360), 200);
    const FrameRef zoomed = renderer.render(*source, spotlightAt({0.6, 0.6}, 1, {{0.5, 0.5}, 2}));
    const FrameRef moved = renderer.render(*source, spotlightAt({0.7, 0.7}, 1));
    EXPECT_TRUE(picturesAgree(*zoomed, *moved, 0, "spot-beside-the-centre"));
}

TEST(SpotlightLayer, ALightThatFadesFollowsItsOpacityInEveryFrame) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 200, 120, Content::noise);
    for (const double alpha : {1.0, 0.73, 0.5, 0.5, 0.1, 0.0012, 1.0}) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, spotlightAt({0.5, 0.5}, alpha), "fading"));
    }
}

TEST(PointerBubbleLayer, FollowsTheSizeOfTheFrame) {
    FrameRenderer renderer = makeRenderer();
    for (const int height : {64, 400, 200, 1080}) {
        const FrameRef source = makePicture(PixelFormat::nv12, height * 2, height, Content::noise);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, bubbleAt({0.4, 0.3}), "bubble-sizes"));
    }
}

TEST(PointerBubbleLayer, TheSheetThatTheFigureIsDrawnOnMakesNoDifferenceInAUsualFrame) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 1280, 720, Content::noise);
    for (const Point place : {Point{0.13, 0.31}, Point{0.5, 0.5}, Point{0.871, 0.997}}) {
        const FrameContents contents = bubbleAt(place, 0.9);
        test::ReferenceScene scene = sceneOf(contents, 1280, 720);
        scene.bubble->sheet = {-400, -400};
        EXPECT_TRUE(picturesAgree(*renderer.render(*source, contents), *test::referenceRender(*source, scene), 2,
                                  "another-sheet"));
    }
}

TEST(PointerBubbleLayer, LeavesEverythingButItsOwnPlaceExactlyAsItWas) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 640, 360, Content::noise);
        const FrameRef drawn = renderer.render(*source, bubbleAt({0.5, 0.5}));
        const double reach = 0.034 * 360 * 1.8 + 1; // the halo at its widest
        int changed = 0;
        for (int y = 0; y < 360; ++y) {
            for (int x = 0; x < 640; ++x) {
                const bool isFar = std::abs(x + 0.5 - 320) > reach || std::abs(y + 0.5 - 180) > reach;
                ASSERT_TRUE(!isFar || at(drawn, x, y) == at(source, x, y)) << x << ", " << y;
                changed += at(drawn, x, y) != at(source, x, y) ? 1 : 0;
            }
        }
        EXPECT_GT(changed, 1000);
    }
}

TEST(PointerBubbleLayer, IsDrawnUprightAtAHighPlaceOfAZoomedPicture) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 600, 400, 0);
    const FrameRef drawn = renderer.render(*source, bubbleAt({0.6, 0.6}, 1, {{0.5, 0.5}, 2}));
    const int radius = static_cast<int>(0.034 * 400);
    int bright = 0;
    for (int x = 420 - radius - 3; x < 420 + radius + 3; ++x) {
        bright = std::max(bright, at(drawn, x, 120)); // its middle is at 0.7 of the frame along both axes, y up
    }
    EXPECT_GT(bright, 60);
    EXPECT_EQ(at(drawn, 420, 280), 0);
}

TEST(PointerBubbleLayer, AFractionOfAPixelMovesIt) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 400, 300, 0);
    const FrameRef one = renderer.render(*source, bubbleAt({200.0 / 400, 0.5}));
    const FrameRef other = renderer.render(*source, bubbleAt({200.3 / 400, 0.5}));
    EXPECT_FALSE(picturesAgree(*one, *other, 4, "fraction-of-a-pixel"));
    for (int k = 0; k < 130; ++k) { // over two columns of the bitmap's grid
        const FrameContents contents = bubbleAt({(150 + k * 0.77) / 400, 0.5 + k * 0.001});
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, contents, "moving-bubble"));
    }
}

TEST(PointerBubbleLayer, IsCutAtTheEdgesOfTheFrame) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 333, 301, Content::noise);
        for (const Point place : {Point{0, 0}, Point{1, 1}, Point{0, 1}, Point{1.01, 0.5}, Point{0.5, -0.02}}) {
            ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, bubbleAt(place), "bubble-at-the-edge"));
        }
    }
}

TEST(PointerBubbleLayer, WithoutColoursOrOutsideTheFrameThereIsNone) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 200, 120, Content::noise);
    FrameContents contents = bubbleAt({0.5, 0.5});
    contents.pointerFigure->colors = std::make_shared<const std::vector<Color>>();
    EXPECT_TRUE(picturesAgree(*renderer.render(*source, contents), *source, 0, "no-colours"));
    contents.pointerFigure->colors = nullptr;
    EXPECT_TRUE(picturesAgree(*renderer.render(*source, contents), *source, 0, "no-list-of-colours"));
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Point place : {Point{-4, 0.5}, Point{0.5, 1e12}, Point{kNone, 0.5}, Point{0.5, kNone}}) {
        EXPECT_TRUE(picturesAgree(*renderer.render(*source, bubbleAt(place)), *source, 0, "bubble-outside"));
    }
}

TEST(EffectLayers, TheBubbleIsNotDimmedByTheLight) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 400, 300, 0);
    FrameContents contents = bubbleAt({0.9, 0.2});
    const FrameRef alone = renderer.render(*source, contents);
    contents.spotlight = {{0.1, 0.9}, 1};
    EXPECT_TRUE(picturesAgree(*renderer.render(*source, contents), *alone, 0, "bubble-over-the-light"));
}

TEST(EffectLayers, APlaceThatIsNoNumberIsFarAway) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = plain(PixelFormat::bgra, 100, 100, 255);
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Point place : {Point{kNone, 0.5}, Point{0.5, kNone}}) {
        EXPECT_LT(at(renderer.render(*source, spotlightAt(place, 1)), 0, 0), 140);
    }
}

} // namespace
} // namespace velmo
