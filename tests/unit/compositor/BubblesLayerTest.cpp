#include "compositor/internal/BubblesLayer.h"

#include "Composition.h"

#include <gmock/gmock.h>
#include <limits>
#include <random>

namespace velmo {
namespace {

using internal::FrameRenderer;
using test::agrees;
using test::Composition;
using test::Content;
using test::makePicture;
using test::picturesAgree;
using test::plainPicture;
using test::windowPicture;

constexpr PixelFormat kFormats[] = {PixelFormat::nv12, PixelFormat::bgra};

BubbleInfo windowAt(const Rect& window, int key = 0) {
    BubbleInfo info;
    info.window = window;
    info.key = key;
    return info;
}

BubbleInfo bubbleAt(const Rect& rect, bool circle = false, double corner = 0.2) {
    BubbleInfo info;
    info.rect = rect;
    info.circle = circle;
    info.corner = corner;
    return info;
}

class BubblesLayerTest : public ::testing::Test {
protected:
    /// The screen has a point for each pixel.
    FrameRef screenOf(PixelFormat format, int width, int height) {
        composition_.screen = {0, 0, static_cast<double>(width), static_cast<double>(height)};
        return makePicture(format, width, height, Content::noise, 3);
    }
    FrameRef render(const FrameRef& source) { return renderer_.render(*source, composition_.contents()); }

    FrameRenderer renderer_{&PixelBufferPool::create};
    Composition composition_;
};

/// Luma or blue, y up.
int at(const FrameRef& picture, int x, int y) {
    return picture->plane(0).row(picture->height() - 1 - y)[x * (picture->format() == PixelFormat::bgra ? 4 : 1)];
}

TEST_F(BubblesLayerTest, AWindowLiesInItsOwnSizeAtEveryZoomAndAtOddPlaces) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 321, 181);
        for (const double zoom : {1.0, 2.0, 4.0}) {
            composition_.window = {zoom == 1 ? Point{0.5, 0.5} : Point{0.4, 0.63}, zoom};
            for (const Point place : {Point{40, 60}, Point{41, 61}, Point{63, 20}, Point{100.25, 33.75}}) {
                composition_.bubbles = {{windowAt({place.x, place.y, 70, 53}), windowPicture(70, 53)}};
                ASSERT_TRUE(agrees(renderer_, source, composition_, "window"))
                    << "zoom " << zoom << " at " << place.x << ", " << place.y;
            }
        }
    }
}

TEST_F(BubblesLayerTest, AWindowAtAWholePlaceIsLaidOverPixelForPixel) {
    const FrameRef source = screenOf(PixelFormat::bgra, 200, 120);
    const FrameRef picture = windowPicture(64, 48);
    composition_.window = {{0.3, 0.3}, 2};
    composition_.bubbles = {{windowAt({33, 21, 64, 48}), picture}};
    const FrameRef frame = render(source);
    int opaque = 0;
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 64; ++x) {
            const std::uint8_t* pixel = picture->plane(0).row(y) + 4 * x;
            const std::uint8_t* shown = frame->plane(0).row(120 - 21 - 48 + y) + 4 * (33 + x);
            if (pixel[3] == 255) {
                ASSERT_TRUE(std::equal(pixel, pixel + 4, shown)) << x << ", " << y;
                ++opaque;
            }
        }
    }
    EXPECT_GT(opaque, 1000);
}

TEST_F(BubblesLayerTest, EverythingBesideAWindowAndWhereItIsClearStaysAsItWas) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 320, 180);
        composition_.bubbles = {{windowAt({50, 50, 80, 60}), windowPicture(80, 60)}};
        const FrameRef frame = render(source);
        for (int y = 0; y < 180; ++y) {
            for (int x = 0; x < 320; ++x) {
                const bool isInside = x >= 50 && x < 130 && y >= 50 && y < 110;
                const bool isCorner = (x < 70 || x >= 110) && (y < 65 || y >= 95);
                ASSERT_TRUE((isInside && !isCorner) || at(frame, x, y) == at(source, x, y)) << x << ", " << y;
            }
        }
    }
}

TEST_F(BubblesLayerTest, AWindowThatIsPartlyOffTheFrameIsCut) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 203, 111);
        for (const Point place : {Point{-31, 20}, Point{170, 20}, Point{60, -25.5}, Point{60.5, 90}, Point{-31.5, -20},
                                  Point{180, 95}, Point{202.9, 110.9}, Point{-63.5, 10}}) {
            composition_.bubbles = {{windowAt({place.x, place.y, 64, 48}), windowPicture(64, 48)}};
            ASSERT_TRUE(agrees(renderer_, source, composition_, "window-at-the-edge")) << place.x << ", " << place.y;
        }
    }
}

TEST_F(BubblesLayerTest, AWindowBesideTheFrameIsNotThere) {
    const FrameRef source = screenOf(PixelFormat::nv12, 200, 100);
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Point place : {Point{-64, 0}, Point{200, 0}, Point{0, -48}, Point{0, 100}, Point{1e12, 5},
                              Point{kNone, 5}, Point{5, kNone}, Point{-1e300, 5}}) {
        composition_.bubbles = {{windowAt({place.x, place.y, 64, 48}), windowPicture(64, 48)}};
        EXPECT_TRUE(picturesAgree(*render(source), *source, 0, "window-outside")) << place.x << ", " << place.y;
    }
}

TEST_F(BubblesLayerTest, AWindowThatCoversTheWholeFrameAndMoreIsShownAll) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 131, 77);
        composition_.bubbles = {{windowAt({-40, -30, 220, 150}), windowPicture(220, 150)}};
        EXPECT_TRUE(agrees(renderer_, source, composition_, "window-over-everything"));
    }
}

TEST_F(BubblesLayerTest, OneFactorMapsPointsToPixelsOnAnyScreen) {
    const FrameRef source = makePicture(PixelFormat::nv12, 300, 200, Content::noise);
    composition_.screen = {-1000, 500, 600, 9999}; // its height has no say
    composition_.bubbles = {{windowAt({-900, 620, 120, 90}), plainPicture(PixelFormat::bgra, 60, 45, 255)}};
    const FrameRef frame = render(source);
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x) {
            const bool isInside = x >= 50 && x < 110 && y >= 60 && y < 105;
            ASSERT_EQ(at(frame, x, y), isInside ? 235 : at(source, x, y)) << x << ", " << y;
        }
    }
}

TEST_F(BubblesLayerTest, APictureOfAnotherSizeThanTheWindowIsScaledToIt) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 320, 180);
        for (const Size size : {Size{30, 20}, Size{71, 52}, Size{97, 81}, Size{140, 106}, Size{333, 290}, Size{1, 1},
                                Size{700, 40}, Size{9, 1500}}) {
            composition_.bubbles = {{windowAt({101.5, 43, 70, 53}),
                                     windowPicture(static_cast<int>(size.width), static_cast<int>(size.height))}};
            ASSERT_TRUE(agrees(renderer_, source, composition_, "window-scaled")) << size.width << "x" << size.height;
        }
    }
}

TEST_F(BubblesLayerTest, AWindowThatHasGrownShowsItsOldPictureWholeUntilTheNewOneComes) {
    const FrameRef source = screenOf(PixelFormat::bgra, 320, 180);
    const FrameRef old = plainPicture(PixelFormat::bgra, 60, 40, 90);
    composition_.bubbles = {{windowAt({20, 20, 60, 40}), old}};
    render(source);
    composition_.bubbles = {{windowAt({20, 20, 150, 110}), old}};
    const FrameRef grown = render(source);
    EXPECT_TRUE(agrees(renderer_, source, composition_, "grown"));
    for (const Point corner : {Point{20, 20}, Point{169, 20}, Point{20, 129}, Point{169, 129}, Point{95, 75}}) {
        const int alpha = 90; // of the picture, as everything in it
        const int below = at(source, static_cast<int>(corner.x), static_cast<int>(corner.y));
        EXPECT_NEAR(at(grown, static_cast<int>(corner.x), static_cast<int>(corner.y)),
                    90 + below * (255 - alpha) / 255.0, 1);
    }
    composition_.bubbles = {{windowAt({20, 20, 30, 20}), old}};
    EXPECT_TRUE(agrees(renderer_, source, composition_, "shrunk"));
}

TEST_F(BubblesLayerTest, WindowsLieInTheOrderOfTheList) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    const internal::LiveBubble lower{windowAt({40, 40, 100, 80}, 0), plainPicture(PixelFormat::bgra, 100, 80, 255)};
    const internal::LiveBubble upper{windowAt({90, 60, 100, 80}, 1), windowPicture(100, 80, 9)};
    composition_.bubbles = {lower, upper};
    EXPECT_TRUE(agrees(renderer_, source, composition_, "in-order"));
    const FrameRef one = render(source);
    composition_.bubbles = {upper, lower};
    EXPECT_TRUE(agrees(renderer_, source, composition_, "in-other-order"));
    EXPECT_FALSE(picturesAgree(*one, *render(source), 10, "order-matters"));
}

TEST_F(BubblesLayerTest, AnEmptyWindowTakesTheRepairBranchThoughThereIsAPicture) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 2};
    for (const double width : {0.0, 1.0}) {
        BubbleInfo info = bubbleAt({60, 50, 90, 70});
        info.window = {60, 50, width, 70};
        composition_.bubbles = {{info, windowPicture(90, 70)}};
        const FrameRef frame = render(source);
        EXPECT_EQ(at(frame, 100, 85), at(source, 100, 85));
        EXPECT_TRUE(agrees(renderer_, source, composition_, "empty-window"));
    }
}

TEST_F(BubblesLayerTest, ABubbleWithoutAPictureShowsTheUnzoomedScreenInItsShape) {
    for (const PixelFormat format : kFormats) {
        const FrameRef source = screenOf(format, 321, 181);
        for (const double zoom : {1.0, 2.0, 4.0}) {
            composition_.window = {{0.4, 0.55}, zoom};
            for (const Rect& rect :
                 {Rect{40, 60, 80, 80}, Rect{41.3, 61.8, 77.5, 60.1}, Rect{-20, -30, 90, 90}, Rect{290, 150, 60, 60}}) {
                for (const bool circle : {true, false}) {
                    composition_.bubbles = {{bubbleAt(rect, circle, 0.16), nullptr}};
                    ASSERT_TRUE(agrees(renderer_, source, composition_, "uncovered"))
                        << "zoom " << zoom << " at " << rect.x << ", " << rect.y;
                }
            }
        }
        const FrameRef frame = render(source);
        EXPECT_EQ(at(frame, 310, 170), at(source, 310, 170));
    }
}

TEST_F(BubblesLayerTest, ALabelIsUncoveredAsAPill) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 3};
    BubbleInfo info = bubbleAt({60, 60, 80, 80}, true);
    info.label = Rect{50, 40, 100, 24};
    composition_.bubbles = {{info, nullptr}};
    EXPECT_TRUE(agrees(renderer_, source, composition_, "label"));
    const FrameRef with = render(source);
    EXPECT_EQ(at(with, 55, 52), at(source, 55, 52));
    composition_.bubbles[0].info.label.reset();
    const FrameRef without = render(source);
    EXPECT_EQ(at(with, 50, 40), at(without, 50, 40)); // the corner of a pill is not in it
}

TEST_F(BubblesLayerTest, AWindowWithAPictureBringsItsLabelItself) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 3};
    BubbleInfo info = windowAt({60, 60, 80, 80});
    info.label = Rect{150, 20, 100, 24};
    composition_.bubbles = {{info, windowPicture(80, 80)}};
    const FrameRef with = render(source);
    composition_.bubbles[0].info.label.reset();
    EXPECT_TRUE(picturesAgree(*with, *render(source), 0, "label-of-a-window"));
}

TEST_F(BubblesLayerTest, ABubbleOfFourPixelsOrLessIsSkippedButItsLabelIsNot) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 2};
    const FrameRef plain = render(source);
    for (const double width : {0.0, 3.0, 4.0}) {
        composition_.bubbles = {{bubbleAt({60, 60, width, 80}), nullptr}};
        EXPECT_TRUE(picturesAgree(*render(source), *plain, 0, "narrow"));
    }
    composition_.bubbles[0].info.label = Rect{100, 40, 80, 24};
    const FrameRef labelled = render(source);
    EXPECT_EQ(at(labelled, 140, 52), at(source, 140, 52));
    EXPECT_TRUE(agrees(renderer_, source, composition_, "narrow-with-label"));
    composition_.bubbles = {{bubbleAt({60.5, 60, 4, 80}), nullptr}}; // five whole pixels
    EXPECT_FALSE(picturesAgree(*render(source), *plain, 0, "five-pixels"));
    EXPECT_TRUE(agrees(renderer_, source, composition_, "five-pixels-wide"));
}

TEST_F(BubblesLayerTest, AMaskThatCannotBeMadeLeavesTheZoomedPicture) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 2};
    const FrameRef plain = render(source);
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Rect& rect : {Rect{0, 0, 1e7, 50}, Rect{0, 0, 50, 1e18}, Rect{0, 0, kNone, 50}, Rect{0, kNone, 50, 50},
                             Rect{10, 10, 60, 0}, Rect{10, 10, 60, -20}, Rect{-1e15, 0, 60, 60}}) {
        composition_.bubbles = {{bubbleAt(rect), nullptr}};
        EXPECT_TRUE(picturesAgree(*render(source), *plain, 0, "no-mask"));
    }
}

TEST_F(BubblesLayerTest, AScreenWithoutWidthShowsNoBubbles) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.screen = {0, 0, 0, 180};
    composition_.bubbles = {{windowAt({10, 10, 50, 50}), windowPicture(50, 50)}, {bubbleAt({90, 90, 50, 50}), nullptr}};
    EXPECT_TRUE(picturesAgree(*render(source), *source, 0, "no-screen"));
}

TEST_F(BubblesLayerTest, APictureInAnotherFormatCountsAsNone) {
    const FrameRef source = screenOf(PixelFormat::nv12, 320, 180);
    composition_.window = {{0.4, 0.6}, 2};
    BubbleInfo info = bubbleAt({60, 60, 80, 80});
    info.window = {50, 50, 100, 100};
    composition_.bubbles = {{info, makePicture(PixelFormat::nv12, 100, 100, Content::flat)}};
    const FrameRef frame = render(source);
    EXPECT_EQ(at(frame, 100, 100), at(source, 100, 100));
}

TEST_F(BubblesLayerTest, BubblesLieOverTheLightAndThePointer) {
    const FrameRef source = screenOf(PixelFormat::nv12, 640, 360);
    composition_.bubbles = {{windowAt({300, 150, 64, 64}), plainPicture(PixelFormat::bgra, 64, 64, 255)}};
    composition_.spotlight = {{0.1, 0.9}, 1};
    composition_.pointer = {
        {332 / 640.0, 182 / 360.0}, 1, std::make_shared<const std::vector<Color>>(std::vector<Color>{{1, 0, 0, 1}})};
    const FrameRef frame = render(source);
    for (const Point inside : {Point{300, 150}, Point{332, 182}, Point{363, 213}}) {
        EXPECT_EQ(at(frame, static_cast<int>(inside.x), static_cast<int>(inside.y)), 235);
    }
}

class BubblesProperty : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(BubblesProperty, AgreeWithTheReferenceOverRandomScreensPlacesAndPictures) {
    std::mt19937 random(GetParam());
    const auto within = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    FrameRenderer renderer(&PixelBufferPool::create);
    for (int i = 0; i < 40; ++i) {
        const int width = static_cast<int>(within(1, 300));
        const int height = static_cast<int>(within(1, 200));
        const FrameRef source = makePicture(kFormats[random() % 2], width, height, Content::noise, random());
        Composition composition;
        composition.screen = {within(-500, 500), within(-500, 500), width * within(0.5, 2), within(1, 500)};
        const double scale = random() % 2 == 0 ? 1 : within(1, 6);
        composition.window = {scale == 1 ? Point{0.5, 0.5} : Point{within(0, 1), within(0, 1)}, scale};
        for (int k = static_cast<int>(random() % 4); k > 0; --k) {
            const double points = composition.screen.width / width;
            const Rect place{composition.screen.x + within(-60, width) * points,
                             composition.screen.y + within(-60, height) * points, within(2, 150), within(2, 150)};
            BubbleInfo info = bubbleAt(place, random() % 2 == 0, within(0, 0.6));
            info.window = place;
            info.label = Rect{place.x - 10, place.y - 20, within(0, 100), 20};
            const bool hasPicture = random() % 3 != 0;
            composition.bubbles.push_back({info, hasPicture ? windowPicture(static_cast<int>(within(1, 160)),
                                                                            static_cast<int>(within(1, 160)), random())
                                                            : nullptr});
        }
        ASSERT_TRUE(agrees(renderer, source, composition, "random-bubbles")) << "round " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BubblesProperty, ::testing::Range(1u, 7u));

} // namespace
} // namespace velmo
